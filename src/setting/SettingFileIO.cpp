#include "SettingFileIO.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

bool readFileBytes(const QString &path, QByteArray &bytes, QString &error, qint64 limit)
{
    const QFileInfo info(path);
    if (info.isDir()) {
        error = QCoreApplication::translate("SettingFileIO", "%1 is a folder, not a file.").arg(path);
        return false;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        error = QCoreApplication::translate("SettingFileIO", "Cannot open %1: %2")
                    .arg(path, file.errorString());
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
