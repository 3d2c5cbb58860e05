#include "sentence/RecordingImport.h"

#include "audio/AudioImport.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QProgressDialog>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <thread>

namespace {

const QStringList &recordingEndings()
{
    static const QStringList Endings {QStringLiteral("wav"),  QStringLiteral("wave"), QStringLiteral("aif"),
                                      QStringLiteral("aiff"), QStringLiteral("aifc"), QStringLiteral("flac"),
                                      QStringLiteral("ogg"),  QStringLiteral("oga"),  QStringLiteral("opus"),
                                      QStringLiteral("mp3")};
    return Endings;
}

} // namespace

bool isRecordingToImport(const QString &path)
{
    return recordingEndings().contains(QFileInfo(path).suffix().toLower());
}

QString recordingNamePatterns()
{
    QStringList endings = recordingEndings();
    endings << QStringLiteral("mp2");
    QStringList patterns;
    for (const QString &ending : endings)
        patterns << QStringLiteral("*.") + ending;
    for (const QString &ending : endings)
        patterns << QStringLiteral("*.") + ending.toUpper();
    return patterns.join(QLatin1Char(' '));
}

bool runRecordingImports(std::vector<RecordingJob> &jobs, QWidget *parent, bool trimSilence)
{
    const int total = int(jobs.size());
    std::atomic<bool> cancel = false;
    std::atomic<int> next = 0;
    std::atomic<int> finished = 0;
    // Each import tells how far it is, so that one long recording moves the bar too.
    std::vector<std::atomic<int>> done(jobs.size());
    const auto work = [&] {
        for (int i = next++; i < total; i = next++) {
            ImportOptions options;
            options.cancel = &cancel;
            options.progress = &done[size_t(i)];
            options.trimSilence = trimSilence;
            ImportResult result;
            QString error;
            if (!importRecording(jobs[size_t(i)].input, jobs[size_t(i)].output, options, result, error))
                jobs[size_t(i)].error = error;
            done[size_t(i)] = 1000;
            ++finished;
        }
    };
    std::vector<std::thread> workers;
    const int threads = std::clamp(QThread::idealThreadCount(), 1, std::max(1, total));
    for (int t = 0; t < threads; ++t)
        workers.emplace_back(work);

    const auto doneText = [&] {
        return QCoreApplication::translate("dlgPcCa", "Importing recordings... %1 of %2 done")
            .arg(int(finished))
            .arg(total);
    };
    QProgressDialog progress(doneText(), QCoreApplication::translate("dlgPcCa", "Cancel"), 0, total * 1000,
                             parent);
    progress.setObjectName(QStringLiteral("prgImport"));
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(500);
    while (finished < total) {
        int sum = 0;
        for (const std::atomic<int> &part : done)
            sum += part.load(std::memory_order_relaxed);
        progress.setValue(std::min(sum, total * 1000 - 1));
        progress.setLabelText(doneText());
        QCoreApplication::processEvents(QEventLoop::AllEvents, 30);
        if (progress.wasCanceled())
            cancel = true;
        QThread::msleep(10);
    }
    for (std::thread &worker : workers)
        worker.join();
    progress.setValue(total * 1000);
    if (!cancel && !progress.wasCanceled())
        return true;
    for (RecordingJob &job : jobs) {
        if (job.error.isEmpty())
            QFile::remove(job.output);
        job.error = QCoreApplication::translate("dlgPcCa", "The import was cancelled.");
    }
    return false;
}
