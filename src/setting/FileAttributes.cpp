#include "setting/FileAttributes.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

bool refused(const QString &path, bool readOnly, const QString &reason, QString *error)
{
    if (error)
        *error = (readOnly ? QCoreApplication::translate("FileAttributes", "Cannot make %1 read-only: %2")
                           : QCoreApplication::translate("FileAttributes", "Cannot make %1 writable: %2"))
                     .arg(path, reason);
    return false;
}

} // namespace

bool isReadOnly(const QString &path)
{
    const QFileInfo info(path);
    // Qt's "User" bits come from access(), which always allows root; the owner bits are the file's own.
    return info.exists() && !(info.permissions() & QFileDevice::WriteOwner);
}

bool isOnReadOnlyMedium(const QString &path)
{
    const QStorageInfo storage(path);
    return storage.isValid() && storage.isReadOnly();
}

bool setReadOnly(const QString &path, bool readOnly, QString *error)
{
#ifdef Q_OS_UNIX
    // Through the file itself, opened without following a link: a link planted on a card must
    // not pass the change to a file on the PC.
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK);
    struct stat info = {};
    if (fd < 0 || ::fstat(fd, &info) != 0) {
        const int reason = errno;
        if (fd >= 0)
            ::close(fd);
        return refused(path, readOnly,
                       reason == ELOOP
                           ? QCoreApplication::translate("FileAttributes", "it is a symbolic link")
                           : qt_error_string(reason),
                       error);
    }
    const mode_t wanted
        = readOnly ? info.st_mode & ~mode_t(S_IWUSR | S_IWGRP | S_IWOTH) : info.st_mode | S_IWUSR;
    const bool changed = ::fchmod(fd, wanted & 07777) == 0;
    const int reason = errno;
    ::close(fd);
    return changed || refused(path, readOnly, qt_error_string(reason), error);
#else
    constexpr QFileDevice::Permissions WriteBits = QFileDevice::WriteOwner | QFileDevice::WriteUser
        | QFileDevice::WriteGroup | QFileDevice::WriteOther;
    const QFileDevice::Permissions now = QFile::permissions(path);
    const QFileDevice::Permissions wanted
        = readOnly ? now & ~WriteBits : now | QFileDevice::WriteOwner | QFileDevice::WriteUser;
    QFile file(path);
    return file.setPermissions(wanted) || refused(path, readOnly, file.errorString(), error);
#endif
}
