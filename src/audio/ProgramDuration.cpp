#include "ProgramDuration.h"

#include "AudioInfo.h"
#include "SentenceFolderIndex.h"
#include "SentenceFolders.h"
#include "SettingData.h"
#include "SharedState.h"

#include <QHash>

QStringList sentenceSoundFolders(const SharedState &state)
{
    QStringList folders {workFolder(state), projectSentenceFolder(state)};
    if (!state.SentencePath.isEmpty())
        folders << state.SentencePath;
    return folders;
}

QString findSentenceSound(const QStringList &folders, const QString &name)
{
    if (name.isEmpty())
        return {};
    for (const QString &folder : folders) {
        const QString found = SentenceFolderIndex(folder).find(name);
        if (!found.isEmpty())
            return found;
    }
    return {};
}

namespace {

// A wait step's seconds, or a negative number for a step that is no wait.
double waitSeconds(const QString &step)
{
    if (step.size() != 4 || step[0] != QLatin1Char('2'))
        return -1.0;
    if (step[1] == QLatin1Char('2'))
        return step[2].digitValue() + step[3].digitValue() / 10.0;
    return step.mid(1).toInt();
}

} // namespace

ProgramDuration programPlayingTime(const SettingData &data, int program, const QStringList &folders)
{
    ProgramDuration total;
    QHash<QString, double> known; // a sentence played twice is looked up once
    for (const QString &step : data.ProgramData[program]) {
        if (step.isEmpty())
            continue;
        if (const double wait = waitSeconds(step); wait >= 0.0) {
            total.seconds += wait;
            continue;
        }
        if (step.size() != 4 || step[0] != QLatin1Char('0'))
            continue;
        const int slot = step.mid(1).toInt() - 1;
        const QString name
            = slot >= 0 && slot < int(data.SentenceFileName.size()) ? data.SentenceFileName[slot] : QString();
        auto found = known.find(name);
        if (found == known.end()) {
            const QString file = findSentenceSound(folders, name);
            const std::optional<double> seconds = file.isEmpty() ? std::nullopt : mp2Duration(file);
            found = known.insert(name, seconds ? *seconds : -1.0);
        }
        if (*found < 0.0)
            ++total.missing;
        else
            total.seconds += *found;
    }
    return total;
}

QString programPlayingTimeText(const ProgramDuration &duration)
{
    const QString time = formatDuration(duration.seconds);
    if (duration.missing == 0)
        return time;
    return duration.missing == 1
        ? QStringLiteral("%1 (1 sentence not found)").arg(time)
        : QStringLiteral("%1 (%2 sentences not found)").arg(time).arg(duration.missing);
}
