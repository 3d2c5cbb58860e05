#pragma once

#include "setting/SettingData.h"

#include <QString>
#include <QStringList>

#include <vector>

/// The sentence table as the sentence dialog edits it: entries hold a file name, the control text
/// "A" and the sentence number, and the sort number; the rules below keep the three together.
namespace SentenceTableEdit {

constexpr int MaxNameLength = 12;

/// 5 to 12 characters ending in ".MP2" (in any case).
bool isSentenceFileName(const QString &name);

/// Writes entry `index`: the name in upper case with its control text and sort number, or an
/// empty entry for an empty name.
void setEntry(SettingData &data, int index, const QString &name);

/// Moves the entries from `current` on one place towards the end; false (nothing moved) when the
/// table's last entry is used.
bool insertAt(SettingData &data, int current);

/// Removes entry `current`; the later entries move up and the table's last entry empties.
void removeAt(SettingData &data, int current);

/// Closes the gaps between the names, keeping their order; box 511 of the 512 table goes to the
/// first empty place. Returns the indices whose names changed.
std::vector<int> moveForward(QStringList &names, SentenceTableSize size);

/// "All file": where each listed MP2 file goes. A name already in the table keeps its entry; a new
/// one takes the first empty entry. Listed names that are not sentence files are skipped.
struct Placement
{
    int index;
    QString name;
};
std::vector<Placement> placeFolderFiles(const SettingData &data, const QStringList &listedNames);

/// The number of listed names that "All file" would take.
int countSentenceFiles(const QStringList &listedNames);

/// The names in the order a Windows folder listing gives them: by name regardless of case.
QStringList inFolderListingOrder(QStringList names);

} // namespace SentenceTableEdit
