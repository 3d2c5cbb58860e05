#include "cardedit/frmEdit.h"
#include "mainwindow/ToolbarIcons.h"
#include "mainwindow/frmMain.h"
#include "platform/SingleInstance.h"
#include "support/GuiFixture.h"
#include "support/HostileSettingFiles.h"
#include "support/OtherCopy.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QStyle>
#include <QTest>
#include <QTimer>

#include "support/TestFiles.h"
#include "support/TestMounts.h"

namespace {

const QString Example = QStringLiteral(DQ480_TEST_DATA "/example-two-sentences.stf");

} // namespace

class tst_frmMain : public QObject
{
    Q_OBJECT

    QTemporaryDir m_made;
    std::unique_ptr<GuiFixture> f;
    std::unique_ptr<SingleInstance> instance;
    std::unique_ptr<frmMain> window;

    QAction *action(const char *name) const
    {
        return findControl<QAction>(window.get(), QLatin1String(name));
    }
    QString path(const QString &name) const { return f->home.filePath(name); }

public:
    static void initMain() { OtherCopy::runWhenAsked(); }

private slots:
    void init()
    {
        f = std::make_unique<GuiFixture>();
        instance = std::make_unique<SingleInstance>();
        window = std::make_unique<frmMain>(f->context);
        QVERIFY(window->MDIForm_Load(*instance));
    }
    void cleanup()
    {
        VERIFY_NO_UNEXPECTED_BOX(f->msgBox);
        QCOMPARE(f->fileDialogs.unexpected, 0);
        window.reset();
        instance.reset();
        f.reset();
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

    // A file another program wrote is refused with what it is and what to do, or read as it is;
    // neither a pipe nor a device holds the program.
    void openMeetsFilesItDidNotWrite_data() { HostileSettingFiles::addRows(m_made.path()); }
    void openMeetsFilesItDidNotWrite()
    {
        QFETCH(QString, path);
        QFETCH(LoadOutcome, outcome);
        QFETCH(QString, reason);
        f->msgBox.answerOkBoxes = true;
        f->fileDialogs.answers << path;
        action("mnuOpen")->trigger();
        if (outcome == LoadOutcome::Read) {
            QCOMPARE(f->msgBox.shown, QStringList());
            QCOMPARE(f->state->Setting.CardName, QStringLiteral("A") + QChar(0) + QStringLiteral("B"));
            QCOMPARE(f->state->Setting.ProgramName[1], QStringLiteral("駅の案内"));
            return;
        }
        const QString heading
            = outcome == LoadOutcome::Rejected ? QStringLiteral("Setting file error!\r\n") : QString();
        QCOMPARE(f->msgBox.shown, QStringList {heading + reason.arg(path)});
        QVERIFY(f->state->CurrentFilePath.isEmpty());
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

    // Files a crashed run left in the work folder must not stand in for the project's own files;
    // what is no sentence file stays.
    void startUpEmptiesTheWorkFolder_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("removed");
        QTest::newRow("upper case") << "STALE.MP2" << true;
        QTest::newRow("lower case") << "stale.mp2" << true;
        QTest::newRow("mixed case") << "Stale.mP2" << true;
        QTest::newRow("hidden") << ".hidden.Mp2" << true;
        QTest::newRow("another kind") << "STALE.MP3" << false;
        QTest::newRow("a copy's backup") << "STALE.MP2.bak" << false;
    }
    void startUpEmptiesTheWorkFolder()
    {
        QFETCH(QString, name);
        QFETCH(bool, removed);
        GuiFixture next;
        QDir(next.home.path()).mkpath(QStringLiteral("SoundTmp"));
        writeTestFile(next.home.filePath(QStringLiteral("SoundTmp/") + name), "stale");
        SingleInstance lock;
        frmMain started(next.context);
        QVERIFY(started.MDIForm_Load(lock));
        QCOMPARE(QFileInfo::exists(next.home.filePath(QStringLiteral("SoundTmp/") + name)), !removed);
    }

    // A second copy on the program folder in use would clear the first one's work folder: it does
    // not start, whoever runs it. On a folder of its own (another user's) it starts, and so it does
    // once the first copy was killed: a copy that died holds nothing any more.
    void aSecondCopyStartsOnlyOnAFolderNotInUse_data()
    {
        QTest::addColumn<bool>("firstElsewhere");
        QTest::addColumn<bool>("firstKilled");
        QTest::addColumn<bool>("sameFolder");
        QTest::addColumn<bool>("starts");
        QTest::newRow("same folder, first copy in this process") << false << false << true << false;
        QTest::newRow("same folder, first copy in another process") << true << false << true << false;
        QTest::newRow("a folder of its own") << true << false << false << true;
        QTest::newRow("same folder, first copy killed") << true << true << true << true;
    }
    void aSecondCopyStartsOnlyOnAFolderNotInUse()
    {
        QFETCH(bool, firstElsewhere);
        QFETCH(bool, firstKilled);
        QFETCH(bool, sameFolder);
        QFETCH(bool, starts);
        QDir(f->home.path()).mkpath(QStringLiteral("SoundTmp"));
        writeTestFile(path(QStringLiteral("SoundTmp/WAITING.MP2")), "waiting for Apply");
        OtherCopy first;
        if (firstElsewhere) {
            window.reset();
            instance.reset();
            QVERIFY(first.start(f->home.path()));
            if (firstKilled)
                first.kill();
        }
        QTemporaryDir own;
        ScriptedMsgBox secondMsgBox;
        secondMsgBox.answerOkBoxes = true;
        const auto secondState = makeTestState(sameFolder ? f->home.path() : own.path());
        AppContext second {*secondState, secondMsgBox, f->fileDialogs, f->drives};
        SingleInstance lock;
        frmMain started(second);
        QCOMPARE(started.MDIForm_Load(lock), starts);
        QCOMPARE(secondMsgBox.shown,
                 starts ? QStringList() : QStringList {"DQ-480 Setting soft is starting already"});
        if (!starts)
            QCOMPARE(readTestFile(path(QStringLiteral("SoundTmp/WAITING.MP2"))),
                     QByteArray("waiting for Apply"));
    }

    // A program folder that cannot be written is said at start, once, rather than at each failure.
    void aProgramFolderThatCannotBeWrittenIsSaidAtStart()
    {
        QString skip;
        const auto folder = TestMount::tmpfs("1m", skip);
        if (!folder)
            QSKIP(qPrintable(skip));
        QVERIFY(folder->makeReadOnly());
        GuiFixture next;
        next.state->AppPath = folder->path();
        next.msgBox.answerOkBoxes = true;
        SingleInstance lock;
        frmMain started(next.context);
        QVERIFY(started.MDIForm_Load(lock));
        QCOMPARE(
            next.msgBox.shown,
            QStringList {QStringLiteral("The program folder %1 cannot be written: Read-only file system.\n"
                                        "Until it can be written, sentences cannot be added to projects "
                                        "and the card's test tone cannot be made.")
                             .arg(folder->path())});
        next.msgBox.shown.clear();
        started.mnuNew_Click();
        QCOMPARE(next.msgBox.shown, QStringList());
    }

    // Without a desktop theme the new, open and save buttons show the style's own pictures, and the
    // drawn ones are sharp at any size, HiDPI included, and greyed while their button is disabled.
    void toolbarIconsWithoutADesktopTheme_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("standard"); // the style's picture, or -1 for a drawn one
        QTest::newRow("new") << "new" << int(QStyle::SP_FileIcon);
        QTest::newRow("open") << "open" << int(QStyle::SP_DialogOpenButton);
        QTest::newRow("save") << "save" << int(QStyle::SP_DialogSaveButton);
        QTest::newRow("print") << "print" << -1;
        QTest::newRow("help") << "help" << -1;
    }
    void toolbarIconsWithoutADesktopTheme()
    {
        QFETCH(QString, key);
        QFETCH(int, standard);
        // As on X without a desktop: only the fallback theme, hicolor.
        const QString theme = QIcon::themeName();
        const QString fallback = QIcon::fallbackThemeName();
        QIcon::setFallbackThemeName(QStringLiteral("hicolor"));
        QIcon::setThemeName(QStringLiteral("hicolor"));
        const frmMain bare(f->context);
        QIcon::setThemeName(theme);
        QIcon::setFallbackThemeName(fallback);
        const QIcon icon = findControl<QAction>(&bare, key)->icon();
        for (const qreal ratio : {1.0, 2.0}) {
            for (const int side : {16, 24, 48}) {
                const QPixmap normal = icon.pixmap(QSize(side, side), ratio);
                const QPixmap disabled = icon.pixmap(QSize(side, side), ratio, QIcon::Disabled);
                QCOMPARE(normal.size(), QSize(side, side) * ratio);
                QVERIFY(normal.toImage() != disabled.toImage());
                if (standard >= 0) {
                    const QIcon own = bare.style()->standardIcon(QStyle::StandardPixmap(standard));
                    QCOMPARE(normal.toImage(), own.pixmap(QSize(side, side), ratio).toImage());
                    QCOMPARE(disabled.toImage(),
                             own.pixmap(QSize(side, side), ratio, QIcon::Disabled).toImage());
                } else {
                    const QImage drawn = normal.toImage();
                    QVERIFY(qAlpha(drawn.pixel(side * ratio / 2, side * ratio / 2)) > 0);
                }
            }
        }
    }

