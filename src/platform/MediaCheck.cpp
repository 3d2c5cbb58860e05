#include "platform/MediaCheck.h"

#include <cmath>

#ifdef Q_OS_WIN
#include "platform/win/WinMediaTypes.h"
#endif

namespace modFDCHK {

bool mediaCountPasses(int count)
{
    return count == 11 || count == 0;
}

int mediaCountFromBytes(unsigned long bytes)
{
    return static_cast<int>(std::lround(static_cast<double>(bytes) / 24.0));
}

QString mediaDescription(int mediaType)
{
    static const char *const texts[] = {
        "Format is unknown",
        "5.25\", 1.2MB,  512 bytes/sector",
        "3.5\",  1.44MB, 512 bytes/sector",
        "3.5\",  2.88MB, 512 bytes/sector",
        "3.5\",  20.8MB, 512 bytes/sector",
        "3.5\",  720KB,  512 bytes/sector",
        "5.25\", 360KB,  512 bytes/sector",
        "5.25\", 320KB,  512 bytes/sector",
        "5.25\", 320KB,  1024 bytes/sector",
        "5.25\", 180KB,  512 bytes/sector",
        "5.25\", 160KB,  512 bytes/sector",
        "Removable media other than floppy",
        "Fixed hard disk media",
        "3.5\", 120MB Floppy",
        "3.5\" ,  640KB,  512 bytes/sector",
        "5.25\",  640KB,  512 bytes/sector",
        "5.25\",  720KB,  512 bytes/sector",
        "3.5\" ,  1.2MB,  512 bytes/sector",
        "3.5\" ,  1.23MB, 1024 bytes/sector",
        "5.25\",  1.23MB, 1024 bytes/sector",
        "3.5\" MO 128MB   512 bytes/sector",
        "3.5\" MO 230MB   512 bytes/sector",
        "8\",     256KB,  128 bytes/sector",
    };
    if (mediaType < 0 || mediaType >= static_cast<int>(std::size(texts)))
        return QStringLiteral("Unknown");
    return QString::fromLatin1(texts[mediaType]);
}

bool mediaCheckVerdict(int count)
{
    return count >= 0 && mediaCountPasses(count);
}

bool MediaCheck(const DriveInfo &drive)
{
#ifdef Q_OS_WIN
    return mediaCheckVerdict(winMediaTypeCount(drive.path.toStdString()));
#else
    // No floppy is a card: a floppy controller's devices are fd0, fd1...
    const QString name = drive.device.section(QLatin1Char('/'), -1);
    return !name.startsWith(QLatin1String("fd"));
#endif
}

} // namespace modFDCHK
