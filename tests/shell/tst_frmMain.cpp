#include "GuiFixture.h"
#include "ProjectFile.h"
#include "SettingFileWriter.h"
#include "SingleInstance.h"
#include "frmEdit.h"
#include "frmMain.h"
#include "frmSplash.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMdiArea>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

#include "TestFiles.h"
#include "TestMounts.h"
#include <QTimer>

namespace {

const QString Example = QStringLiteral(DQ480_TEST_DATA "/example-two-sentences.stf");

} // namespace

class tst_frmMain : public QObject
{
    Q_OBJECT

    std::unique_ptr<GuiFixture> f;
    std::unique_ptr<SingleInstance> instance;
    std::unique_ptr<frmMain> window;

    QAction *action(const char *name) const
    {
        return findControl<QAction>(window.get(), QLatin1String(name));
    }
    QString path(const QString &name) const { return f->home.filePath(name); }

private slots:
    void init()
    {
        f = std::make_unique<GuiFixture>();
        instance = std::make_unique<SingleInstance>(path(QStringLiteral("dq480.lock")));
        window = std::make_unique<frmMain>(f->context);
        QVERIFY(window->MDIForm_Load(*instance));
    }
    void cleanup()
    {
        QVERIFY2(f->msgBox.unexpected.isEmpty(), qPrintable(f->msgBox.unexpected.join(QLatin1Char('|'))));
        QCOMPARE(f->fileDialogs.unexpected, 0);
        window.reset();
        instance.reset();
        f.reset();
    }

    void startUpState()
    {
        QCOMPARE(window->windowTitle(), QStringLiteral("Arvon DQ-480"));
        QStringList menus;
        for (QAction *menu : window->menuBar()->actions())
            menus << menu->text();
        QCOMPARE(menus, (QStringList {"File(&F)", "Tool(&T)", "Help(&H)"}));
        const QList<QPair<const char *, const char *>> captions {{"mnuNew", "New(&N)"},
                                                                 {"mnuOpen", "Open(&S)"},
                                                                 {"mnuSave", "Save(&S)"},
                                                                 {"mnuSave_as", "Save as(&A)"},
                                                                 {"mnuCardWrite", "Card write"},
                                                                 {"mnuInfCopy", "File information copy"},
                                                                 {"mnuAllInfo", "All setting data copy"},
                                                                 {"mnuAllProgram", "All program copy"},
                                                                 {"mnuExit", "Exit"},
                                                                 {"mnuSvSet", "Surveillance file enable"},
                                                                 {"mnuHelp", "Help(&H)"}};
        for (const auto &[name, caption] : captions)
            QCOMPARE(action(name)->text(), QString::fromUtf8(caption));
        QCOMPARE(window->findChild<QMenu *>(QStringLiteral("mnuPrint"))->title(), QStringLiteral("Print"));
        QCOMPARE(window->findChild<QMenu *>(QStringLiteral("mnuCardSlot"))->title(),
                 QStringLiteral("Card slot setting"));

        QVERIFY(action("mnuCard_0")->isVisible());
        QCOMPARE(action("mnuCard_0")->text(), QStringLiteral("Nothing"));
        for (int i = 1; i < frmMain::CardSlotEntries; ++i)
            QVERIFY(!action(qPrintable(QStringLiteral("mnuCard_%1").arg(i)))->isVisible());
        QVERIFY(action("mnuSvSet")->isChecked());
        QVERIFY(!action("mnuSave")->isVisible());
        QVERIFY(!action("save")->isEnabled());
        for (const char *key : {"new", "open", "save", "print", "help"})
            QVERIFY(!action(key)->toolTip().isEmpty());
        QVERIFY(f->state->CurrentFilePath.isEmpty());
        QVERIFY(!f->state->CardSlotValid);

        auto *splash = window->findChild<frmSplash *>();
        QVERIFY(splash && splash->isVisible());
        window->findChild<QTimer *>(QStringLiteral("Timer1"))->setInterval(1);
        QTRY_VERIFY(!window->findChild<frmSplash *>());
    }

