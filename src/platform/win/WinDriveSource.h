#pragma once

#include "DriveInfo.h"

/// The drives of a Windows PC.
class WinDriveSource : public DriveSource
{
public:
    QList<DriveInfo> drives() const override;
};
