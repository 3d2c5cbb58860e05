#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include "AudioFixtures.h"
#include "Mp2File.h"
#include "TestFiles.h"
#include "TestMounts.h"

using namespace AudioFixtures;

namespace {

struct Run
{
    int code = -1;
    QString out;
    QString err;
};

Run cli(const QStringList &args)
{
    QProcess process;
    process.start(QStringLiteral(DQ480_CLI), args);
    if (!process.waitForFinished(60000))
        qFatal("dq480-cli did not finish");
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

} // namespace

class tst_AudioCli : public QObject
{
    Q_OBJECT

    QTemporaryDir m_recordings;

    QString recording(const QString &name) const { return m_recordings.filePath(name); }

private slots:
    void initTestCase()
    {
        QVERIFY(write(recording(QStringLiteral("hello.wav")), sine(440.0, 2.0, 48000, 2, 0.1), Wav16));
        QVERIFY(write(recording(QStringLiteral("good morning.flac")), speechLike(1.5, 44100, 1), Flac16));
        QVERIFY(write(recording(QStringLiteral("silence.wav")), sine(440.0, 1.0, 48000, 1, 0.0), Wav16));
    }

    void import_data()
    {
        QTest::addColumn<QStringList>("inputs");
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("out");
        QTest::addColumn<QString>("err");
        QTest::addColumn<QStringList>("written");
        QTest::newRow("name that does not fit")
            << QStringList {"good morning.flac"} << QStringList() << 2 << ""
            << "its name does not fit a sentence (at most 8 characters before .MP2)."
               " Give one with --name, for example --name GOOD_MOR\n"
            << QStringList();
        QTest::newRow("device name given")
            << QStringList {"hello.wav"} << QStringList {"--name", "con"} << 2 << ""
            << "Not a sentence name: con (not a name Windows keeps for a device: CON, PRN, AUX, NUL, COM1 to "
               "COM9, LPT1 to LPT9)\n"
            << QStringList();
        // Its name would not fit either: that it is not there comes first.
        QTest::newRow("missing recording")
            << QStringList {"no such recording.wav"} << QStringList() << 2 << ""
            << "no such recording.wav: it cannot be read: there is no such file.\n"
            << QStringList();
        QTest::newRow("--name gives one")
            << QStringList {"good morning.flac"} << QStringList {"--name", "morning"} << 0
            << "MORNING.MP2  0:01.5  -16.0 LUFS\n"
            << "" << QStringList {"MORNING.MP2"};
        QTest::newRow("a silent one among good ones")
            << QStringList {"hello.wav", "silence.wav", "good morning.flac"} << QStringList() << 2
            << "HELLO.MP2  0:02.0  -16.0 LUFS\n"
            << "silence.wav: it is silent (nothing louder than -50 dBFS).\n"
            << QStringList {"HELLO.MP2"};
    }
    void import()
    {
        QFETCH(QStringList, inputs);
        QFETCH(QStringList, options);
        QFETCH(int, code);
        QFETCH(QString, out);
        QFETCH(QString, err);
        QFETCH(QStringList, written);
        QTemporaryDir folder;
        QStringList args {QStringLiteral("import")};
        for (const QString &input : inputs)
            args << recording(input);
        args << QStringLiteral("--to") << folder.path() << options;
        const Run run = cli(args);
        QCOMPARE(run.out, out);
        QVERIFY2(err.isEmpty() ? run.err.isEmpty() : run.err.contains(err), qPrintable(run.err));
        QCOMPARE(run.code, code);
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), written);
        for (const QString &name : written)
            QVERIFY(IsValidMp2File(folder.filePath(name)));
    }

    void existingSentenceNeedsForce()
    {
        QTemporaryDir folder;
        const QString existing = folder.filePath(QStringLiteral("HELLO.MP2"));
        writeTestFile(existing, "older");
        const QStringList args {QStringLiteral("import"), recording(QStringLiteral("hello.wav")),
                                QStringLiteral("--to"), folder.path()};
        Run run = cli(args);
        QCOMPARE(run.code, 2);
        QVERIFY2(run.err.contains(QStringLiteral("HELLO.MP2 exists (--force replaces it)")),
                 qPrintable(run.err));
        QCOMPARE(QFileInfo(existing).size(), 5);
        run = cli(QStringList(args) << QStringLiteral("--force"));
        QCOMPARE(run.code, 0);
        QVERIFY(IsValidMp2File(existing));
    }

    void info()
    {
        QTemporaryDir folder;
        QCOMPARE(cli({QStringLiteral("import"), recording(QStringLiteral("hello.wav")),
                      QStringLiteral("--to"), folder.path()})
                     .code,
                 0);
        const QString mp2 = folder.filePath(QStringLiteral("HELLO.MP2"));
        const Run run = cli({QStringLiteral("info"), mp2, recording(QStringLiteral("hello.wav"))});
        QCOMPARE(run.code, 0);
        QVERIFY2(
            run.out.startsWith(mp2
                               + QStringLiteral("\n  format:    MPEG-1 Layer II, 64 kbit/s, 32000 Hz, mono\n"
                                                "  duration:  0:02.0\n  loudness:  -16.0 LUFS\n")),
            qPrintable(run.out));
        QVERIFY(run.out.contains(QStringLiteral("  device:    plays it\n")));
        QVERIFY(run.out.contains(QStringLiteral("WAV (Microsoft), Signed 16 bit PCM, 48000 Hz, stereo\n")));
        QVERIFY(run.out.contains(QStringLiteral("  device:    refuses it")));
    }

    // The sample project the README offers: its script runs into any folder, and its project goes
    // onto a FAT16 card whole, the control file the same as convert makes.
    void sampleProjectGoesOnACard()
    {
        if (QStandardPaths::findExecutable(QStringLiteral("espeak-ng")).isEmpty())
            QSKIP("espeak-ng is not installed");
        QString skip;
        // 64 MiB: fusefat reports no space at all on a volume of 512-byte clusters, which smaller
        // images get.
        const auto card = TestMount::fat16(64 * 1024, skip);
        if (!card)
            QSKIP(qPrintable(skip));
        QTemporaryDir folder;
        QProcess script;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DQ480_CLI"), QStringLiteral(DQ480_CLI));
        script.setProcessEnvironment(environment);
        script.start(QStringLiteral(DQ480_SOURCE_DIR "/scripts/make-sample.sh"), {folder.path()});
        QVERIFY(script.waitForFinished(120000));
        QVERIFY2(script.exitCode() == 0, script.readAllStandardError().constData());

        const QString project = folder.filePath(QStringLiteral("SAMPLE.stf"));
        QProcess write;
        environment.insert(QStringLiteral("DQ480_HOME"), folder.filePath(QStringLiteral("home")));
        write.setProcessEnvironment(environment);
        write.start(QStringLiteral(DQ480_CLI),
                    {QStringLiteral("write-card"), project, QStringLiteral("--card"), card->path(),
                     QStringLiteral("--yes")});
        QVERIFY(write.waitForFinished(60000));
        QVERIFY2(write.exitCode() == 0,
                 (write.readAllStandardOutput() + write.readAllStandardError()).constData());

        const QString converted = folder.filePath(QStringLiteral("DQ480.CSV"));
        QCOMPARE(cli({QStringLiteral("convert"), project, converted}).code, 0);
        const QDir contents(card->filePath(QStringLiteral("CONTENTS")));
        QCOMPARE(readTestFile(contents.filePath(QStringLiteral("DQ480.CSV"))), readTestFile(converted));
        for (const QString &name :
             {QStringLiteral("WELCOME.MP2"), QStringLiteral("PLATFORM.MP2"), QStringLiteral("CLOSING.MP2")}) {
            QVERIFY2(IsValidMp2File(contents.filePath(name)), qPrintable(name));
            QCOMPARE(readTestFile(contents.filePath(name)),
                     readTestFile(folder.filePath(QStringLiteral("home/SAMPLE/") + name)));
        }
    }
};

QTEST_GUILESS_MAIN(tst_AudioCli)
#include "tst_AudioCli.moc"
