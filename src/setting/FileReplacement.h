#pragma once

#include <QByteArray>
#include <QString>

/// Where the file lives decides how carefully it is put in place.
enum class ReplaceStyle {
    /// A file on the PC. A symbolic link is followed, as the operator made it; the new content is
    /// written to "NAME.dq480-saving-XXXXXX" beside the file, where leftovers of an interrupted save
    /// of the same file (and only those) are removed first; the file keeps its permissions.
    Pc,
    /// A file on the card. Nothing is written through a symbolic link; the new content is written
    /// to "NAME.TMP" and, once in place, read back from the card itself (not from the PC's cache).
    Card,
};

/// The calls that put a replacement's bytes on the disk: the system's own unless a test gives one
/// that fails as a disk does where no machine can be made to on demand (a write cut short, a sync
/// that reports bytes lost, a rename refused).
class ReplacementDevice
{
public:
    virtual ~ReplacementDevice() = default;
    /// As write(2): the number of bytes taken, or -1 with errno set.
    virtual qint64 write(int fd, const char *data, qint64 size) const;
    /// False, with errno set, when the file's bytes did not reach the disk.
    virtual bool sync(int fd) const;
    /// Puts `from` over `to` in one step; false, with errno set, when it could not.
    virtual bool rename(const QString &from, const QString &to) const;

    /// The system's calls.
    static const ReplacementDevice &system();
};

/// Replaces a file by a new one written beside it, synced and renamed over it, so that the file is
/// always either the old one or the whole new one: a full disk, a pulled card or a kill leaves the
/// old file as it was. Every write, the sync and the close are checked; the first failure cancels
/// the replacement and `error` names the file and the system's reason. An object not committed
/// removes its temporary file when it is destroyed.
class FileReplacement
{
public:
    FileReplacement(const QString &destination, ReplaceStyle style,
                    const ReplacementDevice &device = ReplacementDevice::system());
    ~FileReplacement();
    FileReplacement(const FileReplacement &) = delete;
    FileReplacement &operator=(const FileReplacement &) = delete;

    bool open(QString &error);
    bool write(const char *data, qint64 size, QString &error);
    bool write(const QByteArray &bytes, QString &error)
    {
        return write(bytes.constData(), bytes.size(), error);
    }
    /// Syncs, closes and renames the new file into place. On the PC the folder is synced too; on
    /// the card the file is read back, and the caller syncs the folder once all files are there.
    bool commit(QString &error);
    /// Drops the new file; the old one stays.
    void cancel();

private:
    bool fail(QString &error, const QString &path, int errorCode);
    bool folderRefused(QString &error);
    bool checkCardDestination(QString &error);
    bool removeLeftovers(QString &error);
    bool readBack(QString &error);

    QString m_destination; // the file to replace (on the PC, a link's target)
    QString m_temporary;
    ReplaceStyle m_style;
    const ReplacementDevice &m_device;
    int m_fd = -1;
    bool m_created = false;
    QByteArray m_written; // on the card, what must be read back
};

/// Writes the whole file through a `FileReplacement`. On the PC a read-only file is refused: the
/// rename would slip past the protection the operator gave it.
bool writeFileAtomically(const QString &path, const QByteArray &bytes, QString &error,
                         ReplaceStyle style = ReplaceStyle::Pc);

/// Syncs a folder, so that the names renamed into it last reach the disk.
void syncFolder(const QString &folder);