    void newThenExitAsksNothing()
    {
        action("mnuNew")->trigger();
        QCOMPARE(f->state->CurrentFilePath, QStringLiteral("New File"));
        QCOMPARE(window->windowTitle(), QStringLiteral("DQ-480 Setting Software : New File"));
        QVERIFY(action("mnuSave")->isVisible());
        const auto *splash = window->findChild<frmSplash *>();
        QVERIFY(!splash || !splash->isVisible());
        QVERIFY(window->close());
        QVERIFY(f->msgBox.shown.isEmpty());
    }

    void cardWriteFollowsTheCardSlot()
    {
        action("mnuNew")->trigger();
        QAction *cardWrite = action("mnuCardWrite");
        QVERIFY(cardWrite->isVisible());
        // No card: refused like the card edit window's disabled button, without a question.
        QVERIFY(!f->state->CardSlotValid);
        QVERIFY(!cardWrite->isEnabled());
        cardWrite->trigger();
        window->mnuCardWrite_Click();
        QCOMPARE(f->msgBox.shown, QStringList {});

        DriveInfo card;
        card.path = path(QStringLiteral("card"));
        card.type = DriveInfo::Removable;
        card.ready = true;
        card.fileSystem = QStringLiteral("FAT");
        card.totalSize = 64 * 1024 * 1024;
        f->drives.list = {card};
        window->SysInfo1_DeviceChange();
        QVERIFY(cardWrite->isEnabled());
        f->msgBox.script({MsgBox::Answer::Cancel});
        cardWrite->trigger();
        QCOMPARE(f->msgBox.shown,
                 QStringList {QStringLiteral("Write setting file at drive:") + card.path + "?"});

        f->drives.list.clear();
        window->SysInfo1_DeviceChange();
        QVERIFY(!cardWrite->isEnabled());
        window->mnuCardWrite_Click();
        QCOMPARE(f->msgBox.shown.size(), 1);
    }

    void closingAsksAboutPendingWork_data()
    {
        QTest::addColumn<bool>("applied");
        QTest::addColumn<QString>("question");
        QTest::newRow("edits not applied") << false << ContentsQuestion;
        QTest::newRow("applied, not saved") << true << SettingQuestion;
    }
    void closingAsksAboutPendingWork()
    {
        QFETCH(bool, applied);
        QFETCH(QString, question);
        action("mnuNew")->trigger();
        f->state->SettingBuffer.CardName = QStringLiteral("PLATFORM 2");
        if (applied)
            f->state->CopyBufferToSetting(SettingSection::CardSentencesPrograms);

        f->msgBox.script({MsgBox::Answer::Cancel});
        QVERIFY(!window->close());
        QCOMPARE(f->msgBox.shown, QStringList {question});
        QCOMPARE(f->state->SettingBuffer.CardName, QStringLiteral("PLATFORM 2"));
        QCOMPARE(f->state->CurrentFilePath, QStringLiteral("New File"));

        f->msgBox.script({MsgBox::Answer::Ok});
        QVERIFY(window->close());
        QVERIFY(f->state->SettingBuffer.CardName.isEmpty());
    }

    void openReadsTheProject()
    {
        f->fileDialogs.answers << Example;
        action("mnuOpen")->trigger();
        QCOMPARE(f->fileDialogs.filters,
                 QStringList {"*.stf (*.stf);;DQ480.csv (DQ480.csv DQ480.CSV dq480.csv)"});
        const SharedState &s = *f->state;
        QCOMPARE(s.Setting.ProjectName, QStringLiteral("Station"));
        QCOMPARE(s.Setting.SentenceFileName[1], QStringLiteral("RAIN2.MP2"));
        QVERIFY(s.SettingEqualsBuffer(SettingSection::All) && s.SettingEqualsSaved());
        QCOMPARE(s.CurrentFilePath, Example);
        QCOMPARE(s.ProjectFilePath, Example);
        QCOMPARE(s.ProjectFileName, QStringLiteral("example-two-sentences.stf"));
        QCOMPARE(s.ProjectFolder, QStringLiteral(DQ480_TEST_DATA "/"));
        QCOMPARE(window->windowTitle(), QStringLiteral("DQ-480 Setting Software : ") + Example);
        QCOMPARE(window->findChild<QLabel *>(QStringLiteral("lblFileName"))->text(), s.ProjectFileName);
        QCOMPARE(window->findChild<QLabel *>(QStringLiteral("lblFileFolder"))->text(),
                 folderDisplayText(s.ProjectFileName, s.ProjectFolder));

        // Open and New do nothing while a project is open.
        f->fileDialogs.answers << Example;
        action("mnuOpen")->trigger();
        action("mnuNew")->trigger();
        QCOMPARE(f->fileDialogs.answers.size(), 1);
        QCOMPARE(f->state->Setting.ProjectName, QStringLiteral("Station"));
        f->fileDialogs.answers.clear();
    }

