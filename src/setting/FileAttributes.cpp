#include "FileAttributes.h"

#include <QFile>
#include <QFileInfo>

namespace {

constexpr QFileDevice::Permissions WriteBits
    = QFileDevice::WriteOwner | QFileDevice::WriteUser | QFileDevice::WriteGroup | QFileDevice::WriteOther;

} // namespace

bool isReadOnly(const QString &path)
{
    const QFileInfo info(path);
    // Qt's "User" bits come from access(), which always allows root; the owner bits are the file's own.
    return info.exists() && !(info.permissions() & QFileDevice::WriteOwner);
}

bool setReadOnly(const QString &path, bool readOnly)
{
    const QFileDevice::Permissions now = QFile::permissions(path);
    const QFileDevice::Permissions wanted
        = readOnly ? now & ~WriteBits : now | QFileDevice::WriteOwner | QFileDevice::WriteUser;
    return QFile::setPermissions(path, wanted);
}
