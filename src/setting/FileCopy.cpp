#include "setting/FileCopy.h"

#include "setting/FileReplacement.h"
#include "setting/PcFileReplacement.h"
#include "setting/RegularFile.h"

#include <QCoreApplication>
#include <QFile>

bool copyFileReplacing(const QString &source, const QString &destination, QString &error)
{
    // A pipe would hold the copy waiting for a writer, a device would never end.
    if (pathKind(source) == PathKind::Other) {
        error
            = QCoreApplication::translate("FileCopy",
                                          "Cannot read %1: it is a pipe or a device, not a file: only files "
                                          "are read.")
                  .arg(source);
        return false;
    }
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly)) {
        error = QCoreApplication::translate("FileCopy", "Cannot read %1: %2").arg(source, in.errorString());
        return false;
    }
    // A read-only destination is the caller's question to ask; once asked, it may be replaced.
    PcFileReplacement out(destination);
    if (!out.open(error))
        return false;
    constexpr qint64 ChunkBytes = 256 * 1024;
    qint64 copied = 0;
    while (!in.atEnd()) {
        const QByteArray chunk = in.read(ChunkBytes);
        if (chunk.isEmpty() && in.error() != QFileDevice::NoError) {
            error
                = QCoreApplication::translate("FileCopy", "Cannot read %1: %2").arg(source, in.errorString());
            return false;
        }
        if (!out.write(chunk, error))
            return false;
        copied += chunk.size();
    }
    // A source that shrank or could not be read to its end is no copy of it.
    if (in.error() != QFileDevice::NoError || copied != in.size()) {
        error = QCoreApplication::translate("FileCopy", "Cannot read %1: %2").arg(source, in.errorString());
        return false;
    }
    return out.commit(error);
}
