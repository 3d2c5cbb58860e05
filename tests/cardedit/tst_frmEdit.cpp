#include "cardedit/frmEdit.h"
#include "program/frmProg.h"
#include "program/frmStep.h"
#include "support/GuiFixture.h"
#include "support/RealBoxes.h"
#include "support/TestFiles.h"
#include "support/TypeText.h"
#include "widgets/ProjectCommands.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
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
    std::unique_ptr<RealBoxes> boxes;
    std::unique_ptr<AppContext> real; // the fixture's context with the real message boxes

    template<typename T>
    T *child(const char *name) const
    {
        return findControl<T>(window, QLatin1String(name));
    }
    SharedState &state() const { return *f->state; }

    // Opens the window on whatever the test put into the state.
    void load(bool realBoxes = false)
    {
        if (realBoxes) {
            boxes = std::make_unique<RealBoxes>();
            real = std::make_unique<AppContext>(withRealBoxes(f->context, *boxes));
            commands = std::make_unique<ProjectCommands>(*real, nullptr);
        }
        window = new frmEdit(realBoxes ? *real : f->context, *commands, area.get());
        frame = area->addSubWindow(window);
        window->Form_Load();
        area->show();
        frame->show();
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
        VERIFY_NO_UNEXPECTED_BOX(f->msgBox);
        f->msgBox.answers.clear();
        area.reset();
        commands.reset();
        real.reset();
        boxes.reset();
        f.reset();
    }

    void switchingTo128AsksWhenSentencesAbove128AreUsed_data()
    {
        QTest::addColumn<MsgBox::Answer>("answer");
        QTest::addColumn<bool>("becomes128");
        QTest::newRow("Cancel keeps 512") << MsgBox::Answer::Cancel << false;
        QTest::newRow("OK deletes") << MsgBox::Answer::Ok << true;
    }
    void switchingTo128AsksWhenSentencesAbove128AreUsed()
    {
        QFETCH(MsgBox::Answer, answer);
        QFETCH(bool, becomes128);
        fillSentences(state().Setting, 512, 129);
        state().CopySettingToBuffer(SettingSection::All);
        load();
        f->msgBox.script({answer});
        QTest::mouseClick(child<QRadioButton>("optSize_1"), Qt::LeftButton);
        QCOMPARE(f->msgBox.shown, QStringList {"Delete message file 129 - 512"});
        QCOMPARE(child<QRadioButton>("optSize_0")->isChecked(), !becomes128);
        for (const SettingData *data : {&state().Setting, &state().SettingBuffer}) {
            QCOMPARE(data->sentenceTable().entries(), becomes128 ? 128 : 512);
            QCOMPARE(data->SentenceFileName[128].isEmpty(), becomes128);
            QCOMPARE(data->SentenceFileName[127], QStringLiteral("S128.MP2"));
        }
        QCOMPARE(state().SettingEqualsBuffer(SettingSection::All), true);
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

    void projectNameRefusesCharactersTheCodePageCannotHold()
    {
        load();
        auto *box = child<QLineEdit>("txtName");
        f->msgBox.script({MsgBox::Answer::Ok});
        // CP932 has no "é": saved, it would come back as "Caf?".
        typeText(box, QStringLiteral("Caf\u00E9"));
        QCOMPARE(f->msgBox.shown, QStringList {Incorrect});
        QCOMPARE(box->text(), QStringLiteral("Caf"));
        const SettingData &b = state().SettingBuffer;
        QCOMPARE(QStringList({b.ProjectName, b.Creator, b.Explanation, b.CardName}).join(QString()),
                 QStringLiteral("Caf"));
        typeText(box, QStringLiteral("\u99C5"));
        QCOMPARE(QStringList({b.ProjectName, b.Creator, b.Explanation, b.CardName}).join(QString()),
                 QStringLiteral("Caf\u99C5"));
    }

    // When card write says it is complete, its progress has counted every sentence, and no more.
    void cardWriteProgressEndsAtTheCount_data()
    {
        QTest::addColumn<int>("sentences");
        QTest::addColumn<QString>("label");
        QTest::newRow("two sentences") << 2 << "(2 / 2)";
        QTest::newRow("no sentences") << 0 << "Card write";
    }
    void cardWriteProgressEndsAtTheCount()
    {
        QFETCH(int, sentences);
        QFETCH(QString, label);
        const QString card = useCard();
        state().Setting.ProjectName = QStringLiteral("Station");
        for (int slot = 0; slot < sentences; ++slot) {
            const QString name = QStringLiteral("S%1.MP2").arg(slot + 1);
            state().Setting.SentenceFileName[slot] = name;
            writeTestFile(f->home.filePath(QStringLiteral("Station/") + name),
                          QByteArray("\xFF\xFD\x48\xC4", 4) + QByteArray(400, '\x55'));
        }
        load();
        QString shownAtTheEnd;
        f->msgBox.onShow = [&](const QString &text) {
            if (text == QLatin1String("Card write is complete"))
                shownAtTheEnd
                    = window->findChild<QProgressDialog *>(QStringLiteral("cardWriteProgress"))->labelText();
        };
        f->msgBox.script({MsgBox::Answer::Ok, MsgBox::Answer::Ok});
        window->cmdCaWrite_Click();
        QCOMPARE(f->msgBox.shown,
                 (QStringList {"Write setting file at drive:" + card + "?", "Card write is complete"}));
        QCOMPARE(shownAtTheEnd, label);
    }

    // The operator's keys and the real message boxes: a refused program number, its message
    // answered with Enter, the next number typed into the field the focus went to, then Execute.
    void refusedCopyNumberLeavesTheNextChecked_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QStringList>("shown");
        QTest::addColumn<int>("copiedTo");
        QTest::newRow("a valid destination")
            << "p3" << QStringList {Incorrect, "Program setting copy P001->p3"} << 3;
        QTest::newRow("a refused destination")
            << "Q3" << QStringList {Incorrect, Incorrect, "Program setting copy P001->P002"} << 2;
    }
    void refusedCopyNumberLeavesTheNextChecked()
    {
        QFETCH(QString, typed);
        QFETCH(QStringList, shown);
        QFETCH(int, copiedTo);
        state().Setting.ProgramName[0] = QStringLiteral("Morning");
        state().CopySettingToBuffer(SettingSection::All);
        load(true);
        QVERIFY(QTest::qWaitForWindowActive(area.get()));
        auto *from = child<QLineEdit>("txtTPrgCpy");
        auto *to = child<QLineEdit>("txtTprgCpy2");
        from->setFocus();
        QTest::keyClick(from, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(from, QStringLiteral("Q01"));
        QTest::keyClick(from, Qt::Key_Tab);
        QTRY_COMPARE(boxes->shown.size(), 1);
        QTRY_COMPARE(QApplication::focusWidget(), to);
        QTest::keyClick(to, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(to, typed);
        QTest::keyClick(to, Qt::Key_Tab);
        QCoreApplication::processEvents(); // the operator reaches for Execute after the Tab is done
        QTest::mouseClick(child<QPushButton>("cmdTPrgCpy"), Qt::LeftButton);
        QCOMPARE(boxes->shown, shown);
        for (int program = 2; program <= 4; ++program)
            QCOMPARE(state().Setting.ProgramName[program - 1] == "Morning", program == copiedTo);
    }

    // A copy onto a program whose window (and step window) is open: the windows show the copy,
    // and their OK stores it with what the operator changed afterwards.
    void copyOntoAnOpenProgramShowsInItsWindow_data()
    {
        QTest::addColumn<QString>("countTyped");
        QTest::addColumn<qint16>("count");
        QTest::newRow("OK at once") << "" << qint16(3);
        QTest::newRow("count changed after the copy") << "5" << qint16(5);
    }
    void copyOntoAnOpenProgramShowsInItsWindow()
    {
        QFETCH(QString, countTyped);
        QFETCH(qint16, count);
        SettingData &setting = state().Setting;
        setting.ProgramName[0] = QStringLiteral("Morning");
        setting.ProgramOption[0] = 0x6201;
        setting.RepeatCount[0] = 3;
        setting.ProgramData[0][0] = QStringLiteral("0005");
        state().CopySettingToBuffer(SettingSection::All);
        load(true);
        QVERIFY(QTest::qWaitForWindowActive(area.get()));
        for (const char *name : {"txtTPrgNo", "txtTprgCpy2"}) {
            auto *number = child<QLineEdit>(name);
            number->setFocus();
            QTest::keyClick(number, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClicks(number, QStringLiteral("P04"));
        }
        QTest::mouseClick(child<QPushButton>("cmdTPrgNo"), Qt::LeftButton);
        auto *program = qobject_cast<frmProg *>(window->programWindows().ProgramWindows[1].data());
        QVERIFY(program);
        program->cmdProgStep_Click();
        QPointer<frmStep> steps = program->stepWindow();

        QTest::mouseClick(child<QPushButton>("cmdTPrgCpy"), Qt::LeftButton);
        QCOMPARE(boxes->shown, QStringList {"Program setting copy P001->P04"});
        QCOMPARE(findControl<QLineEdit>(program, "txtProgName")->text(), QStringLiteral("Morning"));
        QCOMPARE(findControl<QComboBox>(program, "cmbPrgMethod")->currentText(), QStringLiteral("3.Repeat"));
        QCOMPARE(steps->box(0)->text(), QStringLiteral("A005"));
        if (!countTyped.isEmpty()) {
            auto *box = findControl<QLineEdit>(program, "txtPrgNo");
            QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClicks(box, countTyped);
        }
        QTest::mouseClick(findControl<QPushButton>(steps, "cmdStepOk"), Qt::LeftButton);
        QTest::mouseClick(findControl<QPushButton>(program, "cmdProgOk"), Qt::LeftButton);
        QCOMPARE(boxes->shown.size(), 1);
        QCOMPARE(setting.ProgramName[3], QStringLiteral("Morning"));
        QCOMPARE(setting.ProgramOption[3], 0x6201);
        QCOMPARE(setting.RepeatCount[3], count);
        QCOMPARE(setting.ProgramData[3][0], QStringLiteral("0005"));
        QVERIFY(state().SettingEqualsBuffer(SettingSection::All));
    }

    // A box of a card write goes over its progress window, which is up from the start: left to come
    // up later, it covered a box that was waiting for its answer.
    void cardWriteBoxesGoOverItsProgress()
    {
        const QString card = f->home.filePath(QStringLiteral("card"));
        QVERIFY(QDir().mkpath(card));
        f->drives.list = {{card, DriveInfo::Removable, true, QStringLiteral("FAT"), 64 << 20, 32 << 20,
                           32 << 20, QString()}};
        state().CardSlot = card;
        state().CardSlotValid = true;
        state().CardFreeSpace = QString::number(32 << 20);
        state().SurveillanceFile = false;
        SettingData &setting = state().Setting;
        setting.ProjectName = QStringLiteral("Gate");
        setting.SentenceFileName[0] = QStringLiteral("K160.MP2");
        setting.SentenceControl[0] = QStringLiteral("A001");
        setting.ProgramSort[0] = 1;
        state().CopySettingToBuffer(SettingSection::All);
        QVERIFY(QDir().mkpath(f->home.filePath(QStringLiteral("Gate"))));
        QFile notMp2(f->home.filePath(QStringLiteral("Gate/K160.MP2")));
        QVERIFY(notMp2.open(QIODevice::WriteOnly) && notMp2.write(QByteArray(4096, 'x')) == 4096);
        notMp2.close();
        load(true);
        QVERIFY(QTest::qWaitForWindowActive(area.get()));
        QTest::mouseClick(child<QPushButton>("cmdCaWrite"), Qt::LeftButton);
        QCOMPARE(boxes->shown,
                 (QStringList {"Write setting file at drive:" + card + "?", "Filesystem error :K160.MP2",
                               "Card write is complete"}));
        QCOMPARE(boxes->over[1], QStringLiteral("cardWriteProgress"));
    }

private:
    // A card in the slot, at `path` or in a folder of the program's own folder.
    QString useCard(QString path = QString())
    {
        if (path.isEmpty()) {
            path = f->home.filePath(QStringLiteral("card"));
            QDir().mkpath(path);
        }
        QDir(f->home.path()).mkpath(QStringLiteral("Station"));
        f->drives.list = {
            {path, DriveInfo::Removable, true, QStringLiteral("FAT"), 1 << 20, 1 << 20, 1 << 20, QString()}};
        state().CardSlot = path;
        state().CardSlotValid = true;
        return path;
    }
};

QTEST_MAIN(tst_frmEdit)
#include "tst_frmEdit.moc"
