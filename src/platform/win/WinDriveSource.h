#pragma once

#include "platform/DriveInfo.h"

/// The drives of a Windows PC.
class WinDriveSource : public DriveSource
{
public:
    QList<DriveInfo> drives() const override;
};
