#include "platform/FolderLock.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

FolderLock::~FolderLock()
{
    if (m_handle >= 0)
        ::close(static_cast<int>(m_handle));
}

FolderLock::Outcome FolderLock::take(const QString &folder)
{
    if (m_handle >= 0)
        return Outcome::Taken;
    // The folder itself is locked, read-only: every user who can open it sees the same lock.
    const int fd = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return Outcome::Unavailable;
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        const bool held = errno == EWOULDBLOCK;
        ::close(fd);
        return held ? Outcome::HeldElsewhere : Outcome::Unavailable;
    }
    m_handle = fd;
    return Outcome::Taken;
}
