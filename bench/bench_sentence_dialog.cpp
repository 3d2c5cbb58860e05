// Opening the sentence table dialog on a 512-sentence card: 512 boxes built, filled and shown.

#include "sentence/dlgPcCa.h"
#include "support/FakeDriveSource.h"
#include "support/TestProjects.h"
#include "widgets/AppContext.h"
#include "widgets/FileDialogs.h"
#include "widgets/QtMsgBox.h"

#include <QApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

void openFullSentenceTable(benchmark::State &bench)
{
    QTemporaryDir home;
    const auto state = makeTestState(home.path());
    fillSentences(state->SettingBuffer, 512, 512);
    state->CopyBufferToSetting(SettingSection::All);
    QtMsgBox msgBox;
    QtFileDialogs fileDialogs;
    FakeDriveSource drives; // none
    AppContext context {*state, msgBox, fileDialogs, drives};
    for (auto _ : bench) {
        dlgPcCa dialog(context, nullptr);
        dialog.show();
        QApplication::processEvents();
        benchmark::DoNotOptimize(dialog.isVisible());
        bench.PauseTiming();
        dialog.hide();
        bench.ResumeTiming();
    }
}

} // namespace

BENCHMARK(openFullSentenceTable)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