    void openOfARejectedFile()
    {
        const QString bad = path(QStringLiteral("broken.stf"));
        writeTestFile(bad, "PJNAME,half a project,\r\nNOT A KEY LINE\r\n");
        f->msgBox.script({MsgBox::Answer::Ok});
        f->fileDialogs.answers << bad;
        action("mnuOpen")->trigger();
        QCOMPARE(f->msgBox.shown, QStringList {"Setting file error!"});
        // A new project, bound to the path that could not be read; no project window.
        QVERIFY(f->state->Setting.ProjectName.isEmpty());
        QCOMPARE(f->state->ProjectFilePath, bad);
        QVERIFY(f->state->CurrentFilePath.isEmpty());
        QVERIFY(!action("mnuSave")->isVisible());
    }

    void openOfAGivenFile_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("projectName");
        const QByteArray setting = readTestFile(Example);
        QTest::newRow("setting file") << "given.stf" << setting << QString() << QStringLiteral("Station");
        // A card's control file: the setting file without its project header.
        QTest::newRow("card control file")
            << "DQ480.CSV" << setting.mid(setting.indexOf("CARDNAME,")) << QString() << QString();
        QTest::newRow("broken file") << "given.stf"
                                     << QByteArray("PJNAME,half a project,\r\nNOT A KEY LINE\r\n")
                                     << QStringLiteral("Setting file error!") << QString();
        QTest::newRow("missing file")
            << "gone.stf" << QByteArray() << QStringLiteral("Cannot open %1: No such file or directory")
            << QString();
    }
    void openOfAGivenFile()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, content);
        QFETCH(QString, message);
        QFETCH(QString, projectName);
        const QString given = path(name);
        if (!content.isEmpty())
            writeTestFile(given, content);
        if (!message.isEmpty())
            f->msgBox.script({MsgBox::Answer::Ok});
        window->openProjectFile(given);
        // No open dialog: the file named is read as File > Open reads the dialog's answer.
        QVERIFY(f->fileDialogs.filters.isEmpty());
        QCOMPARE(f->msgBox.shown, message.isEmpty() ? QStringList() : QStringList {message.arg(given)});
        QCOMPARE(f->state->Setting.ProjectName, projectName);
        QCOMPARE(f->state->ProjectFilePath, given);
        const bool read = message.isEmpty();
        QCOMPARE(f->state->CurrentFilePath, read ? given : QString());
        QCOMPARE(f->state->ProjectFileName, read ? name : QStringLiteral("New File"));
        QCOMPARE(window->editWindow() != nullptr, read);
        QCOMPARE(action("mnuSave")->isVisible(), read);
        if (read)
            QCOMPARE(window->windowTitle(), QStringLiteral("DQ-480 Setting Software : ") + given);
    }

    void openRefusesNamesThatWouldLeaveTheirFolder_data()
    {
        QTest::addColumn<QByteArray>("from");
        QTest::addColumn<QByteArray>("to");
        QTest::addColumn<QString>("field");
        QTest::newRow("project name")
            << QByteArray("PJNAME,Station,") << QByteArray("PJNAME,../outside,") << R"(PJNAME "../outside")";
        QTest::newRow("sentence name") << QByteArray("FILENAME,HELLO   ,") << QByteArray("FILENAME,../../ab,")
                                       << R"(FILENAME "../../ab.MP2")";
    }
    void openRefusesNamesThatWouldLeaveTheirFolder()
    {
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        QFETCH(QString, field);
        // The program folder one down, so that "../outside" would be a folder beside it.
        f->state->AppPath = path(QStringLiteral("program"));
        QVERIFY(QDir().mkpath(f->state->AppPath));
        QByteArray file = readTestFile(Example);
        file.replace(from, to);
        const QString hostile = path(QStringLiteral("hostile.stf"));
        writeTestFile(hostile, file);
        f->msgBox.script({MsgBox::Answer::Ok});
        f->fileDialogs.answers << hostile;
        action("mnuOpen")->trigger();
        QCOMPARE(f->msgBox.shown,
                 QStringList {QStringLiteral("Setting file error!\r\n%1 cannot be used as a name in %2.")
                                  .arg(field, hostile)});
        QVERIFY(!QFileInfo::exists(path(QStringLiteral("outside"))));
        QVERIFY(f->state->Setting.ProjectName.isEmpty());
        QVERIFY(f->state->Setting.SentenceFileName[0].isEmpty());
        QVERIFY(f->state->CurrentFilePath.isEmpty());
    }

    void openShowsTheToneSwitchOfTheFile()
    {
        QByteArray bytes = readTestFile(Example);
        bytes.replace("SVFILE,NOMAL,", "SVFILE,NONE,").replace("SNTCTTL,SIN1KHZ ,\r\n", "");
        bytes.replace("FILENAME,SIN1KHZ ,\r\n", "").replace("PRGSORT,0000,\r\n", "");
        const QString file = path(QStringLiteral("toneless.stf"));
        writeTestFile(file, bytes);
        f->fileDialogs.answers << file;
        action("mnuOpen")->trigger();
        QVERIFY(!f->state->SurveillanceFile);
        QVERIFY(!action("mnuSvSet")->isChecked());
        action("mnuSvSet")->trigger();
        QVERIFY(f->state->SurveillanceFile);

        // Closing the project resets the switch, and the menu follows.
        action("mnuSvSet")->trigger();
        window->mdiArea()->closeAllSubWindows();
        QVERIFY(f->state->SurveillanceFile);
        QVERIFY(action("mnuSvSet")->isChecked());
    }

    void saveOfACardControlFileGoesThroughSaveAs()
    {
        const QByteArray bytes = readTestFile(Example);
        const QString card = path(QStringLiteral("DQ480.CSV"));
        writeTestFile(card, bytes.mid(bytes.indexOf("CARDNAME,")));
        f->fileDialogs.answers << card;
        action("mnuOpen")->trigger();
        QCOMPARE(f->state->ProjectFileName, QStringLiteral("DQ480.CSV"));

        const QString saved = path(QStringLiteral("station.stf"));
        f->fileDialogs.answers << saved;
        action("mnuSave")->trigger();
        QCOMPARE(f->fileDialogs.filters.last(), QStringLiteral("*.stf (*.stf)"));
        QCOMPARE(f->state->ProjectFilePath, saved);
        QCOMPARE(window->windowTitle(), QStringLiteral("DQ-480 Setting Software : ") + saved);
        QCOMPARE(readTestFile(saved), WriteSettingFile(*f->state));

        // Now a ".stf": Save writes it again without asking for a name.
        f->state->Setting.CardName = QStringLiteral("AGAIN");
        action("mnuSave")->trigger();
        QVERIFY(f->state->SettingEqualsSaved());
        QCOMPARE(f->fileDialogs.filters.size(), 2);
    }

    // File > Save onto a full disk says so and keeps the old file, byte for byte.
    void saveOntoAFullDiskIsReported()
    {
        QString skip;
        const auto disk = TestMount::tmpfs("64k", skip);
        if (!disk)
            QSKIP(qPrintable(skip));
        const QString file = disk->filePath(QStringLiteral("station.stf"));
        writeTestFile(file, readTestFile(Example));
        f->fileDialogs.answers << file;
        action("mnuOpen")->trigger();
        disk->fill();
        f->state->Setting.CardName = QStringLiteral("UNSAVED");
        f->msgBox.script({MsgBox::Answer::Ok});
        action("mnuSave")->trigger();
        QCOMPARE(f->msgBox.shown,
                 QStringList {QStringLiteral(
                                  "The setting file was not saved.\nCannot write %1: No space left on device")
                                  .arg(file)});
        QCOMPARE(readTestFile(file), readTestFile(Example));
        QVERIFY(!f->state->SettingEqualsSaved());
    }

    // Files a crashed run left in the work folder must not stand in for the project's own files.
    void startUpEmptiesTheWorkFolder()
    {
        GuiFixture next;
        QDir(next.home.path()).mkpath(QStringLiteral("SoundTmp"));
        writeTestFile(next.home.filePath(QStringLiteral("SoundTmp/STALE.MP2")), "stale");
        SingleInstance lock(next.home.filePath(QStringLiteral("dq480.lock")));
        frmMain started(next.context);
        QVERIFY(started.MDIForm_Load(lock));
        QVERIFY(!QFileInfo::exists(next.home.filePath(QStringLiteral("SoundTmp/STALE.MP2"))));
    }

    void failingSaveIsReportedAndLeavesTheProjectUnsaved()
    {
        action("mnuNew")->trigger();
        f->state->Setting.CardName = QStringLiteral("UNSAVED");
        const QString unreachable = path(QStringLiteral("no-such-folder/station.stf"));
        f->fileDialogs.answers << unreachable;
        f->msgBox.script({MsgBox::Answer::Ok});
        action("mnuSave_as")->trigger();
        QCOMPARE(f->msgBox.shown.size(), 1);
        QVERIFY(f->msgBox.shown.first().startsWith(QStringLiteral("The setting file was not saved.")));
        QVERIFY(f->msgBox.shown.first().contains(unreachable));
        QVERIFY(!f->state->SettingEqualsSaved());
        QCOMPARE(f->state->ProjectFilePath, f->state->AppPath);
        QCOMPARE(window->windowTitle(), QStringLiteral("DQ-480 Setting Software : New File"));

        // Cancel on the save dialog writes nothing and says nothing.
        f->fileDialogs.answers << QString();
        action("save")->trigger();
        QCOMPARE(f->msgBox.shown.size(), 1);
    }

    void secondCopyIsRefused()
    {
        GuiFixture second;
        // The running copy's work folder is its own: a refused second copy leaves it alone.
        QDir(second.home.path()).mkpath(QStringLiteral("SoundTmp"));
        writeTestFile(second.home.filePath(QStringLiteral("SoundTmp/WAITING.MP2")), "waiting");
        SingleInstance sameLock(path(QStringLiteral("dq480.lock")));
        frmMain other(second.context);
        second.msgBox.script({MsgBox::Answer::Ok});
        QVERIFY(!other.MDIForm_Load(sameLock));
        QCOMPARE(second.msgBox.shown, QStringList {"DQ-480 Setting soft is starting already"});
        QCOMPARE(second.msgBox.icons.first(), MsgBox::Icon::Exclamation);
        QVERIFY(!other.isVisible());
        QVERIFY(window->isVisible());
        QVERIFY(QFileInfo::exists(second.home.filePath(QStringLiteral("SoundTmp/WAITING.MP2"))));
    }

    void staleLockOfACrashedCopyDoesNotBlock()
    {
        const QString lockPath = path(QStringLiteral("crashed.lock"));
        // What a copy that died leaves behind: a lock naming a process that no longer exists.
        writeTestFile(lockPath, "999999999\ndq480\n" + QSysInfo::machineHostName().toUtf8() + "\n");
        SingleInstance next(lockPath);
        QVERIFY(next.acquire());
    }
};

QTEST_MAIN(tst_frmMain)
#include "tst_frmMain.moc"
