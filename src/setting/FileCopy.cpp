#include "FileCopy.h"

#include <QFile>
#include <QSaveFile>

bool copyFileReplacing(const QString &source, const QString &destination, QString &error)
{
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly)) {
        error = QStringLiteral("Cannot read %1: %2").arg(source, in.errorString());
        return false;
    }
    QSaveFile out(destination);
    // A read-only destination is the caller's question to ask; once asked, it may be replaced.
    out.setDirectWriteFallback(false);
    if (!out.open(QIODevice::WriteOnly)) {
        error = QStringLiteral("Cannot write %1: %2").arg(destination, out.errorString());
        return false;
    }
    constexpr qint64 ChunkBytes = 256 * 1024;
    while (!in.atEnd()) {
        const QByteArray chunk = in.read(ChunkBytes);
        if (chunk.isEmpty() && in.error() != QFileDevice::NoError) {
            error = QStringLiteral("Cannot read %1: %2").arg(source, in.errorString());
            out.cancelWriting();
            return false;
        }
        if (out.write(chunk) != chunk.size()) {
            error = QStringLiteral("Cannot write %1: %2").arg(destination, out.errorString());
            out.cancelWriting();
            return false;
        }
    }
    if (!out.commit()) {
        error = QStringLiteral("Cannot write %1: %2").arg(destination, out.errorString());
        return false;
    }
    return true;
}
