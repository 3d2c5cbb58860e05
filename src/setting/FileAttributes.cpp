#include "setting/FileAttributes.h"

#include "platform/os/OsFiles.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStorageInfo>

#include <cerrno>

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
    if (setFileReadOnly(path, readOnly))
        return true;
    const int reason = errno;
    return refused(path, readOnly,
                   reason == ELOOP ? QCoreApplication::translate("FileAttributes", "it is a symbolic link")
                                   : systemErrorText(reason),
                   error);
}
