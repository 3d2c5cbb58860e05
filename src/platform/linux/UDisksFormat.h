#pragma once

#include <QObject>
#include <QString>

#include <functional>

/// Formats a block device as FAT through UDisks2 on the system bus, the way a desktop's disk tool
/// does, so the operator needs no administrator rights: unmount, format, mount back.
class UDisksFormat : public QObject
{
    Q_OBJECT

public:
    explicit UDisksFormat(QObject *parent = nullptr);

    /// True when the UDisks2 service runs on this machine.
    static bool available();

    /// Starts with the device ("/dev/sdb1") and mkfs.fat's options for its layout; the answer comes
    /// through finished(). A format that fails mounts the card back all the same.
    void start(const QString &device, const QStringList &mkfsOptions);

    /// Where the card is mounted after the format (it can move with the new label).
    QString mountPoint() const { return m_mountPoint; }

signals:
    void finished(bool ok, const QString &error);

private:
    /// Calls a method; `next` gets its answer, `failed` (when given) the reason it failed.
    void call(const QString &interface, const QString &method, const QVariantList &arguments,
              const std::function<void(const QVariantList &)> &next,
              const std::function<void(const QString &)> &failed = nullptr);
    /// Mounts the card again and ends, successfully when `failure` is empty.
    void mountBack(const QString &failure);

    QString m_objectPath;
    QString m_mountPoint;
};
