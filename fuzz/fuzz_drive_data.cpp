// Feeds arbitrary bytes to the three readers of data that comes from outside the program besides
// setting files: the kernel's mount table, a card's FAT boot sector and an MP2 file's first frame
// header. The first byte chooses the reader, the rest is its input. Each must answer, never crash,
// and what it answers must be possible for that input.

#include "platform/FatVariant.h"
#include "platform/linux/MountInfo.h"
#include "setting/Mp2File.h"

#include <QString>

#include <cstdint>
#include <cstdlib>

namespace {

void mountTable(QByteArrayView bytes)
{
    const QString text = QString::fromUtf8(bytes);
    for (const MountEntry &entry : parseMountInfo(text)) {
        // Undoing escapes only ever shortens a field.
        if (entry.mountPoint.size() > text.size() || entry.source.size() > text.size()
            || entry.fsType.isEmpty())
            std::abort();
    }
}

void bootSector(QByteArrayView bytes)
{
    const std::optional<quint64> clusters = FatVariant::clusterCountFromBootSector(bytes);
    if (!clusters)
        return;
    // A volume of at most 2^32 sectors of at least one sector per cluster.
    if (bytes.size() < 512 || *clusters >= (quint64(1) << 32))
        std::abort();
    FatVariant::fileSystemText(FatVariant::kindFromClusterCount(*clusters));
}

void mp2Header(QByteArrayView bytes)
{
    if (isAcceptedMp2Header(bytes) && (bytes.size() < 4 || static_cast<quint8>(bytes[0]) != 0xFF))
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    const QByteArrayView rest(reinterpret_cast<const char *>(data) + 1, static_cast<qsizetype>(size - 1));
    switch (data[0] % 3) {
    case 0:
        mountTable(rest);
        break;
    case 1:
        bootSector(rest);
        break;
    default:
        mp2Header(rest);
        break;
    }
    return 0;
}
