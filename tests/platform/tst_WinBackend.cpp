// The Windows backend under Wine, on the drive letters tests/wine/run-in-wine.sh maps: R: a
// removable drive and S: a fixed one (label DQCARD), each a folder. Nothing here runs the format
// command.
#include "platform/MediaCheck.h"
#include "platform/win/WinDriveSource.h"
#include "platform/win/WinFormat.h"
#include "platform/win/WinMediaTypes.h"
#include "platform/win/WindowsFormatLaunch.h"
#include "setting/FileAttributes.h"
#include "setting/FileReplacement.h"
#include "setting/PcFileReplacement.h"
#include "setting/TextEncoding.h"
#include "support/OtherCopy.h"
#include "support/TestFiles.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>
#include <windows.h>

namespace {

DriveInfo driveAt(const QString &path)
{
    for (const DriveInfo &drive : WinDriveSource().drives()) {
        if (drive.path == path)
            return drive;
    }
    return {};
}

QString systemFolder()
{
    return QString::fromStdWString(winSystemDirectory());
}

} // namespace

class tst_WinBackend : public QObject
{
    Q_OBJECT

private slots:
    void drives_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("ready");
        QTest::addColumn<QString>("label");
        QTest::newRow("removable") << "R:" << int(DriveInfo::Removable) << true << "";
        QTest::newRow("fixed, labelled") << "S:" << int(DriveInfo::Fixed) << true << "DQCARD";
    }
    void drives()
    {
        QFETCH(QString, path);
        QFETCH(int, type);
        QFETCH(bool, ready);
        QFETCH(QString, label);
        const DriveInfo drive = driveAt(path);
        QCOMPARE(drive.path, path);
        QCOMPARE(drive.type, type);
        QCOMPARE(drive.ready, ready);
        QVERIFY(drive.totalSize > 0);
        QVERIFY(drive.freeSpace > 0 && drive.freeSpace <= drive.totalSize);
        QVERIFY(!drive.fileSystem.isEmpty());
        QCOMPARE(QString::fromStdWString(winVolumeLabel(path.toStdWString())), label);
    }

    void formatLaunch_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("commandLine");
        QTest::addColumn<QString>("answerFile");
        QTest::addColumn<QString>("answers");
        const QString sys = systemFolder();
        QTest::newRow("removable") << "R:"
                                   << sys + "\\cmd.exe /c format.com R:/X /FS:FAT<" + sys
                + "\\DQ480tmp\\FMT.tmp"
                                   << sys + "\\DQ480tmp\\FMT.tmp"
                                   << "";
        QTest::newRow("fixed") << "S:"
                               << sys + "\\cmd.exe /c format.com S: /V:DQCARD/X /FS:FAT<" + sys
                + "\\DQ480tmp\\FMT_HDD.tmp"
                               << sys + "\\DQ480tmp\\FMT_HDD.tmp"
                               << "DQCARD\r\nY\r\n";
    }
    void formatLaunch()
    {
        QFETCH(QString, path);
        QFETCH(QString, commandLine);
        QFETCH(QString, answerFile);
        QFETCH(QString, answers);
        QCOMPARE(systemFolder().toLower(), QStringLiteral("c:\\windows\\system32"));
        const WindowsFormatLaunch launch = windowsFormatLaunch(driveAt(path));
        QCOMPARE(launch.commandLine, commandLine);
        QCOMPARE(launch.answerFile, answerFile);
        QCOMPARE(launch.answers, answers);

        // The answers land in the file byte for byte; without its folder, the failure names the
        // file and the reason.
        const QString folder = systemFolder() + QStringLiteral("\\DQ480tmp");
        QDir(folder).removeRecursively();
        QString error;
        QCOMPARE(writeFormatAnswers(launch, error), answers.isEmpty());
        if (!answers.isEmpty())
            QCOMPARE(error, QStringLiteral("Cannot write %1: No such file or directory").arg(answerFile));
        QVERIFY(QDir().mkpath(folder));
        QVERIFY2(writeFormatAnswers(launch, error), qPrintable(error));
        if (!answers.isEmpty())
            QCOMPARE(readTestFile(answerFile), answers.toLatin1());
        // A label outside ASCII goes to the format command as typed at its console: in the OEM
        // code page, 932 on this Japanese PC.
        WindowsFormatLaunch katakana = launch;
        katakana.answers = QStringLiteral("\uFF76\uFF70\uFF84\uFF9E\r\nY\r\n"); // ｶｰﾄﾞ
        katakana.answerFile = QStringLiteral("%1\\FMT_HDD.tmp").arg(folder);
        QCOMPARE(winConsoleCodePage(), 932u);
        QVERIFY2(writeFormatAnswers(katakana, error), qPrintable(error));
        QCOMPARE(readTestFile(katakana.answerFile), QByteArray("\xB6\xB0\xC4\xDE\r\nY\r\n"));
    }

    // A format command that cannot start says why in the system's words, as one line that the
    // message "... could not be started: <reason>" can end with.
    void startFailureSaysWhy()
    {
        std::wstring reason;
        QVERIFY(!winStartHidden(L"C:\\nowhere\\format-missing.exe", reason));
        const QString said = QString::fromStdWString(reason);
        QVERIFY2(!said.isEmpty() && !said.contains(QLatin1Char('\n')) && !said.endsWith(QLatin1Char(' ')),
                 qPrintable(said));
    }

    // Setting files are in the system's ANSI code page: Shift-JIS on a Japanese PC; a code page
    // named with --encoding goes through the system's converter, under each of its names.
    void ansiCodePageRoundTrip_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("the system's") << "";
        QTest::newRow("CP932") << "CP932";
        QTest::newRow("Shift_JIS") << "Shift_JIS";
        QTest::newRow("windows-31j") << "windows-31j";
    }
    void ansiCodePageRoundTrip()
    {
        QFETCH(QString, name);
        QVERIFY2(GetACP() == 932, "Wine gives the Japanese code page with LC_ALL=ja_JP.UTF-8");
        const TextEncoding encoding = name.isEmpty() ? TextEncoding::platformDefault() : TextEncoding(name);
        QVERIFY(encoding.isValid());
        const QString text = QStringLiteral("音声案内 ｱﾅｳﾝｽ");
        const QByteArray bytes = encoding.encode(text);
        QCOMPARE(bytes, QByteArray("\x89\xb9\x90\xba\x88\xc4\x93\xe0 \xb1\xc5\xb3\xdd\xbd"));
        QCOMPARE(encoding.decode(bytes), text);
    }

    void readOnlyAttribute()
    {
        QTemporaryDir dir;
        const QString path = QDir::toNativeSeparators(dir.filePath(QStringLiteral("P.stf")));
        writeTestFile(path, "old");
        const auto attributes = [&] {
            return GetFileAttributesW(reinterpret_cast<LPCWSTR>(path.utf16()));
        };

        QVERIFY(setReadOnly(path, true));
        QVERIFY(attributes() & FILE_ATTRIBUTE_READONLY);
        QVERIFY(isReadOnly(path));
        QString error;
        QVERIFY(!writeFileAtomically(path, "new", error));
        QCOMPARE(error, QStringLiteral("Cannot write %1: the file is read-only.").arg(path));
        QCOMPARE(readTestFile(path), QByteArray("old"));

        QVERIFY(setReadOnly(path, false));
        QVERIFY(!(attributes() & FILE_ATTRIBUTE_READONLY));
        QVERIFY2(writeFileAtomically(path, "new", error), qPrintable(error));
        QCOMPARE(readTestFile(path), QByteArray("new"));
    }

    // A Win32 call that fails reaches the operator with the file and the reason; the old file stays.
    void failedCallReported()
    {
        QString error;
        QVERIFY(!writeFileAtomically(QStringLiteral("Q:\\PROJECT.stf"), "new", error));
        QVERIFY2(error.startsWith(QStringLiteral("Cannot write Q:\\PROJECT.stf: ")), qPrintable(error));
        QVERIFY2(error.size() > 30, qPrintable(error));

        // Another program holds the file open without letting it be replaced.
        QTemporaryDir dir;
        const QString path = QDir::toNativeSeparators(dir.filePath(QStringLiteral("P.stf")));
        writeTestFile(path, "old");
        HANDLE held = CreateFileW(reinterpret_cast<LPCWSTR>(path.utf16()), GENERIC_READ, FILE_SHARE_READ,
                                  nullptr, OPEN_EXISTING, 0, nullptr);
        QVERIFY(held != INVALID_HANDLE_VALUE);
        const bool written = writeFileAtomically(path, "new", error);
        CloseHandle(held);
        QVERIFY(!written);
        QCOMPARE(error, QStringLiteral("Cannot write %1: Permission denied").arg(path));
        QCOMPARE(readTestFile(path), QByteArray("old"));
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList {QStringLiteral("P.stf")});
    }

    // The program is killed after writing the new file and before putting it in place: the old
    // file is still there, whole, and the next save clears what the killed one left.
    void killBetweenWriteAndReplace()
    {
        QTemporaryDir dir;
        const QString path = QDir::toNativeSeparators(dir.filePath(QStringLiteral("P.stf")));
        writeTestFile(path, "old");
        QProcess writer;
        writer.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--write-and-hold"), path});
        QVERIFY(writer.waitForReadyRead(60'000));
        QCOMPARE(writer.readAll().trimmed(), QByteArray("written"));
        writer.kill();
        QVERIFY(writer.waitForFinished(60'000));
        QCOMPARE(readTestFile(path), QByteArray("old"));
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files).size(), 2);

        QString error;
        QVERIFY2(writeFileAtomically(path, "new", error), qPrintable(error));
        QCOMPARE(readTestFile(path), QByteArray("new"));
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList {QStringLiteral("P.stf")});
    }

    // One copy runs on a program folder, whichever user starts it, and on its own folder each: the
    // lock is a kernel object the system lets go of when the copy ends, however it ends, so a copy
    // killed (in Task Manager, say) blocks nothing and no process id is ever taken for another's.
    void oneCopyPerProgramFolder_data()
    {
        QTest::addColumn<bool>("firstKilled");
        QTest::addColumn<int>("second"); // 0: the same folder, 1: it named otherwise, 2: another
        QTest::addColumn<bool>("starts");
        QTest::newRow("same folder") << false << 0 << false;
        QTest::newRow("same folder, other case and separators") << false << 1 << false;
        QTest::newRow("a folder of its own") << false << 2 << true;
        QTest::newRow("same folder, first copy killed") << true << 0 << true;
    }
    void oneCopyPerProgramFolder()
    {
        QFETCH(bool, firstKilled);
        QFETCH(int, second);
        QFETCH(bool, starts);
        QTemporaryDir folder;
        QTemporaryDir own;
        OtherCopy first;
        QVERIFY(first.start(folder.path()));
        if (firstKilled)
            first.kill();
        const QString secondFolder = second == 0 ? folder.path()
            : second == 1                        ? QDir::toNativeSeparators(folder.path()).toUpper()
                                                 : own.path();
        SingleInstance instance;
        QCOMPARE(instance.acquire(secondFolder), starts);
    }

    // The media check decides on the count alone: 11, or 0 for a failed query. Wine's own drives
    // answer what Wine answers, so the counts come as reply sizes of 24-byte records.
    void mediaCount_data()
    {
        QTest::addColumn<unsigned long>("replyBytes");
        QTest::addColumn<bool>("passes");
        QTest::newRow("query failed: 0") << 0ul << true;
        QTest::newRow("10 types") << 240ul << false;
        QTest::newRow("11 types") << 264ul << true;
        QTest::newRow("12 types") << 288ul << false;
        QTest::newRow("Wine's 40 bytes") << 40ul << false;
    }
    void mediaCount()
    {
        QFETCH(unsigned long, replyBytes);
        QFETCH(bool, passes);
        QCOMPARE(modFDCHK::mediaCheckVerdict(modFDCHK::mediaCountFromBytes(replyBytes)), passes);
    }

    // The device itself: a letter without a drive cannot be opened and fails; a mapped one opens.
    void mediaQueryOnDevices()
    {
        QCOMPARE(winMediaTypeCount("Q:"), -1);
        DriveInfo absent;
        absent.path = QStringLiteral("Q:");
        QVERIFY(!modFDCHK::MediaCheck(absent));
        QVERIFY(winMediaTypeCount("R:") >= 0);
    }

    // The Wine harness stands in a card reader's count for one drive; the device is still opened
    // for real, and no other drive's answer changes.
    void mediaCountStandIn()
    {
        const int wineAnswerForS = winMediaTypeCount("S:");
        qputenv("DQ480_WINE_MEDIA_TYPES", "r:=11");
        const int r = winMediaTypeCount("R:");
        const int s = winMediaTypeCount("S:");
        const int q = winMediaTypeCount("Q:");
        qunsetenv("DQ480_WINE_MEDIA_TYPES");
        QCOMPARE(r, 11);
        QCOMPARE(s, wineAnswerForS);
        QCOMPARE(q, -1);
        QCOMPARE(wineStandInMediaCount("D:", "D:=2x"), -1);
    }
};

// "--write-and-hold FILE": writes a new FILE without putting it in place, says so, and waits to
// be killed. With DQ480_OTHER_COPY_ON set, it is another copy of the program on that folder.
int main(int argc, char *argv[])
{
    OtherCopy::runWhenAsked();
    QCoreApplication app(argc, argv);
    if (argc == 3 && QByteArray(argv[1]) == "--write-and-hold") {
        PcFileReplacement file(QString::fromLocal8Bit(argv[2]));
        QString error;
        if (!file.open(error) || !file.write(QByteArray(1 << 20, 'n'), error))
            return 1;
        std::fputs("written\n", stdout);
        std::fflush(stdout);
        Sleep(INFINITE);
    }
    tst_WinBackend test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_WinBackend.moc"
