#include "audio/ProgramDuration.h"

#include "audio/AudioInfo.h"
#include "setting/SentenceFolders.h"
#include "setting/SettingData.h"
#include "setting/SharedState.h"

#include <QCoreApplication>

QStringList sentenceSoundFolders(const SharedState &state)
{
    QStringList folders {workFolder(state), projectSentenceFolder(state)};
    if (!state.SentencePath.isEmpty())
        folders << state.SentencePath;
    return folders;
}

QString findSentenceSound(const QStringList &folders, const QString &name)
{
    return SentenceTimes(folders).file(name);
}

double stepWaitSeconds(const QString &step)
{
    if (step.size() != 4 || step[0] != QLatin1Char('2'))
        return -1.0;
    if (step[1] == QLatin1Char('2'))
        return step[2].digitValue() + step[3].digitValue() / 10.0;
    return step.mid(1).toInt();
}

SentenceTimes::SentenceTimes(const QStringList &folders)
{
    for (const QString &folder : folders)
        m_folders.emplace_back(folder);
}

QString SentenceTimes::file(const QString &name) const
{
    if (name.isEmpty())
        return {};
    for (const SentenceFolderIndex &folder : m_folders) {
        if (const QString found = folder.find(name); !found.isEmpty())
            return found;
    }
    return {};
}

std::optional<double> SentenceTimes::seconds(const QString &name)
{
    if (name.isEmpty())
        return std::nullopt;
    const QString key = name.toUpper();
    if (const auto known = m_known.constFind(key); known != m_known.constEnd())
        return *known;
    const QString path = file(name);
    const std::optional<double> found = path.isEmpty() ? std::nullopt : mp2Duration(path);
    m_known.insert(key, found);
    return found;
}

ProgramDuration programPlayingTime(const SettingData &data, int program, const QStringList &folders)
{
    SentenceTimes times(folders);
    return programPlayingTime(data, program, times);
}

ProgramDuration programPlayingTime(const SettingData &data, int program, SentenceTimes &times)
{
    ProgramDuration total;
    for (const QString &step : data.ProgramData[program]) {
        if (step.isEmpty())
            continue;
        if (const double wait = stepWaitSeconds(step); wait >= 0.0) {
            total.seconds += wait;
            continue;
        }
        if (step.size() != 4 || step[0] != QLatin1Char('0'))
            continue;
        const int slot = step.mid(1).toInt() - 1;
        const QString name
            = slot >= 0 && slot < int(data.SentenceFileName.size()) ? data.SentenceFileName[slot] : QString();
        const QString shown = QLatin1Char('A') + step.mid(1);
        if (const std::optional<double> seconds = times.seconds(name))
            total.seconds += *seconds;
        else if (!total.missing.contains(shown))
            total.missing << shown;
    }
    return total;
}

QString programPlayingTimeText(const ProgramDuration &duration)
{
    constexpr int Named = 3;
    const QString time = formatDuration(duration.seconds);
    if (duration.missing.isEmpty())
        return time;
    const QString named = duration.missing.mid(0, Named).join(QStringLiteral(", "));
    if (duration.missing.size() <= Named)
        return QCoreApplication::translate("ProgramDuration", "%1 (%2 not found)").arg(time, named);
    return QCoreApplication::translate("ProgramDuration", "%1 (%2 and %3 more not found)")
        .arg(time, named)
        .arg(duration.missing.size() - Named);
}
