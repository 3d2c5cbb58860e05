// Reading, writing and opening the largest project: 512 sentences, 64 programs of 128 steps.

#include "setting/NumberText.h"
#include "setting/PcFileReplacement.h"
#include "setting/ProjectFile.h"
#include "setting/SettingFileReader.h"
#include "setting/SettingFileWriter.h"
#include "support/TestProjects.h"

#include <QTemporaryDir>

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

// File > Open of the largest project in Japanese, every name and text in kanji: the file read,
// looked at for bytes its code page would change, and read.
void openJapaneseProject(benchmark::State &bench)
{
    const auto state = fullProject();
    SettingData &data = state->Setting;
    data.ProjectName = QStringLiteral("駅構内放送");
    data.Creator = QStringLiteral("施設管理課");
    data.Explanation = QStringLiteral("全番線の案内放送\r\n終日");
    for (int slot = 0; slot < data.sentenceTable().entries(); ++slot)
        data.SentenceFileName[slot]
            = QStringLiteral("案内") + zeroPadded(slot + 1, 3) + QStringLiteral(".MP2");
    for (int program = 0; program < SettingData::Programs; ++program)
        data.ProgramName[program] = QStringLiteral("番線案内") + zeroPadded(program + 1, 2);
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("full.stf"));
    QString error;
    if (!writeFileAtomically(path, WriteSettingFile(*state), error)) {
        bench.SkipWithError(qPrintable(error));
        return;
    }
    for (auto _ : bench) {
        const LoadOutcome outcome = loadProject(*state, path, error);
        if (outcome != LoadOutcome::Read)
            bench.SkipWithError(qPrintable(error));
        benchmark::DoNotOptimize(outcome);
    }
}

} // namespace

BENCHMARK(writeFullProject)->Unit(benchmark::kMicrosecond);
BENCHMARK(readFullProject)->Unit(benchmark::kMicrosecond);
BENCHMARK(openFullProject)->Unit(benchmark::kMicrosecond);
BENCHMARK(openJapaneseProject)->Unit(benchmark::kMicrosecond);
BENCHMARK_MAIN();
