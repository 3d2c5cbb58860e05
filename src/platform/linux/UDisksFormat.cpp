#include "platform/linux/UDisksFormat.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFileInfo>
#include <QVariantMap>

namespace {

const QString Service = QStringLiteral("org.freedesktop.UDisks2");
const QString Filesystem = QStringLiteral("org.freedesktop.UDisks2.Filesystem");
const QString Block = QStringLiteral("org.freedesktop.UDisks2.Block");
constexpr int FormatTimeoutMs = 10 * 60 * 1000; // a slow card reader can take minutes

} // namespace

UDisksFormat::UDisksFormat(QObject *parent)
    : QObject(parent)
{ }

bool UDisksFormat::available()
{
    const QDBusConnection bus = QDBusConnection::systemBus();
    return bus.isConnected() && bus.interface() && bus.interface()->isServiceRegistered(Service).value();
}

void UDisksFormat::call(const QString &interface, const QString &method, const QVariantList &arguments,
                        const std::function<void(const QVariantList &)> &next,
                        const std::function<void(const QString &)> &failed)
{
    QDBusMessage message = QDBusMessage::createMethodCall(Service, m_objectPath, interface, method);
    message.setArguments(arguments);
    auto *watcher
        = new QDBusPendingCallWatcher(QDBusConnection::systemBus().asyncCall(message, FormatTimeoutMs), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, method, next, failed] {
        watcher->deleteLater();
        const QDBusMessage reply = watcher->reply();
        if (reply.type() == QDBusMessage::ErrorMessage) {
            const QString error
                = QCoreApplication::translate("UDisksFormat", "The card could not be formatted (%1): %2")
                      .arg(method, reply.errorMessage());
            if (failed)
                failed(error);
            else
                emit finished(false, error);
            return;
        }
        next(reply.arguments());
    });
}

void UDisksFormat::start(const QString &device, const QStringList &mkfsOptions)
{
    m_objectPath = QStringLiteral("/org/freedesktop/UDisks2/block_devices/") + QFileInfo(device).fileName();
    const QVariantMap none;
    const QVariantMap formatOptions {{QStringLiteral("label"), QStringLiteral("DQ480")},
                                     {QStringLiteral("update-partition-type"), false},
                                     {QStringLiteral("mkfs-args"), mkfsOptions}};
    // An unmount of a volume that is not mounted fails harmlessly, so its answer is not awaited.
    QDBusMessage unmount
        = QDBusMessage::createMethodCall(Service, m_objectPath, Filesystem, QStringLiteral("Unmount"));
    unmount.setArguments({none});
    QDBusConnection::systemBus().call(unmount, QDBus::Block, FormatTimeoutMs);
    call(
        Block, QStringLiteral("Format"), {QStringLiteral("vfat"), formatOptions},
        [this](const QVariantList &) { mountBack(QString()); },
        [this](const QString &failure) { mountBack(failure); });
}

void UDisksFormat::mountBack(const QString &failure)
{
    call(
        Filesystem, QStringLiteral("Mount"), {QVariantMap()},
        [this, failure](const QVariantList &mounted) {
            m_mountPoint = mounted.isEmpty() ? QString() : mounted.first().toString();
            emit finished(failure.isEmpty(), failure);
        },
        [this, failure](const QString &error) { emit finished(false, failure.isEmpty() ? error : failure); });
}
