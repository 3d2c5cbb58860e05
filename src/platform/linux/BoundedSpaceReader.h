#pragma once

#include "platform/linux/LinuxDriveSource.h"

#include <chrono>

/// statvfs that gives up after `patience`. A dead network share or a stuck FUSE server can block
/// statvfs for minutes, and the operator's window must not freeze with it: a volume that has not
/// answered in time counts as not ready, and is not asked again until its first answer has come.
LinuxDriveSource::SpaceReader boundedSpaceReader(std::chrono::milliseconds patience);
