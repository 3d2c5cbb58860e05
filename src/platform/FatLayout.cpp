#include "platform/FatLayout.h"

#include <array>

namespace {

constexpr qint64 SectorBytes = 512;
constexpr qint64 RootEntries = 512;
// Kept away from the limits, so that mkfs.fat's own rounding never crosses them.
constexpr qint64 Margin = 16;

qint64 alignedUp(qint64 sectors, qint64 cluster)
{
    return (sectors + cluster - 1) / cluster * cluster;
}

// The clusters left after the boot sector, both FATs and the root folder, each aligned to the
// cluster as mkfs.fat aligns them: a count a little lower than mkfs.fat's, never higher.
qint64 clusterCount(qint64 sectors, qint64 cluster, int fatBits)
{
    const qint64 reserved = alignedUp(1, cluster);
    const qint64 root = alignedUp(RootEntries * 32 / SectorBytes, cluster);
    const qint64 roughClusters = std::max<qint64>(0, (sectors - reserved - root) / cluster);
    const qint64 fatSectors
        = alignedUp(((roughClusters + 2) * fatBits / 8 + SectorBytes) / SectorBytes, cluster);
    return std::max<qint64>(0, (sectors - reserved - root - 2 * fatSectors) / cluster);
}

} // namespace

std::optional<FatLayout> FatLayout::forCardSize(qint64 bytes)
{
    const qint64 sectors = bytes / SectorBytes;
    constexpr std::array<int, 7> Clusters {1, 2, 4, 8, 16, 32, 64};
    for (const int cluster : Clusters) {
        const qint64 count = clusterCount(sectors, cluster, 16);
        if (count < 4085 + Margin)
            break; // larger clusters only make fewer
        if (count <= 65524 - Margin)
            return FatLayout {FatVariant::Fat16, cluster};
    }
    for (const int cluster : Clusters) {
        const qint64 count = clusterCount(sectors, cluster, 12);
        if (count < Margin)
            break;
        if (count <= 4084 - Margin)
            return FatLayout {FatVariant::Fat12, cluster};
    }
    return std::nullopt;
}

QStringList FatLayout::mkfsOptions() const
{
    return {QStringLiteral("-F"), kind == FatVariant::Fat12 ? QStringLiteral("12") : QStringLiteral("16"),
            QStringLiteral("-s"), QString::number(sectorsPerCluster),
            QStringLiteral("-r"), QString::number(RootEntries)};
}
