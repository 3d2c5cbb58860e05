#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <sys/mount.h>
#include <unistd.h>

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
        QTest::newRow("summary") << QStringList {"check", Example} << 0
                                 << "Project name: Station\nCard capacity: 128 sentences\nUsed sentences: 2\n"
                                    "Programs with steps: 64\n";
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

    void newRefusesToReplaceAProject()
    {
        const QString file = path(QStringLiteral("new.stf"));
        QCOMPARE(cli({QStringLiteral("new"), file}).code, 0);
        QVERIFY(readTestFile(file).startsWith("PJNAME,,\r\nCREATOR,,\r\nEXPLE,,\r\nSNTPATH,"));
        QFile::resize(file, 10);
        const Run again = cli({QStringLiteral("new"), file});
        QCOMPARE(again.code, 2);
        QCOMPARE(QFileInfo(file).size(), 10);
        QCOMPARE(cli({QStringLiteral("new"), QStringLiteral("--force"), file}).code, 0);
        QVERIFY(QFileInfo(file).size() > 10);
    }

    void convertChoosesTheKindByName_data()
    {
        QTest::addColumn<QString>("outName");
        QTest::addColumn<bool>("flag");
        QTest::addColumn<bool>("bodyOnly");
        QTest::newRow("any case") << "dq480.csv" << false << true;
        QTest::newRow("flag") << "card.txt" << true << true;
        QTest::newRow("setting file") << "copy.stf" << false << false;
    }
    void convertChoosesTheKindByName()
    {
        QFETCH(QString, outName);
        QFETCH(bool, flag);
        QFETCH(bool, bodyOnly);
        QDir(m_dir.path()).mkpath(outName + QLatin1String(".d"));
        const QString out = path(outName + QLatin1String(".d/") + outName);
        QStringList args {QStringLiteral("convert"), Example, out};
        if (flag)
            args << QStringLiteral("--card-control");
        QCOMPARE(cli(args).code, 0);
        const QByteArray example = readTestFile(Example);
        const QByteArray written = readTestFile(out);
        const QByteArray body = example.mid(example.indexOf("CARDNAME,"));
        QCOMPARE(written.startsWith("PJNAME,Station,"), !bodyOnly);
        QVERIFY(written.endsWith(body));
    }

    void namesThatWouldLeaveTheirFolderAreRefused_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QByteArray>("from");
        QTest::addColumn<QByteArray>("to");
        QTest::addColumn<QString>("field");
        QTest::newRow("check, project name") << "check" << QByteArray("PJNAME,Station,")
                                             << QByteArray("PJNAME,../outside,") << R"(PJNAME "../outside")";
        QTest::newRow("write-card, sentence name")
            << "write-card" << QByteArray("FILENAME,HELLO   ,") << QByteArray("FILENAME,../../ab,")
            << R"(FILENAME "../../ab.MP2")";
    }
    void namesThatWouldLeaveTheirFolderAreRefused()
    {
        QFETCH(QString, command);
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        QFETCH(QString, field);
        if (geteuid() != 0)
            QSKIP("mounting a card needs root");
        // The card is mounted two folders down, so "../../ab.MP2" from its CONTENTS folder is the
        // read-only file beside it; the program folder is one down, so "../outside" is beside it.
        QTemporaryDir top;
        const QString card = top.filePath(QStringLiteral("mnt/card"));
        const QString home = top.filePath(QStringLiteral("home"));
        QVERIFY(QDir().mkpath(card) && QDir().mkpath(home)
                && QDir().mkpath(top.filePath(QStringLiteral("outside"))));
        if (::mount("tmpfs", QFile::encodeName(card).constData(), "tmpfs", 0, "size=1m") != 0)
            QSKIP("this machine does not allow mounting a tmpfs");
        const QString outsideFile = top.filePath(QStringLiteral("mnt/ab.MP2"));
        const QByteArray sentence = QByteArray("\xFF\xFD\x48\xC4", 4) + QByteArray(100, '\x55');
        writeTestFile(outsideFile, sentence);
        writeTestFile(top.filePath(QStringLiteral("outside/HELLO.MP2")), sentence);
        writeTestFile(top.filePath(QStringLiteral("outside/RAIN2.MP2")), sentence);
        QFile::setPermissions(outsideFile, QFileDevice::ReadOwner | QFileDevice::ReadGroup);
        const QString project = top.filePath(QStringLiteral("hostile.stf"));
        QByteArray file = readTestFile(Example);
        file.replace(from, to);
        writeTestFile(project, file);

        QProcess process;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("DQ480_HOME"), home);
        process.setProcessEnvironment(env);
        QStringList args {command, project};
        if (command == QLatin1String("write-card"))
            args << QStringLiteral("--card") << card << QStringLiteral("--yes");
        process.start(QStringLiteral(DQ480_CLI), args);
        QVERIFY(process.waitForFinished(30000));
        const QStringList onCard = QDir(card + QStringLiteral("/CONTENTS")).entryList(QDir::Files);
        ::umount(QFile::encodeName(card).constData());
        const QString err = QString::fromUtf8(process.readAllStandardError());

        QCOMPARE(process.exitCode(), 1);
        QVERIFY2(err.contains(QStringLiteral("Setting file error!\n") + field) && err.contains(project),
                 qPrintable(err));
        QVERIFY2(onCard.isEmpty(), qPrintable(onCard.join(QLatin1Char(' '))));
        QVERIFY(!(QFileInfo(outsideFile).permissions() & QFileDevice::WriteOwner));
        QCOMPARE(readTestFile(outsideFile), sentence);
        QCOMPARE(QDir(home).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
    }

    void textsTheCodePageCannotHoldAreRefused_data()
    {
        QTest::addColumn<QString>("command");
        QTest::newRow("convert") << "convert";
    }
    void textsTheCodePageCannotHoldAreRefused()
    {
        QFETCH(QString, command);
        // 0xAE is no character in ISO-8859-7: it reads as U+FFFD, which would be saved as "?".
        QByteArray file = readTestFile(Example);
        file.replace("CREATOR,Ann,", "CREATOR,A\xAEn,");
        const QString greek = path(QStringLiteral("greek.stf"));
        writeTestFile(greek, file);
        const QString converted = path(QStringLiteral("greek-out.stf"));
        QFile::remove(converted);
        QStringList args {command, QStringLiteral("--encoding"), QStringLiteral("ISO-8859-7"), greek};
        if (command == QLatin1String("convert"))
            args << converted;
        const Run run = cli(args);
        QCOMPARE(run.code, 1);
        QCOMPARE(run.err,
                 QStringLiteral("CREATOR \"A\uFFFDn\" holds \"\uFFFD\" (U+FFFD), which the code page "
                                "ISO-8859-7 cannot hold.\n"));
        QVERIFY(!QFileInfo::exists(converted));
    }

    void writeCardExitCodes_data()
    {
        QTest::addColumn<QString>("situation");
        QTest::addColumn<QString>("answer");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("message");
        QTest::newRow("complete") << "complete"
                                  << "--yes" << 0 << "Card write is complete";
        QTest::newRow("sentence refused by the MP2 check") << "refused"
                                                           << "--yes" << 3 << "Filesystem error :RAIN2.MP2";
        QTest::newRow("read-only control file") << "read-only control file"
                                                << "--yes" << 4 << "This card is read only";
    }
    void writeCardExitCodes()
    {
        QFETCH(QString, situation);
        QFETCH(QString, answer);
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
        QFile::remove(path(QStringLiteral("Station/RAIN2.MP2")));
        if (situation != QLatin1String("missing"))
            writeTestFile(path(QStringLiteral("Station/RAIN2.MP2")),
                          situation == QLatin1String("refused") ? QByteArray(500, 'x') : sentence);
        const QString contents = card.filePath(QStringLiteral("CONTENTS"));
        QDir().mkpath(contents);
        const auto readOnlyOnCard = [&](const QString &name) {
            writeTestFile(contents + QLatin1Char('/') + name, "old");
            QFile::setPermissions(contents + QLatin1Char('/') + name, QFileDevice::ReadOwner);
        };
        if (situation == QLatin1String("read-only sentence"))
            readOnlyOnCard(QStringLiteral("RAIN2.MP2"));
        if (situation == QLatin1String("read-only control file"))
            readOnlyOnCard(QStringLiteral("DQ480.CSV"));
        if (situation == QLatin1String("control file"))
            writeTestFile(contents + QStringLiteral("/DQ480.CSV"), "old");

        const Run run
            = cli({QStringLiteral("write-card"), Example, QStringLiteral("--card"), card.path(), answer});
        ::umount(QFile::encodeName(card.path()).constData());
        QVERIFY2(run.code == code, qPrintable(QString::number(run.code) + run.out + run.err));
        QVERIFY2((run.out + run.err).contains(message), qPrintable(run.out + run.err));
    }
};

QTEST_GUILESS_MAIN(tst_Cli)
#include "tst_Cli.moc"
