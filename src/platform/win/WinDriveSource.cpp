#include "platform/win/WinDriveSource.h"

#include "platform/win/WinDrives.h"

QList<DriveInfo> WinDriveSource::drives() const
{
    QList<DriveInfo> drives;
    for (const WinDrive &raw : listWindowsDrives()) {
        DriveInfo drive;
        drive.path = QString::fromStdString(raw.path);
        drive.device = drive.path;
        drive.type = raw.type;
        drive.ready = raw.ready;
        drive.fileSystem = QString::fromStdString(raw.fileSystem);
        drive.totalSize = raw.totalSize;
        drive.freeSpace = raw.freeSpace;
        drive.availableSpace = raw.availableSpace;
        drives.append(drive);
    }
    return drives;
}
