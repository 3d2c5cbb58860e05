#include "setting/SettingFileIO.h"

#include "setting/RegularFile.h"

#include <QCoreApplication>
#include <QFile>

namespace {

QString notAFileMessage(const QString &path)
{
    return QCoreApplication::translate("SettingFileIO",
                                       "%1 is a pipe or a device, not a file: only files are read.")
        .arg(path);
}

} // namespace

bool readFileBytes(const QString &path, QByteArray &bytes, QString &error, qint64 limit)
{
    switch (pathKind(path)) {
    case PathKind::Folder:
        error = QCoreApplication::translate("SettingFileIO", "%1 is a folder, not a file.").arg(path);
        return false;
    case PathKind::Other:
        error = notAFileMessage(path);
        return false;
    case PathKind::File:
    case PathKind::Missing:
        break;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        error = QCoreApplication::translate("SettingFileIO", "Cannot open %1: %2")
                    .arg(path, file.errorString());
        return false;
    }
    // Replaced by a pipe or a device since the look above.
    if (file.isSequential()) {
        error = notAFileMessage(path);
        return false;
    }
    if (file.size() > limit) {
        error
            = QCoreApplication::translate("SettingFileIO", "%1 is too large to be a setting file (%2 bytes).")
                  .arg(path)
                  .arg(file.size());
        return false;
    }
    bytes = file.read(limit + 1);
    if (file.error() != QFileDevice::NoError || bytes.size() > limit) {
        error = QCoreApplication::translate("SettingFileIO", "Cannot read %1: %2")
                    .arg(path, file.errorString());
        return false;
    }
    return true;
}
