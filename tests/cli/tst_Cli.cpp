#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <sys/mount.h>
#include <unistd.h>

#include "HostileSettingFiles.h"
#include "TestFiles.h"

namespace {

struct Run
{
    int code = -1;
    QString out;
    QString err;
};

const QString Example = QStringLiteral(DQ480_TEST_DATA "/example-two-sentences.stf");

} // namespace

class tst_Cli : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    Run cli(const QStringList &args, const QString &encoding = QString())
    {
        QProcess process;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("DQ480_HOME"), m_dir.path());
        if (encoding.isEmpty())
            env.remove(QStringLiteral("DQ480_ENCODING"));
        else
            env.insert(QStringLiteral("DQ480_ENCODING"), encoding);
        process.setProcessEnvironment(env);
        process.start(QStringLiteral(DQ480_CLI), args);
        if (!process.waitForFinished(30000))
            qFatal("dq480-cli did not finish");
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }

    QString path(const QString &name) const { return m_dir.filePath(name); }

private slots:
    void exitCodesAndMessages_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("output");
        QTest::newRow("unknown command") << QStringList {"burn", "x"} << 2 << "Unknown command: burn";
        QTest::newRow("missing file")
            << QStringList {"check", "/nonexistent/a.stf"} << 2 << "/nonexistent/a.stf";
        QTest::newRow("not a setting file")
            << QStringList {"check", QStringLiteral(DQ480_TEST_DATA "/../CMakeLists.txt")} << 1
            << "Setting file error!";
        QTest::newRow("unknown encoding")
            << QStringList {"check", "--encoding", "klingon", Example} << 2 << "Unknown encoding: klingon";
    }
    void exitCodesAndMessages()
    {
        QFETCH(QStringList, args);
        QFETCH(int, code);
        QFETCH(QString, output);
        const Run run = cli(args);
        QCOMPARE(run.code, code);
        QVERIFY2((run.out + run.err).contains(output), qPrintable(run.out + run.err));
    }

    // Converted to a card control file, named in any case, the body is that of the setting file.
    void convertToACardControlFile()
    {
        const QString out = path(QStringLiteral("dq480.csv"));
        QCOMPARE(cli({QStringLiteral("convert"), Example, out}).code, 0);
        const QByteArray example = readTestFile(Example);
        const QByteArray written = readTestFile(out);
        const QByteArray body = example.mid(example.indexOf("CARDNAME,"));
        QVERIFY(!written.startsWith("PJNAME,Station,"));
        QVERIFY(written.endsWith(body));
    }

    void namesThatWouldLeaveTheirFolderAreRefused()
    {
        if (geteuid() != 0)
            QSKIP("mounting a card needs root");
        // The card is mounted two folders down, so "../../ab.MP2" from its CONTENTS folder is the
        // read-only file beside it.
        QTemporaryDir top;
        const QString card = top.filePath(QStringLiteral("mnt/card"));
        const QString home = top.filePath(QStringLiteral("home"));
        QVERIFY(QDir().mkpath(card) && QDir().mkpath(home));
        if (::mount("tmpfs", QFile::encodeName(card).constData(), "tmpfs", 0, "size=1m") != 0)
            QSKIP("this machine does not allow mounting a tmpfs");
        const QString outsideFile = top.filePath(QStringLiteral("mnt/ab.MP2"));
        const QByteArray sentence = QByteArray("\xFF\xFD\x48\xC4", 4) + QByteArray(100, '\x55');
        writeTestFile(outsideFile, sentence);
        QFile::setPermissions(outsideFile, QFileDevice::ReadOwner | QFileDevice::ReadGroup);
        const QString project = top.filePath(QStringLiteral("hostile.stf"));
        QByteArray file = readTestFile(Example);
        file.replace("FILENAME,HELLO   ,", "FILENAME,../../ab,");
        writeTestFile(project, file);

        QProcess process;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("DQ480_HOME"), home);
        process.setProcessEnvironment(env);
        process.start(
            QStringLiteral(DQ480_CLI),
            {QStringLiteral("write-card"), project, QStringLiteral("--card"), card, QStringLiteral("--yes")});
        QVERIFY(process.waitForFinished(30000));
        const QStringList onCard = QDir(card + QStringLiteral("/CONTENTS")).entryList(QDir::Files);
        ::umount(QFile::encodeName(card).constData());
        const QString err = QString::fromUtf8(process.readAllStandardError());

        QCOMPARE(process.exitCode(), 1);
        QVERIFY2(err.contains(QStringLiteral("Setting file error!\nFILENAME \"../../ab.MP2\""))
                     && err.contains(project),
                 qPrintable(err));
        QVERIFY2(onCard.isEmpty(), qPrintable(onCard.join(QLatin1Char(' '))));
        QVERIFY(!(QFileInfo(outsideFile).permissions() & QFileDevice::WriteOwner));
        QCOMPARE(readTestFile(outsideFile), sentence);
        QCOMPARE(QDir(home).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
    }

    // A file another program wrote is refused with what it is and what to do, and nothing is
    // written; one that is read is written back byte for byte.
    void convertMeetsFilesItDidNotWrite_data() { HostileSettingFiles::addRows(m_dir.path()); }
    void convertMeetsFilesItDidNotWrite()
    {
        QFETCH(QString, path);
        QFETCH(LoadOutcome, outcome);
        QFETCH(QString, reason);
        const QString out = m_dir.filePath(QStringLiteral("DQ480.CSV"));
        QFile::remove(out);
        const Run run = cli({QStringLiteral("convert"), path, out});
        if (outcome == LoadOutcome::Read) {
            QCOMPARE(run.err, QString());
            QCOMPARE(run.code, 0);
            const QByteArray in = readTestFile(path);
            QCOMPARE(readTestFile(out), in.mid(in.indexOf("CARDNAME,")));
            return;
        }
        const QString heading
            = outcome == LoadOutcome::Rejected ? QStringLiteral("Setting file error!\n") : QString();
        QCOMPARE(run.err, heading + reason.arg(path) + QLatin1Char('\n'));
        QCOMPARE(run.code, outcome == LoadOutcome::Unreadable ? 2 : 1);
        QVERIFY(!QFileInfo::exists(out));
    }

    void writeCardExitCodes_data()
    {
        QTest::addColumn<QString>("situation");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("message");
        QTest::newRow("complete") << "complete" << 0 << "Card write is complete";
        QTest::newRow("sentence refused by the MP2 check") << "refused" << 3 << "Filesystem error :RAIN2.MP2";
        QTest::newRow("read-only control file") << "read-only control file" << 4 << "This card is read only";
    }
    void writeCardExitCodes()
    {
        QFETCH(QString, situation);
        QFETCH(int, code);
        QFETCH(QString, message);
        if (geteuid() != 0)
            QSKIP("mounting a card needs root");
        QTemporaryDir card;
        if (::mount("tmpfs", QFile::encodeName(card.path()).constData(), "tmpfs", 0, "size=1m") != 0)
            QSKIP("this machine does not allow mounting a tmpfs");
        QDir(m_dir.path()).mkpath(QStringLiteral("Station"));
        const QByteArray sentence = QByteArray("\xFF\xFD\x48\xC4", 4) + QByteArray(500, '\x55');
        writeTestFile(path(QStringLiteral("Station/HELLO.MP2")), sentence);
        writeTestFile(path(QStringLiteral("Station/RAIN2.MP2")),
                      situation == QLatin1String("refused") ? QByteArray(500, 'x') : sentence);
        const QString contents = card.filePath(QStringLiteral("CONTENTS"));
        QDir().mkpath(contents);
        if (situation == QLatin1String("read-only control file")) {
            writeTestFile(contents + QStringLiteral("/DQ480.CSV"), "old");
            QFile::setPermissions(contents + QStringLiteral("/DQ480.CSV"), QFileDevice::ReadOwner);
        }

        const Run run = cli({QStringLiteral("write-card"), Example, QStringLiteral("--card"), card.path(),
                             QStringLiteral("--yes")});
        ::umount(QFile::encodeName(card.path()).constData());
        QVERIFY2(run.code == code, qPrintable(QString::number(run.code) + run.out + run.err));
        QVERIFY2((run.out + run.err).contains(message), qPrintable(run.out + run.err));
    }
};

QTEST_GUILESS_MAIN(tst_Cli)
#include "tst_Cli.moc"
