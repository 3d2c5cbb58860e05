#include "GuiFixture.h"
#include "ProgramWindowTable.h"
#include "ProjectCommands.h"
#include "TypeText.h"
#include "frmEdit.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTest>

namespace {

const QString Incorrect = QStringLiteral("Incorrect value has been entered.");

} // namespace

class tst_frmEdit : public QObject
{
    Q_OBJECT

    std::unique_ptr<GuiFixture> f;
    std::unique_ptr<QMdiArea> area;
    std::unique_ptr<ProjectCommands> commands;
    QPointer<frmEdit> window;
    QPointer<QMdiSubWindow> frame;

    template<typename T>
    T *child(const char *name) const
    {
        return findControl<T>(window, QLatin1String(name));
    }
    SharedState &state() const { return *f->state; }

    // Opens the window on whatever the test put into the state.
    void load()
    {
        window = new frmEdit(f->context, *commands, area.get());
        frame = area->addSubWindow(window);
        window->Form_Load();
        area->show();
        frame->show();
    }

    void openProgram(int number)
    {
        child<QScrollBar>("scrTPrgNo")->setValue(65 - number);
        child<QPushButton>("cmdTPrgNo")->click();
    }

private slots:
    void init()
    {
        f = std::make_unique<GuiFixture>();
        area = std::make_unique<QMdiArea>();
        commands = std::make_unique<ProjectCommands>(f->context, nullptr);
        state().CurrentFilePath = QStringLiteral("New File");
    }
    void cleanup()
    {
        QVERIFY2(f->msgBox.unexpected.isEmpty(), qPrintable(f->msgBox.unexpected.join(QLatin1Char('|'))));
        f->msgBox.answers.clear();
        area.reset();
        commands.reset();
        f.reset();
    }

    void loadShowsTheProject()
    {
        state().Setting.ProjectName = state().SettingBuffer.ProjectName = QStringLiteral("Station");
        state().SettingBuffer.CardName = QStringLiteral("CARD 1");
        QString caption;
        window = new frmEdit(f->context, *commands, area.get());
        connect(window, &frmEdit::captionChanged, this, [&](const QString &c) { caption = c; });
        window->Form_Load();
        QCOMPARE(caption, QStringLiteral("DQ-480 Setting Software : New File"));
        QCOMPARE(child<QLineEdit>("txtTPrgNo")->text(), QStringLiteral("P01"));
        QCOMPARE(child<QLineEdit>("txtTPrgCpy")->text(), QStringLiteral("P001"));
        QCOMPARE(child<QLineEdit>("txtTprgCpy2")->text(), QStringLiteral("P002"));
        QVERIFY(child<QRadioButton>("optSize_1")->isChecked());
        QCOMPARE(child<QLineEdit>("txtTCaName")->text(), QStringLiteral("CARD 1"));
        QCOMPARE(child<QLineEdit>("txtName")->text(), QStringLiteral("Station"));
        QCOMPARE(child<QLabel>("lblFileName")->text(), QStringLiteral("New File"));
        QVERIFY(child<QLabel>("lblFileLocation")->text().isEmpty());
        QVERIFY(!child<QPushButton>("cmdCaWrite")->isEnabled());
        QVERIFY(QFileInfo(f->home.filePath(QStringLiteral("Station"))).isDir());
        QVERIFY(state().EditWindowLoaded);
    }

    void protectionButtonsStayHiddenAndOnlyTheirBitStays()
    {
        state().SettingBuffer.CardAttribute = 0xF6;
        load();
        QVERIFY(!child<QGroupBox>("fraTCaProt")->isVisibleTo(window));
        QVERIFY(!child<QPushButton>("cmdTCaProtOn")->isEnabled());
        QCOMPARE(state().SettingBuffer.CardAttribute, qint16(0x10));
        QVERIFY(child<QRadioButton>("optSize_0")->isChecked());
    }

    void protectionOnCommitsAtOnceOffWaitsForApply()
    {
        load();
        window->cmdTCaProtOn_Click();
        QCOMPARE(state().Setting.CardAttribute, qint16(0xB6));
        QVERIFY(state().SettingEqualsBuffer(SettingSection::All));
        window->cmdTCaProtOff_Click();
        QCOMPARE(state().Setting.CardAttribute, qint16(0xB6));
        QCOMPARE(state().SettingBuffer.CardAttribute, qint16(0xA6));
        f->msgBox.script({MsgBox::Answer::Cancel});
        QVERIFY(!frame->close());
        QCOMPARE(f->msgBox.shown, QStringList {ContentsQuestion});
    }

