#pragma once

#include <QHash>
#include <QSet>
#include <QString>

/// The files of one folder, found by name without regard to case: setting files store names in
/// upper case while the files on a Linux disk may be spelt in any case. The folder is listed once.
class SentenceFolderIndex
{
public:
    explicit SentenceFolderIndex(const QString &folder);

    /// The full path of the file whose name matches `name` in any case; empty when none.
    QString find(const QString &name) const;

private:
    QString m_folder;
    QSet<QString> m_exactNames;
    QHash<QString, QString> m_byFoldedName;
};
