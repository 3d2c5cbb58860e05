#include "GuiFixture.h"
#include "ProjectCommands.h"
#include "TestFiles.h"
#include "TestMounts.h"
#include "TypeText.h"
#include "frmEdit.h"

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
            QCOMPARE(data->sentenceCapacity(), becomes128 ? 128 : 512);
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

    // A locked card is said before the write is offered: no answer could make it go through.
    void aLockedCardIsSaidBeforeTheQuestion()
    {
        QString skip;
        const auto locked = TestMount::tmpfs("1m", skip);
        if (!locked)
            QSKIP(qPrintable(skip));
        QVERIFY(locked->makeReadOnly());
        useCard(locked->path());
        load();
        f->msgBox.script({MsgBox::Answer::Ok});
        window->cmdCaWrite_Click();
        QCOMPARE(f->msgBox.shown, QStringList {"This card is read only"});
        QVERIFY(!QFileInfo::exists(locked->filePath(QStringLiteral("CONTENTS"))));
        f->msgBox.answers.clear();
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
