// Import of one minute of 48 kHz stereo speech-like sound to a standard sentence (32 kHz,
// 64 kbit/s): times real time on one core; the same for speech with hard consonants, whose peaks
// the limiter has to hold to reach the loudness. Then 20 such recordings imported on one thread and on
// two, to see that a batch import gains from a second core. Run by hand:
// build/default/bench/bench_audio_import [FILES]

#include "audio/AudioImport.h"
#include "support/AudioFixtures.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <thread>
#include <vector>

namespace {

constexpr double Seconds = 60.0;
constexpr int Rounds = 5;

// Imports `inputs` on `threads` threads, each taking the next recording; returns the wall time in
// seconds, or a negative number when an import failed.
double importAll(const std::vector<QString> &inputs, const QTemporaryDir &out, int threads,
                 const ImportOptions &options = ImportOptions())
{
    std::atomic<size_t> next = 0;
    std::atomic<bool> failed = false;
    QElapsedTimer timer;
    timer.start();
    std::vector<std::thread> workers;
    for (int t = 0; t < threads; ++t)
        workers.emplace_back([&] {
            for (size_t i = next++; i < inputs.size(); i = next++) {
                ImportResult result;
                QString error;
                if (!importRecording(inputs[i], out.filePath(QStringLiteral("S%1.MP2").arg(i)), options,
                                     result, error)) {
                    std::fprintf(stderr, "%s\n", qPrintable(error));
                    failed = true;
                }
            }
        });
    for (std::thread &worker : workers)
        worker.join();
    return failed ? -1.0 : double(timer.nsecsElapsed()) / 1e9;
}

} // namespace

int main(int argc, char *argv[])
{
    const int files = argc > 1 ? std::max(2, std::atoi(argv[1])) : 20;
    QTemporaryDir dir;
    const QString input = dir.filePath(QStringLiteral("speech.wav"));
    if (!AudioFixtures::write(input, AudioFixtures::speechLike(Seconds, 48000, 2), AudioFixtures::Wav16)) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(input));
        return 1;
    }

    const QString peaky = dir.filePath(QStringLiteral("consonants.wav"));
    if (!AudioFixtures::write(peaky, AudioFixtures::speechWithPlosives(Seconds, 48000, 2),
                              AudioFixtures::Wav16)) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(peaky));
        return 1;
    }

    // Standard is the figure that counts; high shows what the best converter costs.
    struct Case
    {
        const char *what;
        QString input;
        Mp2Quality quality;
    };
    for (const Case &c :
         {Case {"speech-like", input, Mp2Quality::Standard}, Case {"speech-like", input, Mp2Quality::High},
          Case {"hard-consonant (limited)", peaky, Mp2Quality::Standard}}) {
        ImportOptions options;
        options.quality = c.quality;
        std::vector<double> times;
        for (int round = 0; round < Rounds; ++round) {
            const double t = importAll({c.input}, dir, 1, options);
            if (t < 0)
                return 1;
            times.push_back(t);
        }
        std::sort(times.begin(), times.end());
        std::printf("one minute, 48 kHz stereo %s to %d Hz %d kbit/s MP2, one core, %s sinc: median %.3f s = "
                    "%.0fx real time (best %.3f s)\n",
                    c.what, mp2SampleRate(c.quality), mp2BitrateKbps(c.quality),
                    converterFor(c.quality) == ResampleQuality::Best ? "best" : "medium",
                    times[times.size() / 2], Seconds / times[times.size() / 2], times.front());
    }

    // The machine may be shared: each batch runs three times and the fastest counts.
    const std::vector<QString> inputs(size_t(files), input);
    double one = 1e9;
    double two = 1e9;
    for (int round = 0; round < 3; ++round) {
        const double t1 = importAll(inputs, dir, 1);
        const double t2 = importAll(inputs, dir, 2);
        if (t1 < 0 || t2 < 0)
            return 1;
        one = std::min(one, t1);
        two = std::min(two, t2);
    }
    std::printf("%d standard imports: one thread %.2f s, two threads %.2f s: %.2fx faster\n", files, one, two,
                one / two);
    return 0;
}
