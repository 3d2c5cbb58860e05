#pragma once

#include <QByteArray>
#include <QString>

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
///
/// Where the file lives decides how carefully it is put in place: `PcFileReplacement` for a file
/// on the PC, `CardFileReplacement` for one on the card. This is what both share.
class FileReplacement
{
public:
    virtual ~FileReplacement();
    FileReplacement(const FileReplacement &) = delete;
    FileReplacement &operator=(const FileReplacement &) = delete;

    /// Makes the new file beside the destination.
    virtual bool open(QString &error) = 0;
    bool write(const char *data, qint64 size, QString &error);
    bool write(const QByteArray &bytes, QString &error)
    {
        return write(bytes.constData(), bytes.size(), error);
    }
    /// Syncs, closes and renames the new file into place.
    virtual bool commit(QString &error) = 0;
    /// Drops the new file; the old one stays.
    void cancel();

protected:
    FileReplacement(const QString &destination, const ReplacementDevice &device);

    enum class Created { Yes, NameTaken, Failed };
    /// Creates `temporary` anew, never through an entry that was there before. A name that is
    /// taken is the caller's to handle; any other failure has set `error`.
    Created create(const QString &temporary, QString &error);
    /// Sync, close and rename, each checked.
    bool putInPlace(QString &error);
    /// Says why the replacement of `path` failed, and cancels it.
    bool fail(QString &error, const QString &path, int errorCode);
    /// What was written, as it is written.
    virtual void written(const char *, qint64) { }

    const QString &destination() const { return m_destination; }
    int descriptor() const { return m_fd; }

private:
    bool folderRefused(QString &error);
    bool notOpen(QString &error) const;

    QString m_destination;
    QString m_temporary;
    const ReplacementDevice &m_device;
    int m_fd = -1;
    bool m_created = false;
};

/// Syncs a folder, so that the names renamed into it last reach the disk.
void syncFolder(const QString &folder);
