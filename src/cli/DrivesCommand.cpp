#include "cli/CliCommands.h"

#include "platform/CardSlotCriteria.h"
#include "platform/MediaCheck.h"
#include "platform/SystemDrives.h"

#include <QCoreApplication>
#include <QStringList>

namespace {

const char *typeName(int type)
{
    static const char *const names[] = {"unknown", "removable", "fixed", "network", "cd-rom", "ram disk"};
    return type >= 0 && type <= 5 ? names[type] : "unknown";
}

QString describe(const DriveInfo &drive)
{
    return QStringLiteral("%1\t%2\t%3\t%4\t%5\t%6\t%7\tmedia %8\t%9")
        .arg(drive.path, QLatin1String(typeName(drive.type)),
             drive.ready ? QStringLiteral("ready") : QStringLiteral("not ready"),
             drive.fileSystem.isEmpty() ? QStringLiteral("-") : drive.fileSystem)
        .arg(drive.totalSize)
        .arg(drive.freeSpace)
        .arg(drive.availableSpace)
        .arg(modFDCHK::MediaCheck(drive) ? QStringLiteral("ok") : QStringLiteral("fails"),
             CardSlotCriteria::qualifies(drive) ? QStringLiteral("card slot") : QStringLiteral("-"));
}

// What identifies a drive for --watch: free space changing all the time is no change of drive.
QString identity(const DriveInfo &drive)
{
    return QStringLiteral("%1|%2|%3|%4|%5")
        .arg(drive.path)
        .arg(drive.type)
        .arg(drive.ready)
        .arg(drive.fileSystem)
        .arg(drive.totalSize);
}

} // namespace

int runDrives(CliContext &cli, const QStringList &args, bool watch)
{
    if (!args.isEmpty()) {
        cli.err << "Usage: dq480-cli drives [--watch]\n";
        return ExitCode::UsageOrFileError;
    }
    const std::unique_ptr<DriveSource> source = makeSystemDriveSource();
    cli.out << "path\ttype\tready\tfile system\ttotal\tfree\tavailable\tmedia check\tcard slot\n";
    QList<DriveInfo> shown = source->drives();
    for (const DriveInfo &drive : shown)
        cli.out << describe(drive) << "\n";
    cli.out.flush();
    if (!watch)
        return ExitCode::Ok;

    // Each change prints the drives that came (+) and went (-), until the operator stops it.
    DeviceWatcher watcher;
    QObject::connect(&watcher, &DeviceWatcher::devicesChanged, [&] {
        const QList<DriveInfo> now = source->drives();
        QStringList before, after;
        for (const DriveInfo &drive : shown)
            before << identity(drive);
        for (const DriveInfo &drive : now)
            after << identity(drive);
        for (const DriveInfo &drive : now) {
            if (!before.contains(identity(drive)))
                cli.out << "+ " << describe(drive) << "\n";
        }
        for (const DriveInfo &drive : shown) {
            if (!after.contains(identity(drive)))
                cli.out << "- " << describe(drive) << "\n";
        }
        cli.out.flush();
        shown = now;
    });
    return QCoreApplication::exec();
}