    void switchingTo128AsksWhenSentencesAbove128AreUsed_data()
    {
        QTest::addColumn<bool>("used");
        QTest::addColumn<MsgBox::Answer>("answer");
        QTest::addColumn<bool>("becomes128");
        QTest::newRow("unused: no question") << false << MsgBox::Answer::Ok << true;
        QTest::newRow("used, Cancel keeps 512") << true << MsgBox::Answer::Cancel << false;
        QTest::newRow("used, OK deletes") << true << MsgBox::Answer::Ok << true;
    }
    void switchingTo128AsksWhenSentencesAbove128AreUsed()
    {
        QFETCH(bool, used);
        QFETCH(MsgBox::Answer, answer);
        QFETCH(bool, becomes128);
        fillSentences(state().Setting, 512, used ? 129 : 128);
        state().CopySettingToBuffer(SettingSection::All);
        load();
        if (used)
            f->msgBox.script({answer});
        QTest::mouseClick(child<QRadioButton>("optSize_1"), Qt::LeftButton);
        QCOMPARE(f->msgBox.shown, used ? QStringList {"Delete message file 129 - 512"} : QStringList {});
        QCOMPARE(child<QRadioButton>("optSize_0")->isChecked(), !becomes128);
        for (const SettingData *data : {&state().Setting, &state().SettingBuffer}) {
            QCOMPARE(data->sentenceCapacity(), becomes128 ? 128 : 512);
            QCOMPARE(data->SentenceFileName[128].isEmpty(), becomes128 || !used);
            QCOMPARE(data->SentenceFileName[127], QStringLiteral("S128.MP2"));
        }
        QCOMPARE(state().SettingEqualsBuffer(SettingSection::All), true);
    }

    void applyDecidesWhichQuestionClosingAsks()
    {
        load();
        QTest::keyClicks(child<QLineEdit>("txtTCaName"), QStringLiteral("PLATFORM"));
        QCOMPARE(state().SettingBuffer.CardName, QStringLiteral("PLATFORM"));
        f->msgBox.script({MsgBox::Answer::Cancel});
        QVERIFY(!frame->close());
        QCOMPARE(f->msgBox.shown.last(), ContentsQuestion);

        child<QPushButton>("cmdEditApp")->click();
        QCOMPARE(state().Setting.CardName, QStringLiteral("PLATFORM"));
        f->msgBox.script({MsgBox::Answer::Ok});
        QVERIFY(frame->close());
        QCOMPARE(f->msgBox.shown.last(), SettingQuestion);
        QVERIFY(!state().EditWindowLoaded);
        QVERIFY(state().Setting.CardName.isEmpty());
        QVERIFY(state().CurrentFilePath.isEmpty());
    }

    void textFieldsRefuseWhatTheFileCannotHold()
    {
        load();
        f->msgBox.script({MsgBox::Answer::Ok, MsgBox::Answer::Ok, MsgBox::Answer::Ok});
        QTest::keyClicks(child<QLineEdit>("txtName"), QStringLiteral("Gate;"));
        QCOMPARE(child<QLineEdit>("txtName")->text(), QStringLiteral("Gate"));
        QTest::keyClicks(child<QLineEdit>("txtTCaName"), QStringLiteral("A,"));
        QCOMPARE(state().SettingBuffer.CardName, QStringLiteral("A"));
        auto *explanation = child<QPlainTextEdit>("txtExp");
        explanation->setPlainText(QStringLiteral("first line,\nsecond"));
        QCOMPARE(f->msgBox.shown, (QStringList {Incorrect, Incorrect, Incorrect}));
        explanation->setPlainText(QStringLiteral("first, line\nsecond"));
        QCOMPARE(state().SettingBuffer.Explanation, QStringLiteral("first, line\r\nsecond"));
    }

    void textFieldsRefuseCharactersTheCodePageCannotHold_data()
    {
        QTest::addColumn<QString>("field");
        QTest::newRow("project name") << "txtName";
        QTest::newRow("creator") << "txtNo";
        QTest::newRow("explanation") << "txtExp";
        QTest::newRow("card name") << "txtTCaName";
    }
    void textFieldsRefuseCharactersTheCodePageCannotHold()
    {
        QFETCH(QString, field);
        load();
        QWidget *box = findControl<QWidget>(window, field);
        f->msgBox.script({MsgBox::Answer::Ok});
        // CP932 has no "é": saved, it would come back as "Caf?".
        typeText(box, QStringLiteral("Caf\u00E9"));
        QCOMPARE(f->msgBox.shown, QStringList {Incorrect});
        const QString shown = qobject_cast<QLineEdit *>(box)
            ? qobject_cast<QLineEdit *>(box)->text()
            : qobject_cast<QPlainTextEdit *>(box)->toPlainText();
        QCOMPARE(shown, QStringLiteral("Caf"));
        const SettingData &b = state().SettingBuffer;
        QCOMPARE(QStringList({b.ProjectName, b.Creator, b.Explanation, b.CardName}).join(QString()),
                 QStringLiteral("Caf"));
        // What the code page holds is taken.
        typeText(box, QStringLiteral("\u99C5"));
        QCOMPARE(QStringList({b.ProjectName, b.Creator, b.Explanation, b.CardName}).join(QString()),
                 QStringLiteral("Caf\u99C5"));
    }

