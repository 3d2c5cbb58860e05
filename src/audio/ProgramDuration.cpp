#include "audio/ProgramDuration.h"

#include "audio/AudioInfo.h"
#include "setting/SentenceFolders.h"
#include "setting/SettingData.h"
#include "setting/SharedState.h"
#include "setting/StoredStep.h"

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
    for (const QString &stored : data.ProgramData[program]) {
        const StoredStep step = decodeStep(stored);
        if (step.kind == StoredStep::Kind::Wait) {
            total.seconds += step.waitSeconds;
            continue;
        }
        if (step.kind != StoredStep::Kind::Sentence)
            continue;
        const int slot = step.sentence - 1;
        const QString name
            = slot >= 0 && slot < int(data.SentenceFileName.size()) ? data.SentenceFileName[slot] : QString();
        if (const std::optional<double> seconds = times.seconds(name))
            total.seconds += *seconds;
        else if (!total.missing.contains(step.shown))
            total.missing << step.shown;
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
