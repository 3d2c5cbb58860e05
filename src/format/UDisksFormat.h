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

    /// Starts with the device ("/dev/sdb1"); the answer comes through finished().
    void start(const QString &device);

    /// Where the card is mounted after the format (it can move with the new label).
    QString mountPoint() const { return m_mountPoint; }

signals:
    void finished(bool ok, const QString &error);

private:
    void call(const QString &interface, const QString &method, const QVariantList &arguments,
              const std::function<void(const QVariantList &)> &next);

    QString m_objectPath;
    QString m_mountPoint;
};
