#include "platform/SystemDrives.h"

#include <QTimer>

#ifdef Q_OS_WIN
#include "platform/win/WinDriveSource.h"

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <windows.h>
#else
#include "platform/linux/LinuxDriveSource.h"

#include <QDir>
#include <QFile>
#endif

std::unique_ptr<DriveSource> makeSystemDriveSource()
{
#ifdef Q_OS_WIN
    return std::make_unique<WinDriveSource>();
#else
    return std::make_unique<LinuxDriveSource>();
#endif
}

#ifdef Q_OS_WIN

// Windows announces arrivals and removals of volumes to every top-level window.
struct DeviceWatcher::Private : QAbstractNativeEventFilter
{
    DeviceWatcher *owner = nullptr;
    bool nativeEventFilter(const QByteArray &type, void *message, qintptr *) override
    {
        const MSG *msg = static_cast<const MSG *>(message);
        if (type == "windows_generic_MSG" && msg->message == WM_DEVICECHANGE
            && (msg->wParam == 0x8000 /* DBT_DEVICEARRIVAL */
                || msg->wParam == 0x8004 /* DBT_DEVICEREMOVECOMPLETE */))
            emit owner->devicesChanged();
        return false;
    }
};

DeviceWatcher::DeviceWatcher(QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->owner = this;
    QCoreApplication::instance()->installNativeEventFilter(d.get());
}

DeviceWatcher::~DeviceWatcher()
{
    QCoreApplication::instance()->removeNativeEventFilter(d.get());
}

#else

// The mount table and the list of block devices, looked at once a second: a mount, an unmount,
// or a card put in without being mounted changes one of them. Once a second is also the debounce.
struct DeviceWatcher::Private
{
    QTimer timer;
    QByteArray last;

    static QByteArray snapshot()
    {
        QFile mounts(QStringLiteral("/proc/self/mountinfo"));
        QByteArray state = mounts.open(QIODevice::ReadOnly) ? mounts.readAll() : QByteArray();
        const QDir blocks(QStringLiteral("/sys/class/block"));
        for (const QString &name : blocks.entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::System)) {
            QFile size(blocks.filePath(name) + QStringLiteral("/size"));
            state += name.toUtf8() + ':' + (size.open(QIODevice::ReadOnly) ? size.readAll() : QByteArray());
        }
        return state;
    }
};

DeviceWatcher::DeviceWatcher(QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->last = Private::snapshot();
    d->timer.setInterval(1000);
    connect(&d->timer, &QTimer::timeout, this, [this] {
        QByteArray now = Private::snapshot();
        if (now == d->last)
            return;
        d->last = std::move(now);
        emit devicesChanged();
    });
    d->timer.start();
}

DeviceWatcher::~DeviceWatcher() = default;

#endif