    void projectNameIsNeverTheFolderOrItsParent()
    {
        load();
        f->msgBox.script({MsgBox::Answer::Ok});
        QTest::keyClicks(child<QLineEdit>("txtName"), QStringLiteral("."));
        QCOMPARE(f->msgBox.shown, QStringList {Incorrect});
        QVERIFY(child<QLineEdit>("txtName")->text().isEmpty());
        QVERIFY(state().SettingBuffer.ProjectName.isEmpty());
    }

    void folderLabelShortensLongFolders()
    {
        state().ProjectFileName = QStringLiteral("station.stf");
        state().ProjectFolder = QStringLiteral("/home/operator/announcements/2026/");
        load();
        QCOMPARE(child<QLabel>("lblFileLocation")->text(), QStringLiteral("/home/operator/...cements/2026/"));
        state().ProjectFolder = QStringLiteral("/srv/");
        window->Form_GotFocus();
        QCOMPARE(child<QLabel>("lblFileLocation")->text(), QStringLiteral("/srv/"));
    }

    void numberFieldChecks_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<int>("number");
        QTest::newRow("P65") << "P65" << false << 1;
        QTest::newRow("Q01") << "Q01" << false << 1;
        QTest::newRow("P00001") << "P00001" << false << 1;
        QTest::newRow("P0") << "P0" << false << 1;
        QTest::newRow("P") << "P" << false << 1;
        QTest::newRow("p07") << "p07" << true << 7;
        QTest::newRow("P064") << "P064" << true << 64;
    }
    void numberFieldChecks()
    {
        QFETCH(QString, typed);
        QFETCH(bool, accepted);
        QFETCH(int, number);
        load();
        auto *text = child<QLineEdit>("txtTPrgNo");
        text->setText(typed);
        if (!accepted)
            f->msgBox.script({MsgBox::Answer::Ok});
        QCOMPARE(window->txtTPrgNo_LostFocus(), accepted);
        QCOMPARE(f->msgBox.shown, accepted ? QStringList {} : QStringList {Incorrect});
        QCOMPARE(text->text(), accepted ? typed : QStringLiteral("P001"));
        QCOMPARE(child<QScrollBar>("scrTPrgNo")->value(), 65 - number);
        // A second focus loss on the same text says nothing more.
        QVERIFY(window->txtTPrgNo_LostFocus());
    }

    void barsRunUpsideDownAndStayInRange()
    {
        load();
        auto *bar = child<QScrollBar>("scrTPrgCpy2");
        bar->triggerAction(QAbstractSlider::SliderSingleStepSub); // the upward arrow
        QCOMPARE(child<QLineEdit>("txtTprgCpy2")->text(), QStringLiteral("P003"));
        bar->setValue(bar->minimum());
        bar->triggerAction(QAbstractSlider::SliderSingleStepSub);
        QCOMPARE(child<QLineEdit>("txtTprgCpy2")->text(), QStringLiteral("P064"));
        bar->setValue(bar->maximum());
        bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
        QCOMPARE(child<QLineEdit>("txtTprgCpy2")->text(), QStringLiteral("P001"));
    }

    void atMostEightProgramWindowsEachOnItsOwnProgram()
    {
        load();
        ProgramWindowTable &table = window->programWindows();
        for (int number = 1; number <= 8; ++number)
            openProgram(number * 3);
        QCOMPARE(table.ProgramWindowCount, 8);
        QCOMPARE(table.ProgramWindowNumbers[8], qint16(24));
        QCOMPARE(table.ProgramWindows[1]->findChild<QLabel *>(QStringLiteral("lblProgNo"))->text(),
                 QStringLiteral("Program No:P003"));

        f->msgBox.script({MsgBox::Answer::Ok});
        openProgram(40);
        QCOMPARE(f->msgBox.shown, QStringList {"Program setting open 8 pattern"});
        QCOMPARE(table.ProgramWindowCount, 8);

        // Closing the window of slot 3 frees that slot for the next program.
        qobject_cast<QMdiSubWindow *>(table.ProgramWindows[3]->parentWidget())->close();
        QCOMPARE(table.ProgramWindowCount, 7);
        openProgram(40);
        QCOMPARE(table.ProgramWindowNumbers[3], qint16(40));
        QCOMPARE(table.ProgramWindowCount, 8);

        // Closing the card edit window closes them all.
        QVERIFY(frame->close());
        QCOMPARE(table.ProgramWindowCount, 0);
    }

    void theSameProgramOpensOnce()
    {
        load();
        openProgram(5);
        f->msgBox.script({MsgBox::Answer::Ok});
        openProgram(5);
        QCOMPARE(f->msgBox.shown, QStringList {"This Program number is already open"});
        QCOMPARE(window->programWindows().ProgramWindowCount, 1);
        QCOMPARE(area->subWindowList().size(), 2);
    }

    void programCopy_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<MsgBox::Answer>("answer");
        QTest::addColumn<bool>("copied");
        QTest::newRow("P001->P005") << "P001"
                                    << "P005" << MsgBox::Answer::Ok << true;
        QTest::newRow("cancelled") << "P001"
                                   << "P005" << MsgBox::Answer::Cancel << false;
        QTest::newRow("onto itself") << "P001"
                                     << "P001" << MsgBox::Answer::Ok << false;
    }
    void programCopy()
    {
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(MsgBox::Answer, answer);
        QFETCH(bool, copied);
        SettingData &setting = state().Setting;
        setting.ProgramData[0][1] = QStringLiteral("2005");
        setting.ProgramName[0] = QStringLiteral("Morning");
        setting.ProgramOption[0] = 0x4301;
        setting.RepeatCount[0] = 3;
        setting.RepeatInterval[0] = 7;
        state().CopySettingToBuffer(SettingSection::All);
        const SettingData before = setting;
        load();
        child<QLineEdit>("txtTPrgCpy")->setText(from);
        child<QLineEdit>("txtTprgCpy2")->setText(to);
        f->msgBox.script({answer});
        child<QPushButton>("cmdTPrgCpy")->click();
        QCOMPARE(f->msgBox.shown, QStringList {QStringLiteral("Program setting copy ") + from + "->" + to});
        for (const SettingData *data : {&state().Setting, &state().SettingBuffer}) {
            QCOMPARE(data->ProgramData[4] == before.ProgramData[0], copied);
            QCOMPARE(data->ProgramName[4], copied ? QStringLiteral("Morning") : QStringLiteral("P005"));
            QCOMPARE(data->ProgramOption[4], copied ? 0x4301 : 0x2D01);
            QCOMPARE(data->RepeatCount[4], qint16(copied ? 3 : 1));
            QCOMPARE(data->RepeatInterval[4], qint16(copied ? 7 : 0));
            QVERIFY(data->ProgramData[0] == before.ProgramData[0]);
        }
    }

    void saveAsksWhenEditsAreNotApplied()
    {
        load();
        state().SettingBuffer.Creator = QStringLiteral("Ann");
        f->msgBox.script({MsgBox::Answer::Cancel});
        child<QPushButton>("cmdSave")->click();
        QCOMPARE(f->msgBox.shown, QStringList {"Save changes to DQ-480 Setting Software New File"});
        QCOMPARE(f->fileDialogs.unexpected, 0);

        const QString path = f->home.filePath(QStringLiteral("station.stf"));
        f->fileDialogs.answers << path;
        f->msgBox.script({MsgBox::Answer::Ok});
        child<QPushButton>("cmdSave")->click();
        QVERIFY(QFileInfo::exists(path));
        QCOMPARE(child<QLabel>("lblFileName")->text(), QStringLiteral("station.stf"));
        f->state->CopyBufferToSetting(SettingSection::All);
    }

    void cardButtonsFollowTheCardSlot()
    {
        load();
        state().CardSlotValid = true;
        state().CardSlot = QStringLiteral("/media/card");
        window->timCardC_Timer();
        for (const char *name : {"cmdTCaPc", "cmdCaWrite", "cmdTCaFormat"})
            QVERIFY(child<QPushButton>(name)->isEnabled());
        QCOMPARE(child<QLabel>("lblSlot")->text(), QStringLiteral("/media/card"));
        f->msgBox.script({MsgBox::Answer::Cancel});
        child<QPushButton>("cmdCaWrite")->click();
        QCOMPARE(f->msgBox.shown, QStringList {"Write setting file at drive:/media/card?"});
        state().CardSlotValid = false;
        window->timCardC_Timer();
        for (const char *name : {"cmdTCaPc", "cmdCaWrite", "cmdTCaFormat"})
            QVERIFY(!child<QPushButton>(name)->isEnabled());
    }
};

QTEST_MAIN(tst_frmEdit)
#include "tst_frmEdit.moc"