    // The program's icon is built into the program, and only in the small sizes: the window system
    // is handed every available size for every window.
    void programIconIsBuiltInAndSmall()
    {
        const QIcon icon = ToolbarIcons::application();
        QVERIFY(!icon.availableSizes().isEmpty());
        for (const QSize &size : icon.availableSizes())
            QVERIFY2(size.width() <= 48, qPrintable(QString::number(size.width())));
        const QImage shown = icon.pixmap(QSize(32, 32)).toImage();
        QCOMPARE(shown.size(), QSize(32, 32));
        QVERIFY(qAlpha(shown.pixel(16, 16)) > 0);
    }

    void removingTheChosenCardAmongOthers_data()
    {
        QTest::addColumn<int>("others");
        QTest::newRow("one left") << 1;
        QTest::newRow("two left") << 2;
    }
    void removingTheChosenCardAmongOthers()
    {
        QFETCH(int, others);
        for (int i = 0; i <= others; ++i)
            f->drives.list.append({QStringLiteral("/media/card%1").arg(i), DriveInfo::Removable, true,
                                   QStringLiteral("FAT"), 64 << 20, 32 << 20, 16 << 20,
                                   QStringLiteral("/dev/sdx1")});
        window->SysInfo1_DeviceChange();
        action("mnuNew")->trigger();
        frmEdit *edit = window->editWindow();
        QVERIFY(edit);
        window->mnuCard_Click(1);
        QCOMPARE(f->state->CardSlot, QStringLiteral("/media/card1"));
        QVERIFY(f->state->CardSlotValid);
        QVERIFY(findControl<QPushButton>(edit, QStringLiteral("cmdCaWrite"))->isEnabled());

        // The card goes while the card-to-PC dialog is open. A single card left is chosen by itself;
        // with more the operator has to choose again, and the dialog, left without a card, closes.
        QString opened;
        bool stillOpen = false;
        QTimer::singleShot(0, edit, [&] {
            QWidget *dialog = QApplication::activeModalWidget();
            opened = dialog ? dialog->objectName() : QString();
            f->drives.list.removeAt(1);
            window->SysInfo1_DeviceChange();
            stillOpen = dialog && dialog->isVisible();
            if (stillOpen)
                dialog->close();
        });
        findControl<QPushButton>(edit, QStringLiteral("cmdTCaPc"))->click();
        QCOMPARE(opened, QStringLiteral("dlgCaPc"));
        const bool chosen = others == 1;
        QCOMPARE(stillOpen, chosen);
        QCOMPARE(f->state->CardSlotValid, chosen);
        QCOMPARE(f->state->CardSlot, chosen ? QStringLiteral("/media/card0") : QString());
        for (int i = 0; i < frmMain::CardSlotEntries; ++i)
            QCOMPARE(action(qPrintable(QStringLiteral("mnuCard_%1").arg(i)))->isChecked(), chosen && i == 0);
        for (const char *name : {"cmdCaWrite", "cmdTCaPc", "cmdTCaFormat"})
            QCOMPARE(findControl<QPushButton>(edit, QLatin1String(name))->isEnabled(), chosen);
    }
};

QTEST_MAIN(tst_frmMain)
#include "tst_frmMain.moc"
