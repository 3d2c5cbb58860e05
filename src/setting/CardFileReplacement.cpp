#include "setting/CardFileReplacement.h"

#include "platform/os/OsFiles.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <cerrno>

namespace {

QString refusedEntry(const QString &path, EntryKind kind)
{
    return kind == EntryKind::Link
        ? QCoreApplication::translate(
              "FileReplacement",
              "Cannot write %1: it is a symbolic link, and nothing is written through a link.")
              .arg(path)
        : QCoreApplication::translate("FileReplacement", "Cannot write %1: it is not a plain file.")
              .arg(path);
}

} // namespace

CardFileReplacement::CardFileReplacement(const QString &destination, const ReplacementDevice &device)
    : FileReplacement(destination, device)
{ }

bool CardFileReplacement::checkDestination(QString &error) const
{
    const QString folder = QFileInfo(destination()).path();
    for (const QString &path : {folder, destination()}) {
        const EntryKind kind = entryKind(path);
        if (kind == EntryKind::Link || (path == destination() && kind == EntryKind::Other)) {
            error = refusedEntry(path, kind);
            return false;
        }
    }
    return true;
}

// "NAME.TMP" left by a write that was cut off; anything but a plain file there was put there by
// someone else and is not touched.
bool CardFileReplacement::removeLeftover(const QString &temporary, QString &error)
{
    const EntryKind kind = entryKind(temporary);
    if (kind == EntryKind::Missing)
        return true;
    if (kind != EntryKind::File) {
        error = refusedEntry(temporary, kind);
        return false;
    }
    return QFile::remove(temporary) || fail(error, temporary, errno);
}

bool CardFileReplacement::open(QString &error)
{
    const QString temporary = destination() + QStringLiteral(".TMP");
    if (!checkDestination(error) || !removeLeftover(temporary, error))
        return false;
    switch (create(temporary, error)) {
    case Created::Yes:
        return true;
    case Created::NameTaken:
        return fail(error, destination(), EEXIST);
    case Created::Failed:
        break;
    }
    return false;
}

bool CardFileReplacement::commit(QString &error)
{
    return putInPlace(error) && readBack(error);
}

bool CardFileReplacement::readBack(QString &error) const
{
    QByteArray back;
    if (!readFromDisk(destination(), m_written.size() + 1, back)) {
        error = QCoreApplication::translate("FileReplacement", "Cannot read back %1: %2")
                    .arg(destination(), systemErrorText(errno));
        return false;
    }
    if (back != m_written) {
        error
            = QCoreApplication::translate("FileReplacement", "%1 on the card differs from the file written.")
                  .arg(destination());
        return false;
    }
    return true;
}

bool writeFileToCard(const QString &path, const QByteArray &bytes, QString &error)
{
    CardFileReplacement file(path);
    return file.open(error) && file.write(bytes, error) && file.commit(error);
}
