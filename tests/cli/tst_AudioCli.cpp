#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

#include "setting/Mp2File.h"
#include "setting/ProjectFile.h"
#include "support/AudioFixtures.h"
#include "support/CliRun.h"
#include "support/TestFiles.h"
#include "support/TestMounts.h"
#include "support/TestProjects.h"

using namespace AudioFixtures;

class tst_AudioCli : public QObject
{
    Q_OBJECT

    QTemporaryDir m_recordings;

    QTemporaryDir m_home; // the program folder for play, with PLAY.stf
    QString recording(const QString &name) const { return m_recordings.filePath(name); }
    QString project() const { return m_home.filePath(QStringLiteral("PLAY.stf")); }

    // Plays PLAY.stf with the program folder it was made in, and no sound server to reach.
    CliRun play(const QStringList &args) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DQ480_HOME"), m_home.path());
        environment.insert(QStringLiteral("PULSE_SERVER"),
                           m_home.filePath(QStringLiteral("no-sound-server")));
        return runCli(QStringList {QStringLiteral("play"), project()} << args, environment);
    }

    // Samples in a 16-bit mono WAV file.
    static qint64 wavFrames(const QString &path) { return (QFileInfo(path).size() - 44) / 2; }

    // HELLO.MP2 in the new project's folder and PIPE.MP2, a pipe, beside it. Program 1 plays HELLO,
    // a wait of 1.5 s and HELLO; 2 is Endless with a play interval of 1 s; 3 starts with the pipe;
    // 4 repeats HELLO twice, 10 s apart; 5 plays HELLO once.
    void makePlayProject()
    {
        const QString folder = m_home.filePath(QStringLiteral("NewProject"));
        QVERIFY(QDir().mkpath(folder));
        QCOMPARE(runCli({QStringLiteral("import"), recording(QStringLiteral("hello.wav")),
                         QStringLiteral("--to"), folder})
                     .code,
                 0);
        QCOMPARE(mkfifo(QFile::encodeName(folder + QStringLiteral("/PIPE.MP2")).constData(), 0600), 0);
        const auto state = makeTestState(m_home.path());
        SettingData &data = state->Setting;
        const char *names[] = {"HELLO.MP2", "PIPE.MP2"};
        for (int slot = 0; slot < 2; ++slot) {
            data.SentenceFileName[size_t(slot)] = QLatin1String(names[slot]);
            data.SentenceControl[size_t(slot)] = QStringLiteral("A00%1").arg(slot + 1);
            data.ProgramSort[size_t(slot)] = qint16(slot + 1);
        }
        const QStringList steps[]
            = {{"0001", "2215", "0001"}, {"0001"}, {"0002", "2201", "0001"}, {"0001"}, {"0001"}};
        for (int p = 0; p < 5; ++p) {
            for (int i = 0; i < steps[p].size(); ++i)
                data.ProgramData[size_t(p)][size_t(i)] = steps[p][i];
        }
        data.ProgramOption[1] = 0xC008;
        data.ProgramOption[3] = 0x6000;
        data.RepeatCount[3] = 2;
        data.RepeatInterval[3] = 1;
        QString error;
        QVERIFY2(SaveProjectTo(*state, project(), error), qPrintable(error));
    }

