// Reading and writing the largest project: 512 sentences, 64 programs of 128 steps.

#include "setting/SettingFileReader.h"
#include "setting/SettingFileWriter.h"
#include "support/TestProjects.h"

#include <benchmark/benchmark.h>

namespace {

std::unique_ptr<SharedState> fullProject()
{
    auto state = makeTestState(QStringLiteral("/tmp"));
    fillFullProject(state->Setting);
    return state;
}

void writeFullProject(benchmark::State &bench)
{
    const auto state = fullProject();
    qint64 bytes = 0;
    for (auto _ : bench) {
        const QByteArray file = WriteSettingFile(*state);
        bytes = file.size();
        benchmark::DoNotOptimize(file.constData());
    }
    bench.counters["file_bytes"] = static_cast<double>(bytes);
}

void readFullProject(benchmark::State &bench)
{
    const auto state = fullProject();
    const QByteArray file = WriteSettingFile(*state);
    for (auto _ : bench) {
        const bool ok = ReadSettingFile(*state, file);
        benchmark::DoNotOptimize(ok);
    }
}

// What File > Open does around the reader: a new project first, then commit and snapshot.
void openFullProject(benchmark::State &bench)
{
    const auto state = fullProject();
    const QByteArray file = WriteSettingFile(*state);
    for (auto _ : bench) {
        state->NewSetting();
        const bool ok = ReadSettingFile(*state, file);
        state->CopyBufferToSetting(SettingSection::All);
        state->TakeSavedSnapshot();
        benchmark::DoNotOptimize(ok);
    }
}

} // namespace

BENCHMARK(writeFullProject)->Unit(benchmark::kMicrosecond);
BENCHMARK(readFullProject)->Unit(benchmark::kMicrosecond);
BENCHMARK(openFullProject)->Unit(benchmark::kMicrosecond);
BENCHMARK_MAIN();
