#include "platform/os/OsFiles.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>

#ifdef Q_OS_WIN
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

qint64 readFromFile(int fd, char *data, qint64 size);

// Reads until `limit` bytes or the end of the file, then closes it; false with errno kept.
bool readAndClose(int fd, qint64 limit, QByteArray &bytes)
{
    bytes = QByteArray(limit, Qt::Uninitialized);
    qint64 got = 0;
    while (got < limit) {
        const qint64 done = readFromFile(fd, bytes.data() + got, limit - got);
        if (done < 0 && errno == EINTR)
            continue;
        if (done < 0) {
            const int reason = errno;
            closeFile(fd);
            errno = reason;
            return false;
        }
        if (done == 0)
            break;
        got += done;
    }
    closeFile(fd);
    bytes.truncate(got);
    return true;
}

} // namespace

#ifdef Q_OS_WIN

namespace {

const wchar_t *wide(const QString &path)
{
    return reinterpret_cast<const wchar_t *>(path.utf16());
}

qint64 readFromFile(int fd, char *data, qint64 size)
{
    return ::_read(fd, data, static_cast<unsigned>(std::min<qint64>(size, 1 << 30)));
}

// The errno that words a Windows failure the way the same failure reads on Linux.
int errnoFromWindows(DWORD code)
{
    switch (code) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
        return ENOENT;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
        return EACCES;
    case ERROR_WRITE_PROTECT:
        return EROFS;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return ENOSPC;
    case ERROR_NOT_READY:
    case ERROR_DEV_NOT_EXIST:
    case ERROR_GEN_FAILURE:
    case ERROR_CRC:
    case ERROR_SECTOR_NOT_FOUND:
    case ERROR_WRITE_FAULT:
    case ERROR_READ_FAULT:
        return EIO;
    case ERROR_ALREADY_EXISTS:
    case ERROR_FILE_EXISTS:
        return EEXIST;
    case ERROR_INVALID_HANDLE:
        return EBADF;
    case ERROR_NOT_SUPPORTED:
    case ERROR_INVALID_FUNCTION:
        return ENOSYS;
    default:
        return EIO;
    }
}

} // namespace

QString systemErrorText(int errnoCode)
{
    return QString::fromWCharArray(_wcserror(errnoCode));
}

EntryKind entryKind(const QString &path)
{
    const QFileInfo info(path);
    return !info.exists() && !info.isSymLink() ? EntryKind::Missing
        : info.isSymLink()                     ? EntryKind::Link
        : info.isFile()                        ? EntryKind::File
                                               : EntryKind::Other;
}

int createNewFile(const QString &path)
{
    return ::_wopen(wide(path), _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY, _S_IREAD | _S_IWRITE);
}

qint64 writeToFile(int fd, const char *data, qint64 size)
{
    return ::_write(fd, data, static_cast<unsigned>(size));
}

bool closeFile(int fd)
{
    return ::_close(fd) == 0;
}

// The read-only attribute is the file's own, not carried over; a new file is "normal".
int filePermissions(const QString &)
{
    return -1;
}

void setFilePermissions(int, int) { }

bool replaceFileInOneStep(const QString &from, const QString &to)
{
    // Write-through: the call returns only once the new directory entry is on the disk.
    if (MoveFileExW(wide(from), wide(to), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        return true;
    errno = errnoFromWindows(GetLastError());
    return false;
}

bool flushFileToDisk(int fd)
{
    const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(fd));
    if (handle == INVALID_HANDLE_VALUE) {
        errno = EBADF;
        return false;
    }
    if (FlushFileBuffers(handle))
        return true;
    const DWORD code = GetLastError();
    if (code == ERROR_INVALID_FUNCTION || code == ERROR_NOT_SUPPORTED)
        return true;
    errno = errnoFromWindows(code);
    return false;
}

void flushFolderEntries(const QString &)
{
    // MOVEFILE_WRITE_THROUGH has already made the rename durable.
}

// Windows lets no program drop its cache of one file: the flush and the write-through rename have
// put the bytes on the card, and the read shows what the system holds of them.
bool readFromDisk(const QString &path, qint64 limit, QByteArray &bytes)
{
    const int fd = ::_wopen(wide(path), _O_RDONLY | _O_BINARY);
    return fd >= 0 && readAndClose(fd, limit, bytes);
}

bool setFileReadOnly(const QString &path, bool readOnly)
{
    return ::_wchmod(wide(path), readOnly ? _S_IREAD : _S_IREAD | _S_IWRITE) == 0;
}

#else

namespace {

QByteArray encoded(const QString &path)
{
    return QFile::encodeName(path);
}

qint64 readFromFile(int fd, char *data, qint64 size)
{
    return ::read(fd, data, static_cast<size_t>(size));
}

} // namespace

QString systemErrorText(int errnoCode)
{
    return qt_error_string(errnoCode);
}

EntryKind entryKind(const QString &path)
{
    struct stat info = {};
    if (::lstat(encoded(path).constData(), &info) != 0)
        return EntryKind::Missing;
    return S_ISREG(info.st_mode) ? EntryKind::File
        : S_ISLNK(info.st_mode)  ? EntryKind::Link
                                 : EntryKind::Other;
}

int createNewFile(const QString &path)
{
    return ::open(encoded(path).constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, 0666);
}

qint64 writeToFile(int fd, const char *data, qint64 size)
{
    return ::write(fd, data, static_cast<size_t>(size));
}

bool closeFile(int fd)
{
    return ::close(fd) == 0;
}

int filePermissions(const QString &path)
{
    struct stat info = {};
    return ::stat(encoded(path).constData(), &info) == 0 ? int(info.st_mode & 07777) : -1;
}

void setFilePermissions(int fd, int permissions)
{
    if (permissions >= 0)
        ::fchmod(fd, mode_t(permissions));
}

bool replaceFileInOneStep(const QString &from, const QString &to)
{
    return ::rename(encoded(from).constData(), encoded(to).constData()) == 0;
}

bool flushFileToDisk(int fd)
{
    return ::fsync(fd) == 0 || errno == EINVAL || errno == ENOSYS || errno == ENOTSUP;
}

void flushFolderEntries(const QString &folder)
{
    const int fd = ::open(encoded(folder).constData(), O_RDONLY | O_DIRECTORY);
    if (fd >= 0) {
        ::fsync(fd);
        ::close(fd);
    }
}

bool readFromDisk(const QString &path, qint64 limit, QByteArray &bytes)
{
    const int fd = ::open(encoded(path).constData(), O_RDONLY | O_NOFOLLOW);
    if (fd < 0)
        return false;
    // The PC's cache still holds what was written; dropping it makes the read come from the card.
    ::posix_fadvise(fd, 0, 0, POSIX_FADV_DONTNEED);
    return readAndClose(fd, limit, bytes);
}

bool setFileReadOnly(const QString &path, bool readOnly)
{
    // Through the file itself, opened without following a link: a link planted on a card must
    // not pass the change to a file on the PC.
    const int fd = ::open(encoded(path).constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK);
    struct stat info = {};
    if (fd < 0 || ::fstat(fd, &info) != 0) {
        const int reason = errno;
        if (fd >= 0)
            ::close(fd);
        errno = reason;
        return false;
    }
    const mode_t wanted
        = readOnly ? info.st_mode & ~mode_t(S_IWUSR | S_IWGRP | S_IWOTH) : info.st_mode | S_IWUSR;
    const bool changed = ::fchmod(fd, wanted & 07777) == 0;
    const int reason = errno;
    ::close(fd);
    errno = reason;
    return changed;
}

#endif