private slots:
    void initTestCase()
    {
        QVERIFY(write(recording(QStringLiteral("hello.wav")), sine(440.0, 2.0, 48000, 2, 0.1), Wav16));
        QVERIFY(write(recording(QStringLiteral("good morning.flac")), speechLike(1.5, 44100, 1), Flac16));
        QVERIFY(write(recording(QStringLiteral("silence.wav")), sine(440.0, 1.0, 48000, 1, 0.0), Wav16));
        makePlayProject();
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
        const CliRun run = runCli(args);
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
        CliRun run = runCli(args);
        QCOMPARE(run.code, 2);
        QVERIFY2(run.err.contains(QStringLiteral("HELLO.MP2 exists (--force replaces it)")),
                 qPrintable(run.err));
        QCOMPARE(QFileInfo(existing).size(), 5);
        run = runCli(QStringList(args) << QStringLiteral("--force"));
        QCOMPARE(run.code, 0);
        QVERIFY(IsValidMp2File(existing));
    }

    void info()
    {
        QTemporaryDir folder;
        QCOMPARE(runCli({QStringLiteral("import"), recording(QStringLiteral("hello.wav")),
                         QStringLiteral("--to"), folder.path()})
                     .code,
                 0);
        const QString mp2 = folder.filePath(QStringLiteral("HELLO.MP2"));
        const CliRun run = runCli({QStringLiteral("info"), mp2, recording(QStringLiteral("hello.wav"))});
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

    // Wrong arguments and hostile projects get a plain answer, never a wait.
    void play_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("err");
        QTest::newRow("program 0") << QStringList {"--program", "0", "--render", "x.wav"} << 2
                                   << "Not a program number: 0 (1 to 64)\n";
        QTest::newRow("program 65") << QStringList {"--program", "65"} << 2
                                    << "Not a program number: 65 (1 to 64)\n";
        QTest::newRow("program not a number")
            << QStringList {"--program", "one"} << 2 << "Not a program number: one (1 to 64)\n";
        QTest::newRow("no program")
            << QStringList() << 2
            << "Usage: dq480-cli play PROJECT --program N [--passes K] [--render FILE.wav]\n";
        QTest::newRow("passes 0") << QStringList {"--program", "1", "--passes", "0"} << 2
                                  << "Not a number of passes: 0 (1 to 10000)\n";
        QTest::newRow("Endless into a file without passes")
            << QStringList {"--program", "2", "--render", "endless.wav"} << 2
            << "the program plays until stopped; say how many passes to write with --passes K.\n";
        QTest::newRow("no sound output") << QStringList {"--program", "1"} << 2 << "Cannot play P001: ";
        QTest::newRow("into a folder that is not there")
            << QStringList {"--program", "1", "--render", "no-such-folder/x.wav"} << 2 << "no-such-folder";
    }
    void play()
    {
        QFETCH(QStringList, args);
        QFETCH(int, code);
        QFETCH(QString, err);
        const int render = int(args.indexOf(QStringLiteral("--render")));
        if (render >= 0)
            args[render + 1] = m_recordings.filePath(args[render + 1]);
        const CliRun run = play(args);
        QVERIFY2(run.err.contains(err), qPrintable(run.err));
        // One line in the tool's words, nothing from the libraries below it.
        QVERIFY2(run.err.count(QLatin1Char('\n')) == 1, qPrintable(run.err));
        QCOMPARE(run.code, code);
        if (render >= 0)
            QVERIFY(!QFileInfo::exists(args[render + 1]));
    }

    // The written sound lasts what the program plays: its sentences, waits and repeats; a step whose
    // sentence is a pipe is named and skipped, and the rest still written.
    void playRendersTheProgram()
    {
        const QString one = m_recordings.filePath(QStringLiteral("one.wav"));
        CliRun run
            = play({QStringLiteral("--program"), QStringLiteral("5"), QStringLiteral("--render"), one});
        QCOMPARE(run.code, 0);
        const qint64 hello = wavFrames(one);
        QVERIFY2(hello > 63000 && hello < 65000, qPrintable(QString::number(hello)));
        QCOMPARE(
            run.out,
            QStringLiteral("P005: one pass 0:02.0, 1 pass, in all 0:02.0\n%1: %2 samples at 32000 Hz, mono\n")
                .arg(one)
                .arg(hello));

        const struct
        {
            const char *program;
            const char *passes;
            qint64 frames;
            const char *out;
        } rows[] = {
            {"1", "", 2 * hello + 48000, "P001: one pass 0:05.5, 1 pass, in all 0:05.5\n"},
            {"4", "", 2 * hello + 320000, "P004: one pass 0:02.0, 2 passes, 10 s apart, in all 0:14.0\n"},
            {"2", "3", 3 * hello + 2 * 32000, "P002: one pass 0:02.0, 3 passes, 1 s apart, in all 0:08.0\n"}};
        for (const auto &row : rows) {
            const QString wav
                = m_recordings.filePath(QStringLiteral("P%1.wav").arg(QLatin1String(row.program)));
            QStringList args {QStringLiteral("--program"), QLatin1String(row.program),
                              QStringLiteral("--render"), wav};
            if (*row.passes)
                args << QStringLiteral("--passes") << QLatin1String(row.passes);
            run = play(args);
            QVERIFY2(run.code == 0, qPrintable(run.err));
            QVERIFY2(run.out.startsWith(QLatin1String(row.out)), qPrintable(run.out));
            QCOMPARE(wavFrames(wav), row.frames);
        }

        const QString piped = m_recordings.filePath(QStringLiteral("piped.wav"));
        run = play({QStringLiteral("--program"), QStringLiteral("3"), QStringLiteral("--render"), piped});
        QCOMPARE(run.code, 2);
        QCOMPARE(run.err,
                 QStringLiteral(
                     "Skipped step 1, A002: %1 cannot be played: it is a pipe or a device, not a file: only "
                     "files are read.\n")
                     .arg(m_home.filePath(QStringLiteral("NewProject/PIPE.MP2"))));
        QCOMPARE(wavFrames(piped), hello + 3200);

        // A WAV file the operator made read-only keeps its bytes.
        QVERIFY(QFile::setPermissions(one, QFileDevice::ReadOwner));
        run = play({QStringLiteral("--program"), QStringLiteral("1"), QStringLiteral("--render"), one});
        QCOMPARE(run.code, 2);
        QCOMPARE(run.err, QStringLiteral("Cannot write %1: the file is read-only.\n").arg(one));
        QCOMPARE(wavFrames(one), hello);
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
        QCOMPARE(runCli({QStringLiteral("convert"), project, converted}).code, 0);
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
