#include "platform/FatVariant.h"

namespace FatVariant {

namespace {

quint32 little(QByteArrayView bytes, int offset, int size)
{
    quint32 value = 0;
    for (int i = size - 1; i >= 0; --i)
        value = (value << 8) | static_cast<quint8>(bytes[offset + i]);
    return value;
}

} // namespace

Kind kindFromClusterCount(quint64 clusters)
{
    if (clusters < 4085)
        return Fat12;
    if (clusters < 65525)
        return Fat16;
    return Fat32;
}

std::optional<Kind> kindFromUdevVersion(const QString &version)
{
    if (version == QLatin1String("FAT12"))
        return Fat12;
    if (version == QLatin1String("FAT16"))
        return Fat16;
    if (version == QLatin1String("FAT32"))
        return Fat32;
    return std::nullopt;
}

std::optional<quint64> clusterCountFromBootSector(QByteArrayView sector)
{
    if (sector.size() < 512 || static_cast<quint8>(sector[510]) != 0x55
        || static_cast<quint8>(sector[511]) != 0xAA)
        return std::nullopt;
    const quint32 bytesPerSector = little(sector, 11, 2);
    const quint32 sectorsPerCluster = little(sector, 13, 1);
    const quint32 reserved = little(sector, 14, 2);
    const quint32 fats = little(sector, 16, 1);
    const quint32 rootEntries = little(sector, 17, 2);
    const quint32 fatSize = little(sector, 22, 2) ? little(sector, 22, 2) : little(sector, 36, 4);
    const quint32 totalSectors = little(sector, 19, 2) ? little(sector, 19, 2) : little(sector, 32, 4);
    const bool sane = (bytesPerSector == 512 || bytesPerSector == 1024 || bytesPerSector == 2048
                       || bytesPerSector == 4096)
        && sectorsPerCluster != 0 && (sectorsPerCluster & (sectorsPerCluster - 1)) == 0 && fats != 0
        && fatSize != 0;
    if (!sane)
        return std::nullopt;
    const quint64 rootSectors = (quint64(rootEntries) * 32 + bytesPerSector - 1) / bytesPerSector;
    const quint64 metadata = quint64(reserved) + quint64(fats) * fatSize + rootSectors;
    if (totalSectors <= metadata)
        return std::nullopt;
    return (totalSectors - metadata) / sectorsPerCluster;
}

QString fileSystemText(Kind kind)
{
    return kind == Fat32 ? QStringLiteral("FAT32") : QStringLiteral("FAT");
}

} // namespace FatVariant
