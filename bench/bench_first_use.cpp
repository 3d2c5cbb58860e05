// What the first use of each part that the desktop program loads on demand costs: the sentence
// table (which asks whether the PC can play), importing a recording, making the test tone, the
// sound output and printing, each done twice in a fresh process built as the program is, so that
// the first time pays for loading its plugin. It gives the medians of the first and the second
// time and their difference, which is what the operator waits once.
//
//   build/default/bench/bench_first_use [STARTS]

#include "audio/AudioImport.h"
#include "audio/SentencePlayer.h"
#include "capabilities/CapabilityPlugin.h"
#include "sentence/dlgPcCa.h"
#include "setting/TestToneEncoder.h"
#include "support/AudioFixtures.h"
#include "support/FakeDriveSource.h"
#include "support/Median.h"
#include "support/TestProjects.h"
#include "widgets/AppContext.h"
#include "widgets/FileDialogs.h"
#include "widgets/QtMsgBox.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

namespace {

constexpr int SentencesWithFiles = 8;

double msOf(const std::function<void()> &work)
{
    QElapsedTimer clock;
    clock.start();
    work();
    return double(clock.nsecsElapsed()) / 1e6;
}

bool import(const QString &from, const QString &to)
{
    ImportResult result;
    QString error;
    if (!importRecording(from, to, ImportOptions {}, result, error)) {
        std::fprintf(stderr, "import: %s\n", qPrintable(error));
        return false;
    }
    return true;
}

// One use, run twice in this process; prints the two times.
int runCase(const QString &name, const QString &folder)
{
    const QString wav = QDir(folder).filePath(QStringLiteral("take.wav"));
    std::function<void()> use;
    QTemporaryDir home;
    std::unique_ptr<SharedState> state;
    QtMsgBox msgBox;
    QtFileDialogs fileDialogs;
    FakeDriveSource drives; // none
    std::unique_ptr<AppContext> context;
    if (name == QLatin1String("sentence-table")) {
        state = makeTestState(home.path());
        fillSentences(state->SettingBuffer, 512, 512);
        state->CopyBufferToSetting(SettingSection::All);
        QDir(home.path()).mkpath(QStringLiteral("SoundTmp"));
        for (int i = 0; i < SentencesWithFiles; ++i)
            QFile::copy(
                QDir(folder).filePath(QStringLiteral("S001.MP2")),
                home.filePath(QStringLiteral("SoundTmp/") + state->SettingBuffer.SentenceFileName[i]));
        context = std::make_unique<AppContext>(AppContext {*state, msgBox, fileDialogs, drives});
        use = [&] {
            dlgPcCa dialog(*context, nullptr);
            dialog.show();
            QApplication::processEvents();
        };
    } else if (name == QLatin1String("import")) {
        use = [&] {
            import(wav, home.filePath(QStringLiteral("TAKE.MP2")));
        };
    } else if (name == QLatin1String("test-tone")) {
        use = [] {
            QString error;
            if (encodeTestTone(error).isEmpty())
                std::fprintf(stderr, "test tone: %s\n", qPrintable(error));
        };
    } else if (name == QLatin1String("sound-output")) {
        use = [] {
            SentencePlayer::hasOutput();
        };
    } else if (name == QLatin1String("printing")) {
        use = [] {
            QString error;
            if (!loadCapability(Capability::Printing, error))
                std::fprintf(stderr, "printing: %s\n", qPrintable(error));
        };
    } else {
        return 2;
    }
    const double first = msOf(use);
    const double second = msOf(use);
    std::printf("%.2f %.2f\n", first, second);
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    // The program's plugins, where the build leaves them.
    qputenv("DQ480_PLUGINS", QFile::encodeName(QFileInfo(QStringLiteral(DQ480_APP)).absolutePath()));
    if (argc > 3 && QByteArray(argv[1]) == "--case") {
        QApplication app(argc, argv);
        return runCase(QString::fromLocal8Bit(argv[2]), QString::fromLocal8Bit(argv[3]));
    }
    QCoreApplication app(argc, argv);
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    const int starts = argc > 1 ? std::max(1, atoi(argv[1])) : 5;

    // A recording and a sentence made from it, shared by every start.
    QTemporaryDir folder;
    const QString wav = folder.filePath(QStringLiteral("take.wav"));
    if (!AudioFixtures::write(wav, AudioFixtures::speechLike(3.0, 44100, 1), AudioFixtures::Wav16)
        || !import(wav, folder.filePath(QStringLiteral("S001.MP2"))))
        return 1;

    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    std::printf("first use against the second, medians of %d fresh starts each:\n", starts);
    bool allWithin = true;
    for (const char *name : {"sentence-table", "import", "test-tone", "sound-output", "printing"}) {
        std::vector<double> firsts, seconds;
        for (int start = 0; start < starts; ++start) {
            QProcess child;
            child.setProcessEnvironment(env);
            child.start(QCoreApplication::applicationFilePath(),
                        {QStringLiteral("--case"), QLatin1String(name), folder.path()});
            // Its sound system's and Qt's notes are shown only when it fails.
            if (!child.waitForFinished(60000) || child.exitCode() != 0) {
                std::fprintf(stderr, "%s: the start failed\n%s", name,
                             child.readAllStandardError().constData());
                return 1;
            }
            const QList<QByteArray> times = child.readAllStandardOutput().trimmed().split(' ');
            firsts.push_back(times.value(0).toDouble());
            seconds.push_back(times.value(1).toDouble());
        }
        const double added = median(firsts) - median(seconds);
        allWithin = allWithin && added <= 150.0;
        std::printf("  %-15s first %7.1f ms, second %7.1f ms, added once %6.1f ms (goal: at most 150 ms)\n",
                    name, median(firsts), median(seconds), added);
    }
    return allWithin ? 0 : 3;
}
