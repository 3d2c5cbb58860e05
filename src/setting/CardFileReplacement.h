#pragma once

#include "setting/FileReplacement.h"

/// A file on the card replaced whole. Nothing is written through a symbolic link; the new content
/// is written to "NAME.TMP" and, once in place, read back from the card itself (not from the PC's
/// cache). The caller syncs the folder once all its files are there.
class CardFileReplacement : public FileReplacement
{
public:
    explicit CardFileReplacement(const QString &destination,
                                 const ReplacementDevice &device = ReplacementDevice::system());

    bool open(QString &error) override;
    bool commit(QString &error) override;

private:
    void written(const char *data, qint64 size) override { m_written.append(data, size); }
    bool checkDestination(QString &error) const;
    bool removeLeftover(const QString &temporary, QString &error);
    bool readBack(QString &error) const;

    QByteArray m_written; // what must be read back
};

/// Writes the whole file onto the card through a `CardFileReplacement`.
bool writeFileToCard(const QString &path, const QByteArray &bytes, QString &error);
