#include "sentence/dlgCaPc.h"
#include "sentence/dlgPcCa.h"
#include "support/GuiFixture.h"
#include "support/TestFiles.h"
#include "support/TestMounts.h"
#include "support/TypeText.h"

#include <QApplication>

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace {

const QString Incorrect = QStringLiteral("Incorrect value has been entered.");

} // namespace

class tst_SentenceDialogs : public QObject
{
    Q_OBJECT

    std::unique_ptr<GuiFixture> f;
    QTemporaryDir voice; // the operator's folder of MP2 files

    SharedState &state() const { return *f->state; }

    void makeVoiceFiles(const QStringList &names)
    {
        for (const QString &name : names)
            writeTestFile(voice.filePath(name), "MP2 " + name.toUtf8());
    }
    void typeInto(dlgPcCa &dialog, int index, const QString &text)
    {
        dialog.box(index)->clear();
        typeText(dialog.box(index), text);
        dialog.TxtPcCa_LostFocus(index);
    }

private slots:
    void init()
    {
        f = std::make_unique<GuiFixture>();
        QDir(voice.path()).removeRecursively();
        QDir().mkpath(voice.path());
        state().SentencePath = voice.path() + QLatin1Char('/');
    }
    void cleanup()
    {
        VERIFY_NO_UNEXPECTED_BOX(f->msgBox);
        f.reset();
    }

