#include "setting/FileReplacement.h"

#include "platform/os/OsFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <utility>

qint64 ReplacementDevice::write(int fd, const char *data, qint64 size) const
{
    return writeToFile(fd, data, size);
}

bool ReplacementDevice::sync(int fd) const
{
    return flushFileToDisk(fd);
}

bool ReplacementDevice::rename(const QString &from, const QString &to) const
{
    return replaceFileInOneStep(from, to);
}

const ReplacementDevice &ReplacementDevice::system()
{
    static const ReplacementDevice calls {};
    return calls;
}

FileReplacement::FileReplacement(const QString &destination, const ReplacementDevice &device)
    : m_destination(destination)
    , m_device(device)
{ }

FileReplacement::~FileReplacement()
{
    cancel();
}

bool FileReplacement::fail(QString &error, const QString &path, int errorCode)
{
    error = QCoreApplication::translate("FileReplacement", "Cannot write %1: %2")
                .arg(path, systemErrorText(errorCode));
    cancel();
    return false;
}

// The file itself may be writable: what is refused is a new file beside it, which every write
// makes first; "Permission denied" alone would send the operator to the file.
bool FileReplacement::folderRefused(QString &error)
{
    error = QCoreApplication::translate("FileReplacement",
                                        "Cannot write %1: its folder %2 cannot be written to, and the new "
                                        "content is always written beside the file first.")
                .arg(m_destination, QDir::toNativeSeparators(QFileInfo(m_destination).path()));
    cancel();
    return false;
}

bool FileReplacement::notOpen(QString &error) const
{
    error = QCoreApplication::translate("FileReplacement", "Cannot write %1: the file is not open.")
                .arg(m_destination);
    return false;
}

FileReplacement::Created FileReplacement::create(const QString &temporary, QString &error)
{
    m_temporary = temporary;
    m_fd = createNewFile(temporary);
    if (m_fd >= 0) {
        m_created = true;
        return Created::Yes;
    }
    if (errno == EACCES || errno == EPERM) {
        folderRefused(error);
        return Created::Failed;
    }
    if (errno == EEXIST)
        return Created::NameTaken;
    fail(error, m_destination, errno);
    return Created::Failed;
}

bool FileReplacement::write(const char *data, qint64 size, QString &error)
{
    if (m_fd < 0)
        return notOpen(error);
    written(data, size);
    while (size > 0) {
        const auto done = m_device.write(m_fd, data, std::min<qint64>(size, 1 << 30));
        if (done < 0 && errno == EINTR)
            continue;
        if (done <= 0)
            return fail(error, m_destination, done < 0 ? errno : ENOSPC);
        data += done;
        size -= done;
    }
    return true;
}

bool FileReplacement::putInPlace(QString &error)
{
    if (m_fd < 0)
        return notOpen(error);
    // A full disk may show only now, when the cached writes reach it.
    if (!m_device.sync(m_fd))
        return fail(error, m_destination, errno);
    if (!closeFile(std::exchange(m_fd, -1)))
        return fail(error, m_destination, errno);
    if (!m_device.rename(m_temporary, m_destination))
        return fail(error, m_destination, errno);
    m_created = false;
    return true;
}

void FileReplacement::cancel()
{
    if (m_fd >= 0)
        closeFile(std::exchange(m_fd, -1));
    if (m_created) {
        QFile::remove(m_temporary);
        m_created = false;
    }
}

void syncFolder(const QString &folder)
{
    flushFolderEntries(folder);
}
