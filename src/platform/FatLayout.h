#pragma once

#include "platform/FatVariant.h"

#include <QStringList>

#include <optional>

/// How a card of a given size is given its FAT file system: FAT16 whenever the card has room for
/// the clusters FAT16 needs, else FAT12, each with the smallest cluster that keeps the cluster
/// count within the FAT's limits. mkfs.fat's own choice of cluster fails on small cards (8 MiB).
struct FatLayout
{
    FatVariant::Kind kind = FatVariant::Fat16;
    int sectorsPerCluster = 1;

    /// The layout for a card of `bytes`; empty when no FAT12 or FAT16 fits it.
    static std::optional<FatLayout> forCardSize(qint64 bytes);

    /// mkfs.fat's options that give this layout (before the label and the device).
    QStringList mkfsOptions() const;
};
