#include "GuiFixture.h"
#include "SentenceTableEdit.h"
#include "TestFiles.h"
#include "TestMounts.h"
#include "TypeText.h"
#include "dlgCaPc.h"
#include "dlgPcCa.h"

#include <QApplication>

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QTest>
#include <QUrl>

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
    static QStringList numberedNames(int count)
    {
        QStringList names;
        for (int i = 0; i < count; ++i)
            names << QStringLiteral("V%1.MP2").arg(i, 4, 10, QLatin1Char('0'));
        return names;
    }
    // What the file manager's drag does: enter, then drop.
    static void dropOn(QWidget *box, QMimeData &data)
    {
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(box, &enter);
        QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(box, &drop);
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
        QVERIFY2(f->msgBox.unexpected.isEmpty(), qPrintable(f->msgBox.unexpected.join(QLatin1Char('|'))));
        f.reset();
    }

    void opensOnTheTable()
    {
        dlgPcCa dialog(f->context, nullptr);
        QCOMPARE(dialog.windowTitle(),
                 QStringLiteral("Card creation Sentence data copy PC -> Card : New File"));
        QCOMPARE(dialog.findChild<QLabel *>(QStringLiteral("lblPcCa_127"))->text(), QStringLiteral("128:"));
        QVERIFY(!dialog.box(128)->isEnabled());
        QVERIFY(dialog.box(128)->isHidden());
        QVERIFY(!dialog.findChild<QPushButton *>(QStringLiteral("cmdPcCaApp"))->isEnabled());
        const QString label = dialog.findChild<QLabel *>(QStringLiteral("lblsentPath"))->text();
        QVERIFY(label.startsWith(QStringLiteral("Path :")));
        QVERIFY(label.size() <= 38);
    }

    void typedNames_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QStringList>("messages");
        QTest::newRow("valid, lower case") << "rain.mp2"
                                           << "RAIN.MP2" << QStringList {};
        QTest::newRow("4 characters") << "A.MP"
                                      << "" << QStringList {Incorrect};
        QTest::newRow("13 characters are cut to 12") << "ABCDEFGHI.MP2"
                                                     << "" << QStringList {Incorrect};
        QTest::newRow("wav") << "x.wav"
                             << "" << QStringList {Incorrect};
        QTest::newRow("comma empties the box") << "a,b.MP2"
                                               << "B.MP2" << QStringList {Incorrect};
        QTest::newRow("character the code page cannot hold empties the box")
            << QStringLiteral("\u00E9RAIN.MP2") << "RAIN.MP2" << QStringList {Incorrect};
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

    void allFileTakesOneBelowTheTableSize_data()
    {
        QTest::addColumn<int>("capacity");
        QTest::addColumn<int>("files");
        QTest::addColumn<bool>("taken");
        QTest::newRow("127 on 128") << 128 << 127 << true;
        QTest::newRow("128 on 128") << 128 << 128 << false;
        QTest::newRow("511 on 512") << 512 << 511 << true;
        QTest::newRow("512 on 512") << 512 << 512 << false;
    }
    void allFileTakesOneBelowTheTableSize()
    {
        QFETCH(int, capacity);
        QFETCH(int, files);
        QFETCH(bool, taken);
        fillSentences(state().SettingBuffer, capacity, 0);
        makeVoiceFiles(numberedNames(files) << QStringLiteral("notes.txt") << QStringLiteral("v.Mp2x"));
        dlgPcCa dialog(f->context, nullptr);
        if (!taken)
            f->msgBox.script({MsgBox::Answer::Ok});
        dialog.findChild<QPushButton *>(QStringLiteral("cmdPcCaAll"))->click();
        QCOMPARE(f->msgBox.shown, taken ? QStringList {} : QStringList {"Sentence file number error!"});
        const SettingData &buffer = state().SettingBuffer;
        QCOMPARE(buffer.SentenceFileName[files - 1].isEmpty(), !taken);
        QVERIFY(buffer.SentenceFileName[files].isEmpty());
        if (taken) {
            QCOMPARE(buffer.SentenceFileName[0], QStringLiteral("V0000.MP2"));
            QCOMPARE(QDir(f->home.filePath(QStringLiteral("SoundTmp"))).entryList(QDir::Files).size(), files);
        }
    }

    void allFileListsNamesAsWindowsDoes_data()
    {
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QStringList>("entries");
        QTest::newRow("case of the name")
            << QStringList {"b.MP2", "A.mp2", "c.Mp2"} << QStringList {"A.MP2", "B.MP2", "C.MP2"};
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

    void moveForwardFromTheLastBoxOfA512Table()
    {
        fillSentences(state().SettingBuffer, 512, 0);
        SentenceTableEdit::setEntry(state().SettingBuffer, 511, QStringLiteral("LAST.MP2"));
        dlgPcCa dialog(f->context, nullptr);
        dialog.findChild<QPushButton *>(QStringLiteral("cmdPcCaMov"))->click();
        QCOMPARE(dialog.box(0)->text(), QStringLiteral("LAST.MP2"));
        QVERIFY(dialog.box(511)->text().isEmpty());
        QCOMPARE(state().SettingBuffer.SentenceControl[0], QStringLiteral("A001"));
        QVERIFY(state().SettingBuffer.SentenceFileName[511].isEmpty());
    }

    void insertAndDeleteRenumber()
    {
        fillSentences(state().SettingBuffer, 128, 3);
        dlgPcCa dialog(f->context, nullptr);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        dialog.box(1)->setFocus();
        QApplication::processEvents();
        dialog.findChild<QPushButton *>(QStringLiteral("cmdPcCaIns"))->click();
        const SettingData &buffer = state().SettingBuffer;
        QVERIFY(buffer.SentenceFileName[1].isEmpty());
        QCOMPARE(buffer.SentenceFileName[2], QStringLiteral("S002.MP2"));
        QCOMPARE(buffer.SentenceControl[2], QStringLiteral("A003"));
        QCOMPARE(buffer.ProgramSort[3], qint16(4));
        QCOMPARE(dialog.box(3)->text(), QStringLiteral("S003.MP2"));

        dialog.findChild<QPushButton *>(QStringLiteral("cmdPcCaDel"))->click();
        QCOMPARE(buffer.SentenceFileName[1], QStringLiteral("S002.MP2"));
        QCOMPARE(buffer.SentenceControl[1], QStringLiteral("A002"));
        QVERIFY(buffer.SentenceFileName[3].isEmpty());
        QCOMPARE(buffer.ProgramSort[3], qint16(0));
    }

    void insertIntoAFullTableIsRefused_data()
    {
        QTest::addColumn<int>("capacity");
        QTest::addColumn<QString>("message");
        QTest::newRow("128") << 128 << "128 step is programmed. Can not insert";
        QTest::newRow("512") << 512 << "512 step is programmed. Can not insert";
    }
    void insertIntoAFullTableIsRefused()
    {
        QFETCH(int, capacity);
        QFETCH(QString, message);
        fillSentences(state().SettingBuffer, capacity, capacity);
        SentenceTableEdit::setEntry(state().SettingBuffer, 2, QString());
        const SettingData before = state().SettingBuffer;
        dlgPcCa dialog(f->context, nullptr);
        f->msgBox.script({MsgBox::Answer::Ok});
        dialog.findChild<QPushButton *>(QStringLiteral("cmdPcCaIns"))->click();
        QCOMPARE(f->msgBox.shown, QStringList {message});
        QVERIFY(state().SettingBuffer.SentenceFileName == before.SentenceFileName);
    }

    void cancelAfterEditsLeavesBothCopiesAsBefore()
    {
        fillSentences(state().Setting, 128, 2);
        state().CopySettingToBuffer(SettingSection::All);
        const SettingData before = state().Setting;
        makeVoiceFiles({QStringLiteral("NEW.MP2")});
        {
            dlgPcCa dialog(f->context, nullptr);
            typeInto(dialog, 5, QStringLiteral("NEW.MP2"));
            f->msgBox.script({MsgBox::Answer::Cancel});
            dialog.findChild<QPushButton *>(QStringLiteral("cmdPcCaClose"))->click();
            QCOMPARE(f->msgBox.shown, QStringList {ContentsQuestion});
            QCOMPARE(state().SettingBuffer.SentenceFileName[5], QStringLiteral("NEW.MP2"));
            f->msgBox.script({MsgBox::Answer::Ok});
            dialog.findChild<QPushButton *>(QStringLiteral("cmdPcCaClose"))->click();
        }
        QVERIFY(state().Setting.SentenceFileName == before.SentenceFileName);
        QVERIFY(state().SettingEqualsBuffer(SettingSection::All));
        QVERIFY(QDir(f->home.filePath(QStringLiteral("SoundTmp"))).entryList(QDir::Files).isEmpty());
    }

    void okStoresTheFilesInTheProjectFolder()
    {
        state().Setting.ProjectName = state().SettingBuffer.ProjectName = QStringLiteral("Station");
        makeVoiceFiles({QStringLiteral("hello.mp2")});
        dlgPcCa dialog(f->context, nullptr);
        typeInto(dialog, 0, QStringLiteral("hello.mp2"));
        dialog.findChild<QPushButton *>(QStringLiteral("cmdPcCaOk"))->click();
        QCOMPARE(state().Setting.SentenceFileName[0], QStringLiteral("HELLO.MP2"));
        QCOMPARE(readTestFile(f->home.filePath(QStringLiteral("Station/hello.mp2"))),
                 QByteArray("MP2 hello.mp2"));
        QVERIFY(f->msgBox.shown.isEmpty());
    }

    void droppedFiles()
    {
        QTemporaryDir elsewhere;
        const QString good = elsewhere.filePath(QStringLiteral("DROP.MP2"));
        const QString longName = elsewhere.filePath(QStringLiteral("ABCDEFGHIJ.MP2"));
        writeTestFile(good, "dropped");
        writeTestFile(longName, "long");
        dlgPcCa dialog(f->context, nullptr);

        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(longName), QUrl::fromLocalFile(good)});
        dropOn(dialog.box(3), data);
        QVERIFY(dialog.box(3)->text().isEmpty());

        data.setUrls({QUrl::fromLocalFile(good), QUrl::fromLocalFile(longName)});
        dropOn(dialog.box(3), data);
        QCOMPARE(dialog.box(3)->text(), QStringLiteral("DROP.MP2"));
        QCOMPARE(readTestFile(f->home.filePath(QStringLiteral("SoundTmp/DROP.MP2"))), QByteArray("dropped"));
        // Leaving the box takes the entry; the file is already waiting, so nothing is reported.
        dialog.TxtPcCa_LostFocus(3);
        QCOMPARE(state().SettingBuffer.SentenceFileName[3], QStringLiteral("DROP.MP2"));
        QVERIFY(f->msgBox.shown.isEmpty());

        // A name the setting file's code page (CP932) cannot hold is refused on leaving the box.
        const QString accented = elsewhere.filePath(QStringLiteral("CAF\u00C9.MP2"));
        writeTestFile(accented, "accent");
        data.setUrls({QUrl::fromLocalFile(accented)});
        dropOn(dialog.box(4), data);
        QCOMPARE(dialog.box(4)->text(), QStringLiteral("CAF\u00C9.MP2"));
        f->msgBox.script({MsgBox::Answer::Ok});
        QVERIFY(!dialog.TxtPcCa_LostFocus(4));
        QCOMPARE(f->msgBox.shown, QStringList {Incorrect});
        QVERIFY(state().SettingBuffer.SentenceFileName[4].isEmpty());
        QVERIFY(dialog.box(4)->text().isEmpty());
    }

    void allSentenceCopiesOnlyWhatIsMissing()
    {
        QTemporaryDir card;
        QDir(card.path()).mkpath(QStringLiteral("CONTENTS"));
        for (const char *name : {"A.MP2", "b.mp2", "c.Mp2", "notes.txt"})
            writeTestFile(card.filePath(QStringLiteral("CONTENTS/") + QLatin1String(name)), "card");
        writeTestFile(card.filePath(QStringLiteral("DQ480.CSV")), "CARDNAME,,");
        state().CardSlot = card.path();
        dlgCaPc dialog(f->context, nullptr);
        dialog.findChild<QLineEdit *>(QStringLiteral("txtCaPcAllInp"))->setText(QStringLiteral("backup"));
        const QString target = voice.filePath(QStringLiteral("backup"));
        QDir().mkpath(target);
        writeTestFile(target + QStringLiteral("/A.MP2"), "mine");

        f->msgBox.script({MsgBox::Answer::Ok, MsgBox::Answer::Ok});
        dialog.cmdCaPcAll_Click();
        dialog.cmdCaPcAll_Click();
        QCOMPARE(f->msgBox.shown, (QStringList {"File copy complete", "File copy complete"}));
        QCOMPARE(QDir(target).entryList(QDir::Files, QDir::Name),
                 (QStringList {"A.MP2", "DQ480.CSV", "b.mp2"}));
        QCOMPARE(readTestFile(target + QStringLiteral("/A.MP2")), QByteArray("mine"));
    }

    void selectionCopiesOneFileNeverOverwriting()
    {
        QTemporaryDir card;
        QDir(card.path()).mkpath(QStringLiteral("CONTENTS"));
        writeTestFile(card.filePath(QStringLiteral("CONTENTS/RAIN.MP2")), "card");
        writeTestFile(voice.filePath(QStringLiteral("HELLO.MP2")), "mine");
        writeTestFile(card.filePath(QStringLiteral("CONTENTS/HELLO.MP2")), "card");
        state().CardSlot = card.path();
        dlgCaPc dialog(f->context, nullptr);
        auto *input = dialog.findChild<QLineEdit *>(QStringLiteral("txtCaPcSelInp"));

        f->msgBox.script({MsgBox::Answer::Ok, MsgBox::Answer::Ok, MsgBox::Answer::Ok, MsgBox::Answer::Ok});
        input->setText(QStringLiteral("RAIN.MP2"));
        dialog.cmdCaPcSel_Click();
        QVERIFY(input->text().isEmpty());
        input->setText(QStringLiteral("HELLO.MP2"));
        dialog.cmdCaPcSel_Click();
        input->setText(QStringLiteral("notes.txt"));
        dialog.cmdCaPcSel_Click();
        input->setText(QStringLiteral("GONE.MP2"));
        dialog.cmdCaPcSel_Click();
        QCOMPARE(f->msgBox.shown.mid(0, 3),
                 (QStringList {"File copy complete", "Filesystem Error  File:HELLO.MP2", Incorrect}));
        QVERIFY(f->msgBox.shown.at(3).contains(QStringLiteral("GONE.MP2")));
        QCOMPARE(readTestFile(voice.filePath(QStringLiteral("RAIN.MP2"))), QByteArray("card"));
        QCOMPARE(readTestFile(voice.filePath(QStringLiteral("HELLO.MP2"))), QByteArray("mine"));
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

    void aCardWithoutContentsCopiesNoSentence()
    {
        QTemporaryDir card;
        writeTestFile(card.filePath(QStringLiteral("A.MP2")), "root");
        state().CardSlot = card.path();
        dlgCaPc dialog(f->context, nullptr);
        dialog.findChild<QLineEdit *>(QStringLiteral("txtCaPcAllInp"))->setText(QStringLiteral("empty"));
        f->msgBox.script({MsgBox::Answer::Ok});
        dialog.cmdCaPcAll_Click();
        QCOMPARE(f->msgBox.shown, QStringList {"File copy complete"});
        QVERIFY(QDir(voice.filePath(QStringLiteral("empty"))).entryList(QDir::Files).isEmpty());
    }
};

QTEST_MAIN(tst_SentenceDialogs)
#include "tst_SentenceDialogs.moc"
