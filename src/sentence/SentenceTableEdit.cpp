#include "sentence/SentenceTableEdit.h"

#include "setting/NumberText.h"

#include <algorithm>

namespace SentenceTableEdit {

namespace {

bool endsInMp2(const QString &name)
{
    return name.toUpper().endsWith(QLatin1String(".MP2"));
}

} // namespace

bool isSentenceFileName(const QString &name)
{
    return name.size() >= 5 && name.size() <= MaxNameLength && endsInMp2(name);
}

void setEntry(SettingData &data, int index, const QString &name)
{
    if (name.isEmpty()) {
        data.SentenceFileName[index].clear();
        data.SentenceControl[index].clear();
        data.ProgramSort[index] = 0;
        return;
    }
    data.SentenceFileName[index] = name.toUpper();
    data.SentenceControl[index] = QLatin1Char('A') + zeroPadded(index + 1, 3);
    data.ProgramSort[index] = static_cast<qint16>(index + 1);
}

bool insertAt(SettingData &data, int current)
{
    const int last = data.sentenceTable().lastEntry();
    if (!data.SentenceFileName[last].isEmpty())
        return false;
    for (int i = last; i > current; --i)
        setEntry(data, i, data.SentenceFileName[i - 1]);
    setEntry(data, current, QString());
    return true;
}

void removeAt(SettingData &data, int current)
{
    // The 128 table takes its last entry from the hidden entry 128; the 512 table empties entry 511.
    const SentenceTableSize table = data.sentenceTable();
    for (int i = current; i <= table.lastEntry(); ++i) {
        const int next = i + 1;
        setEntry(data, i, next <= table.limit() ? data.SentenceFileName[next] : QString());
    }
}

std::vector<int> moveForward(QStringList &names, SentenceTableSize size)
{
    const int limit = size.limit();
    std::vector<int> changed;
    auto move = [&](int from, int to) {
        names[to] = names[from];
        names[from].clear();
        changed.push_back(to);
        changed.push_back(from);
    };
    for (int i = 0; i <= limit && i < names.size(); ++i) {
        if (names[i].isEmpty()) {
            for (int k = i; k < limit; ++k) {
                if (!names[k].isEmpty()) {
                    move(k, i);
                    break;
                }
            }
        } else if (i == SentenceTableSize::Largest - 1) {
            const auto firstEmpty
                = std::find_if(names.begin(), names.end(), [](const QString &n) { return n.isEmpty(); });
            if (firstEmpty != names.end())
                move(i, static_cast<int>(firstEmpty - names.begin()));
        }
    }
    std::sort(changed.begin(), changed.end());
    changed.erase(std::unique(changed.begin(), changed.end()), changed.end());
    return changed;
}

int countSentenceFiles(const QStringList &listedNames)
{
    return static_cast<int>(std::count_if(listedNames.begin(), listedNames.end(), [](const QString &name) {
        return endsInMp2(name) && name.size() <= MaxNameLength;
    }));
}

QStringList inFolderListingOrder(QStringList names)
{
    // Windows compares names upper-cased; the file system here may list "Zed" before "apple".
    std::stable_sort(names.begin(), names.end(),
                     [](const QString &a, const QString &b) { return a.toUpper() < b.toUpper(); });
    return names;
}

std::vector<Placement> placeFolderFiles(const SettingData &data, const QStringList &listedNames)
{
    const SentenceTableSize size = data.sentenceTable();
    QStringList table(data.SentenceFileName.begin(), data.SentenceFileName.begin() + size.limit() + 1);
    std::vector<Placement> placements;
    for (const QString &name : listedNames) {
        if (!endsInMp2(name) || name.size() > MaxNameLength)
            continue;
        const QString upper = name.toUpper();
        int index = static_cast<int>(table.indexOf(upper));
        // New names go only where the operator can see them, never into the hidden entry 128.
        if (index < 0)
            index = static_cast<int>(table.indexOf(QString()));
        if (index < 0 || index > size.lastEntry())
            continue;
        table[index] = upper;
        placements.push_back({index, name});
    }
    return placements;
}

} // namespace SentenceTableEdit