    void typedNames_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QStringList>("messages");
        QTest::newRow("valid, lower case") << "rain.mp2"
                                           << "RAIN.MP2" << QStringList {};
        QTest::newRow("comma empties the box") << "a,b.MP2"
                                               << "B.MP2" << QStringList {Incorrect};
    }
    void typedNames()
    {
        QFETCH(QString, typed);
        QFETCH(QString, stored);
        QFETCH(QStringList, messages);
        makeVoiceFiles({QStringLiteral("RAIN.MP2"), QStringLiteral("B.MP2")});
        dlgPcCa dialog(f->context, nullptr);
        for (int i = 0; i < messages.size(); ++i)
            f->msgBox.script({MsgBox::Answer::Ok});
        typeInto(dialog, 4, typed);
        QCOMPARE(f->msgBox.shown, messages);
        QCOMPARE(state().SettingBuffer.SentenceFileName[4], stored);
        QCOMPARE(dialog.box(4)->text(), stored);
        if (!stored.isEmpty()) {
            QCOMPARE(state().SettingBuffer.SentenceControl[4], QStringLiteral("A005"));
            QCOMPARE(state().SettingBuffer.ProgramSort[4], qint16(5));
            QVERIFY(QFileInfo::exists(f->home.filePath(QStringLiteral("SoundTmp/") + stored)));
        }
    }

    void closingWithABoxBeingEditedTouchesNothing()
    {
        // The box that has the focus loses it while the dialog is being destroyed; the dialog must
        // no longer take its text then (it would check it, report it and change the table).
        makeVoiceFiles({QStringLiteral("RAIN.MP2")});
        state().SettingBuffer.SentenceFileName[2] = QStringLiteral("KEPT.MP2");
        auto *dialog = new dlgPcCa(f->context, nullptr);
        dialog->show();
        QApplication::setActiveWindow(dialog);
        QVERIFY(QTest::qWaitForWindowActive(dialog));
        dialog->box(2)->setFocus();
        QTRY_VERIFY(dialog->box(2)->hasFocus());
        dialog->box(2)->selectAll();
        QTest::keyClicks(dialog->box(2), QStringLiteral("bad"));
        delete dialog;
        QCOMPARE(f->msgBox.shown, QStringList());
        QCOMPARE(state().SettingBuffer.SentenceFileName[2], QStringLiteral("KEPT.MP2"));
    }

    void allFileListsNamesAsWindowsDoes_data()
    {
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QStringList>("entries");
        QTest::newRow("upper case before lower in byte order")
            << QStringList {"Zed.MP2", "apple.MP2", "Mango.mp2", "banana.MP2"}
            << QStringList {"APPLE.MP2", "BANANA.MP2", "MANGO.MP2", "ZED.MP2"};
        QTest::newRow("any case of the extension, nothing else")
            << QStringList {"d.mP2", "e.txt", "f.mp3", "g.MP2"} << QStringList {"D.MP2", "G.MP2"};
    }
    void allFileListsNamesAsWindowsDoes()
    {
        QFETCH(QStringList, files);
        QFETCH(QStringList, entries);
        makeVoiceFiles(files);
        dlgPcCa dialog(f->context, nullptr);
        dialog.findChild<QPushButton *>(QStringLiteral("cmdPcCaAll"))->click();
        QCOMPARE(f->msgBox.shown, QStringList {});
        const SettingData &buffer = state().SettingBuffer;
        for (int i = 0; i < entries.size(); ++i) {
            QCOMPARE(buffer.SentenceFileName[i], entries[i]);
            QCOMPARE(dialog.box(i)->text(), entries[i]);
            QCOMPARE(buffer.SentenceControl[i], QStringLiteral("A%1").arg(i + 1, 3, 10, QLatin1Char('0')));
        }
        QVERIFY(buffer.SentenceFileName[entries.size()].isEmpty());
    }

    void allSentenceCopiesOnlyWhatIsMissing()
    {
        QTemporaryDir card;
        QDir(card.path()).mkpath(QStringLiteral("CONTENTS"));
        for (const char *name : {"A.MP2", "b.mp2", "c.Mp2", "notes.txt", "rain.mp2"})
            writeTestFile(card.filePath(QStringLiteral("CONTENTS/") + QLatin1String(name)), "card");
        writeTestFile(card.filePath(QStringLiteral("DQ480.CSV")), "CARDNAME,,");
        state().CardSlot = card.path();
        dlgCaPc dialog(f->context, nullptr);
        dialog.findChild<QLineEdit *>(QStringLiteral("txtCaPcAllInp"))->setText(QStringLiteral("backup"));
        const QString target = voice.filePath(QStringLiteral("backup"));
        QDir().mkpath(target);
        // Already here, in another case: the same 8.3 names.
        for (const char *name : {"A.MP2", "RAIN.MP2", "dq480.csv"})
            writeTestFile(target + QLatin1Char('/') + QLatin1String(name), "mine");

        f->msgBox.script({MsgBox::Answer::Ok, MsgBox::Answer::Ok});
        dialog.cmdCaPcAll_Click();
        dialog.cmdCaPcAll_Click();
        QCOMPARE(f->msgBox.shown, (QStringList {"File copy complete", "File copy complete"}));
        QCOMPARE(QDir(target).entryList(QDir::Files, QDir::Name),
                 (QStringList {"A.MP2", "RAIN.MP2", "b.mp2", "dq480.csv"}));
        for (const char *name : {"A.MP2", "RAIN.MP2", "dq480.csv"})
            QCOMPARE(readTestFile(target + QLatin1Char('/') + QLatin1String(name)), QByteArray("mine"));
    }

    // A name is typed in any case and finds its file on the card and in the folder in any case.
    void sentenceSelectionFindsNamesInAnyCase_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QStringList>("afterwards");
        QTest::newRow("already in the folder")
            << "rain.mp2"
            << "Filesystem Error  File:rain.mp2" << QStringList {"RAIN.MP2"};
        QTest::newRow("on the card in lower case")
            << "HELLO.MP2"
            << "File copy complete" << QStringList {"HELLO.MP2", "RAIN.MP2"};
    }
    void sentenceSelectionFindsNamesInAnyCase()
    {
        QFETCH(QString, typed);
        QFETCH(QString, message);
        QFETCH(QStringList, afterwards);
        QTemporaryDir card;
        QDir(card.path()).mkpath(QStringLiteral("CONTENTS"));
        for (const char *name : {"rain.mp2", "hello.mp2"})
            writeTestFile(card.filePath(QStringLiteral("CONTENTS/") + QLatin1String(name)), "card");
        state().CardSlot = card.path();
        writeTestFile(voice.filePath(QStringLiteral("RAIN.MP2")), "mine");
        dlgCaPc dialog(f->context, nullptr);
        dialog.findChild<QLineEdit *>(QStringLiteral("txtCaPcSelInp"))->setText(typed);
        f->msgBox.script({MsgBox::Answer::Ok});
        dialog.cmdCaPcSel_Click();
        QCOMPARE(f->msgBox.shown, QStringList {message});
        QCOMPARE(QDir(voice.path()).entryList(QDir::Files, QDir::Name), afterwards);
        QCOMPARE(readTestFile(voice.filePath(QStringLiteral("RAIN.MP2"))), QByteArray("mine"));
    }

    // Card -> PC onto a full disk stops at the first file, names it and the reason, and leaves
    // no empty or cut copy behind.
    void copyingOntoAFullDiskStopsNamingTheFile()
    {
        QString skip;
        const auto disk = TestMount::tmpfs("64k", skip);
        if (!disk)
            QSKIP(qPrintable(skip));
        QTemporaryDir card;
        QDir(card.path()).mkpath(QStringLiteral("CONTENTS"));
        writeTestFile(card.filePath(QStringLiteral("CONTENTS/A.MP2")), QByteArray(10'000, 'a'));
        writeTestFile(card.filePath(QStringLiteral("DQ480.CSV")), "CARDNAME,,");
        state().CardSlot = card.path();
        state().SentencePath = disk->path() + QLatin1Char('/');
        QDir(disk->path()).mkpath(QStringLiteral("backup"));
        disk->fill();
        dlgCaPc dialog(f->context, nullptr);
        dialog.findChild<QLineEdit *>(QStringLiteral("txtCaPcAllInp"))->setText(QStringLiteral("backup"));
        f->msgBox.script({MsgBox::Answer::Ok});
        dialog.cmdCaPcAll_Click();
        QCOMPARE(f->msgBox.shown,
                 QStringList {QStringLiteral("The copy stopped.\nCannot write %1: No space left on device")
                                  .arg(disk->filePath(QStringLiteral("backup/DQ480.CSV")))});
        QCOMPARE(QDir(disk->filePath(QStringLiteral("backup"))).entryList(QDir::Files | QDir::Hidden),
                 QStringList());
    }
};

QTEST_MAIN(tst_SentenceDialogs)
#include "tst_SentenceDialogs.moc"
