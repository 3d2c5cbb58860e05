#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/mount.h>
#include <unistd.h>

#include "support/CliRun.h"
#include "support/HostileSettingFiles.h"
#include "support/TestFiles.h"
#include "support/TestMounts.h"

namespace {

const QString Example = QStringLiteral(DQ480_TEST_DATA "/example-two-sentences.stf");

} // namespace

class tst_Cli : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    CliRun cli(const QStringList &args, const QString &encoding = QString(), const QByteArray &input = {},
               const QString &home = QString())
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("DQ480_HOME"), home.isEmpty() ? m_dir.path() : home);
        if (encoding.isEmpty())
            env.remove(QStringLiteral("DQ480_ENCODING"));
        else
            env.insert(QStringLiteral("DQ480_ENCODING"), encoding);
        return runCli(args, env, input);
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
        const CliRun run = cli(args);
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

        const CliRun run = cli(
            {QStringLiteral("write-card"), project, QStringLiteral("--card"), card, QStringLiteral("--yes")},
            {}, {}, home);
        const QStringList onCard = QDir(card + QStringLiteral("/CONTENTS")).entryList(QDir::Files);
        ::umount(QFile::encodeName(card).constData());
        const QString &err = run.err;

        QCOMPARE(run.code, 1);
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
        const CliRun run = cli({QStringLiteral("convert"), path, out});
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
        QTest::addColumn<QString>("answer"); // --yes, --no, or none: asked on the input
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("message");
        QTest::newRow("complete") << "complete"
                                  << "--yes" << QByteArray() << 0 << "Card write is complete";
        QTest::newRow("sentence refused by the MP2 check")
            << "refused"
            << "--yes" << QByteArray() << 3 << "Filesystem error :RAIN2.MP2";
        QTest::newRow("read-only control file") << "read-only control file"
                                                << "--yes" << QByteArray() << 4 << "This card is read only";
        QTest::newRow("locked card") << "locked card"
                                     << "--yes" << QByteArray() << 4 << "This card is read only";
        QTest::newRow("test tone cannot be made")
            << "program folder read-only"
            << "--yes" << QByteArray() << 3
            << "The test tone SIN1KHZ.MP2 did not reach the card.\nCannot write %1/SIN1KHZ.MP2: Read-only "
               "file system";
        QTest::newRow("no terminal to ask on")
            << "control file" << QString() << QByteArray() << 4
            << "Write over the setting data\n[y/n] \n|No answer could be read (there is no terminal, or the "
               "input has ended), so the answer is no. Give --yes or --no to answer every question.";
        QTest::newRow("asked again until y or n")
            << "control file" << QString() << QByteArray("sure\n\ny\n") << 0
            << "[y/n] Please answer y or n.\n[y/n] Please answer y or n.\n[y/n] Writing HELLO.MP2";
    }
    void writeCardExitCodes()
    {
        QFETCH(QString, situation);
        QFETCH(QString, answer);
        QFETCH(QByteArray, input);
        QFETCH(int, code);
        QFETCH(QString, message);
        QString skip;
        const auto card = TestMount::tmpfs("1m", skip);
        const auto home = TestMount::tmpfs("1m", skip);
        if (!card || !home)
            QSKIP(qPrintable(skip));
        QDir(home->path()).mkpath(QStringLiteral("Station"));
        const QByteArray sentence = QByteArray("\xFF\xFD\x48\xC4", 4) + QByteArray(500, '\x55');
        writeTestFile(home->filePath(QStringLiteral("Station/HELLO.MP2")), sentence);
        writeTestFile(home->filePath(QStringLiteral("Station/RAIN2.MP2")),
                      situation == QLatin1String("refused") ? QByteArray(500, 'x') : sentence);
        const QString contents = card->filePath(QStringLiteral("CONTENTS"));
        QDir().mkpath(contents);
        if (situation != QLatin1String("complete") && situation != QLatin1String("refused"))
            writeTestFile(contents + QStringLiteral("/DQ480.CSV"), "old");
        if (situation == QLatin1String("read-only control file"))
            QFile::setPermissions(contents + QStringLiteral("/DQ480.CSV"), QFileDevice::ReadOwner);
        if (situation == QLatin1String("locked card"))
            QVERIFY(card->makeReadOnly());
        if (situation == QLatin1String("program folder read-only"))
            QVERIFY(home->makeReadOnly());

        QStringList args {QStringLiteral("write-card"), Example, QStringLiteral("--card"), card->path()};
        if (!answer.isEmpty())
            args << answer;
        const CliRun run = cli(args, QString(), input, home->path());
        const QString output = run.out + QLatin1Char('|') + run.err;
        QVERIFY2(run.code == code, qPrintable(QString::number(run.code) + output));
        QVERIFY2(output.contains(message.contains(QLatin1String("%1")) ? message.arg(home->path()) : message),
                 qPrintable(output));
        if (situation == QLatin1String("locked card") || situation == QLatin1String("no terminal to ask on"))
            QCOMPARE(readTestFile(contents + QStringLiteral("/DQ480.CSV")), QByteArray("old"));
        if (code == 3 && situation != QLatin1String("refused"))
            QVERIFY2(run.err.contains(QStringLiteral("did not reach the card: SIN1KHZ.MP2")),
                     qPrintable(run.err));
    }
};

QTEST_GUILESS_MAIN(tst_Cli)
#include "tst_Cli.moc"
