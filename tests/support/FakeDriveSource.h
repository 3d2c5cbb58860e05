#pragma once

#include "platform/DriveInfo.h"

/// The PC's drives as a test sets them.
struct FakeDriveSource : DriveSource
{
    QList<DriveInfo> list;
    QList<DriveInfo> drives() const override { return list; }
};
