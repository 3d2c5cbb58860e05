#include "setting/RegularFile.h"

#include <QFileInfo>

PathKind pathKind(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return PathKind::Missing;
    if (info.isDir())
        return PathKind::Folder;
    return info.isFile() ? PathKind::File : PathKind::Other;
}
