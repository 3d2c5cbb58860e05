#pragma once

#include "setting/FileReplacement.h"

/// A file on the PC replaced whole. A symbolic link is followed, as the operator made it; the new
/// content is written to "NAME.dq480-saving-XXXXXX" beside the file, where leftovers of an
/// interrupted save of the same file (and only those) are removed first; the file keeps its
/// permissions, and once in place its folder is synced. A read-only file is refused: the rename
/// would slip past the protection the operator gave it.
class PcFileReplacement : public FileReplacement
{
public:
    explicit PcFileReplacement(const QString &destination,
                               const ReplacementDevice &device = ReplacementDevice::system());

    bool open(QString &error) override;
    bool commit(QString &error) override;

private:
    void removeLeftovers() const;

    QString m_named; // as the operator named it, a link perhaps
};

/// Writes the whole file through a `PcFileReplacement`.
bool writeFileAtomically(const QString &path, const QByteArray &bytes, QString &error);
