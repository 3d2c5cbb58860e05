#pragma once

#include "platform/DriveInfo.h"

#include <QObject>

#include <memory>

/// The drives of the PC the program runs on.
std::unique_ptr<DriveSource> makeSystemDriveSource();

/// Tells when cards come or go: a mount or unmount, or a card put in or taken out.
class DeviceWatcher : public QObject
{
    Q_OBJECT

public:
    explicit DeviceWatcher(QObject *parent = nullptr);
    ~DeviceWatcher() override;

signals:
    void devicesChanged();

private:
    struct Private;
    std::unique_ptr<Private> d;
};
