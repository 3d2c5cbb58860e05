#include "platform/os/OsFiles.h"

#include <QFile>

#include <cerrno>

#ifdef Q_OS_WIN
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <windows.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

#ifdef Q_OS_WIN

namespace {

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

int createNewFile(const QString &path)
{
    return ::_wopen(reinterpret_cast<const wchar_t *>(path.utf16()),
                    _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY, _S_IREAD | _S_IWRITE);
}

bool replaceFileInOneStep(const QString &from, const QString &to)
{
    // Write-through: the call returns only once the new directory entry is on the disk.
    if (MoveFileExW(reinterpret_cast<const wchar_t *>(from.utf16()),
                    reinterpret_cast<const wchar_t *>(to.utf16()),
                    MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
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

#else

QString systemErrorText(int errnoCode)
{
    return qt_error_string(errnoCode);
}

int createNewFile(const QString &path)
{
    return ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, 0666);
}

bool replaceFileInOneStep(const QString &from, const QString &to)
{
    return ::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

bool flushFileToDisk(int fd)
{
    return ::fsync(fd) == 0 || errno == EINVAL || errno == ENOSYS || errno == ENOTSUP;
}

void flushFolderEntries(const QString &folder)
{
    const int fd = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY);
    if (fd >= 0) {
        ::fsync(fd);
        ::close(fd);
    }
}

#endif
