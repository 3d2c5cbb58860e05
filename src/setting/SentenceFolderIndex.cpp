#include "setting/SentenceFolderIndex.h"

#include "setting/PathText.h"

#include <QDir>

SentenceFolderIndex::SentenceFolderIndex(const QString &folder)
    : m_folder(folder)
{
    const QStringList names = QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System);
    for (const QString &name : names) {
        m_exactNames.insert(name);
        m_byFoldedName.insert(name.toCaseFolded(), name);
    }
}

QString SentenceFolderIndex::find(const QString &name) const
{
    // An exact spelling wins over another file that differs only in case.
    if (m_exactNames.contains(name))
        return joinPath(m_folder, name);
    const auto found = m_byFoldedName.constFind(name.toCaseFolded());
    return found == m_byFoldedName.cend() ? QString() : joinPath(m_folder, *found);
}
