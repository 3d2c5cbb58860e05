#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

/// Which FAT a volume has, decided as Microsoft's FAT documentation decides it: by the cluster count.
namespace FatVariant {

enum Kind { Fat12, Fat16, Fat32 };

/// Below 4085 clusters FAT12, below 65525 FAT16, else FAT32.
Kind kindFromClusterCount(quint64 clusters);

/// udev's ID_FS_VERSION ("FAT12", "FAT16", "FAT32"); empty for anything else.
std::optional<Kind> kindFromUdevVersion(const QString &version);

/// The cluster count from a FAT boot sector (at least 512 bytes); empty when it is not one.
std::optional<quint64> clusterCountFromBootSector(QByteArrayView sector);

/// The file system text a drive shows: "FAT" for FAT12 and FAT16, "FAT32" for FAT32.
QString fileSystemText(Kind kind);

} // namespace FatVariant
