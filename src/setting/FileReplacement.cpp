#include "FileReplacement.h"

#include "FileAttributes.h"
#include "OsFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <algorithm>
#include <cerrno>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#else
#include <io.h>
#endif

namespace {

[[maybe_unused]] QByteArray encoded(const QString &path) // the POSIX calls take the encoded name
{
    return QFile::encodeName(path);
}

// Six letters and digits with at least one capital and one digit, as a name's suffix that an
// operator's own copies ("x.stf.backup") never look like.
QString randomSuffix()
{
    static constexpr char Letters[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    QString suffix;
    QRandomGenerator *random = QRandomGenerator::global();
    suffix += QLatin1Char(char('A' + random->bounded(26)));
    suffix += QLatin1Char(char('0' + random->bounded(10)));
    for (int i = 0; i < 4; ++i)
        suffix += QLatin1Char(Letters[random->bounded(int(sizeof(Letters) - 1))]);
    return suffix;
}

// A temporary file of an interrupted save: the file's name, a dot and six letters or digits of
// which at least one is a capital (all-lower-case suffixes are the operator's own names).
bool isPcLeftoverName(const QString &name, const QString &fileName)
{
    if (name.size() != fileName.size() + 7 || !name.startsWith(fileName + QLatin1Char('.')))
        return false;
    bool capital = false;
    for (const QChar c : name.right(6)) {
        if (c.unicode() > 127 || !c.isLetterOrNumber())
            return false;
        capital = capital || c.isUpper();
    }
    return capital;
}

enum class EntryKind { Missing, File, Link, Other };

EntryKind entryKind(const QString &path)
{
#ifdef Q_OS_UNIX
    struct stat info = {};
    if (::lstat(encoded(path).constData(), &info) != 0)
        return EntryKind::Missing;
    return S_ISREG(info.st_mode) ? EntryKind::File
        : S_ISLNK(info.st_mode)  ? EntryKind::Link
                                 : EntryKind::Other;
#else
    const QFileInfo info(path);
    return !info.exists() && !info.isSymLink() ? EntryKind::Missing
        : info.isSymLink()                     ? EntryKind::Link
        : info.isFile()                        ? EntryKind::File
                                               : EntryKind::Other;
#endif
}

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

bool syncFailed(int fd)
{
    return !flushFileToDisk(fd);
}

bool renameOver(const QString &from, const QString &to)
{
    return replaceFileInOneStep(from, to);
}

} // namespace

FileReplacement::FileReplacement(const QString &destination, ReplaceStyle style)
    : m_destination(destination)
    , m_style(style)
{
    if (style == ReplaceStyle::Pc) {
        const QFileInfo info(destination);
        if (info.isSymLink())
            m_destination = info.exists() ? info.canonicalFilePath() : info.symLinkTarget();
    }
}

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

bool FileReplacement::checkCardDestination(QString &error)
{
    const QString folder = QFileInfo(m_destination).path();
    for (const QString &path : {folder, m_destination}) {
        const EntryKind kind = entryKind(path);
        if (kind == EntryKind::Link || (path == m_destination && kind == EntryKind::Other)) {
            error = refusedEntry(path, kind);
            return false;
        }
    }
    return true;
}

bool FileReplacement::removeLeftovers(QString &error)
{
    if (m_style == ReplaceStyle::Card) {
        // "NAME.TMP" left by a write that was cut off; anything but a plain file there was put
        // there by someone else and is not touched.
        const EntryKind kind = entryKind(m_temporary);
        if (kind == EntryKind::Missing)
            return true;
        if (kind != EntryKind::File) {
            error = refusedEntry(m_temporary, kind);
            return false;
        }
        return QFile::remove(m_temporary) || fail(error, m_temporary, errno);
    }
    const QFileInfo info(m_destination);
    const QDir folder = info.dir();
    const QString prefix = info.fileName() + QLatin1Char('.');
    for (const QString &name :
         folder.entryList({prefix + QStringLiteral("??????")}, QDir::Files | QDir::Hidden)) {
        if (isPcLeftoverName(name, info.fileName()) && entryKind(folder.filePath(name)) == EntryKind::File)
            QFile::remove(folder.filePath(name));
    }
    return true;
}

bool FileReplacement::open(QString &error)
{
    if (m_style == ReplaceStyle::Card) {
        if (!checkCardDestination(error))
            return false;
        m_temporary = m_destination + QStringLiteral(".TMP");
    }
    if (!removeLeftovers(error))
        return false;
#ifdef Q_OS_UNIX
    struct stat old = {};
    const bool hadOld = m_style == ReplaceStyle::Pc && ::stat(encoded(m_destination).constData(), &old) == 0;
#endif
    for (int attempt = 0; m_fd < 0; ++attempt) {
        if (m_style == ReplaceStyle::Pc)
            m_temporary = m_destination + QLatin1Char('.') + randomSuffix();
        // Created here and now, never an entry that was there before (nor a link's target).
        m_fd = createNewFile(m_temporary);
        if (m_fd < 0 && (errno != EEXIST || m_style == ReplaceStyle::Card || attempt > 20))
            return fail(error, m_destination, errno);
    }
    m_created = true;
#ifdef Q_OS_UNIX
    if (hadOld)
        ::fchmod(m_fd, old.st_mode & 07777);
#endif
    return true;
}

bool FileReplacement::write(const char *data, qint64 size, QString &error)
{
    if (m_fd < 0) {
        error = QCoreApplication::translate("FileReplacement", "Cannot write %1: the file is not open.")
                    .arg(m_destination);
        return false;
    }
    if (m_style == ReplaceStyle::Card)
        m_written.append(data, size);
    while (size > 0) {
        const auto done = ::write(m_fd, data, static_cast<size_t>(std::min<qint64>(size, 1 << 30)));
        if (done < 0 && errno == EINTR)
            continue;
        if (done <= 0)
            return fail(error, m_destination, done < 0 ? errno : ENOSPC);
        data += done;
        size -= done;
    }
    return true;
}

bool FileReplacement::commit(QString &error)
{
    if (m_fd < 0) {
        error = QCoreApplication::translate("FileReplacement", "Cannot write %1: the file is not open.")
                    .arg(m_destination);
        return false;
    }
    // A full disk may show only now, when the cached writes reach it.
    if (syncFailed(m_fd))
        return fail(error, m_destination, errno);
    const int fd = m_fd;
    m_fd = -1;
    if (::close(fd) != 0)
        return fail(error, m_destination, errno);
    if (!renameOver(m_temporary, m_destination))
        return fail(error, m_destination, errno);
    m_created = false;
    if (m_style == ReplaceStyle::Card)
        return readBack(error);
    syncFolder(QFileInfo(m_destination).path());
    return true;
}

void FileReplacement::cancel()
{
    if (m_fd >= 0) {
        ::close(m_fd);
        m_fd = -1;
    }
    if (m_created) {
        QFile::remove(m_temporary);
        m_created = false;
    }
}

bool FileReplacement::readBack(QString &error)
{
    const QString differs
        = QCoreApplication::translate("FileReplacement", "%1 on the card differs from the file written.")
              .arg(m_destination);
#ifdef Q_OS_UNIX
    const int fd = ::open(encoded(m_destination).constData(), O_RDONLY | O_NOFOLLOW);
    if (fd < 0) {
        error = QCoreApplication::translate("FileReplacement", "Cannot read back %1: %2")
                    .arg(m_destination, qt_error_string(errno));
        return false;
    }
    // The PC's cache still holds what was written; dropping it makes the read come from the card.
    ::posix_fadvise(fd, 0, 0, POSIX_FADV_DONTNEED);
    QByteArray back(m_written.size() + 1, Qt::Uninitialized);
    qint64 got = 0;
    while (got < back.size()) {
        const auto done = ::read(fd, back.data() + got, static_cast<size_t>(back.size() - got));
        if (done < 0 && errno == EINTR)
            continue;
        if (done < 0) {
            error = QCoreApplication::translate("FileReplacement", "Cannot read back %1: %2")
                        .arg(m_destination, qt_error_string(errno));
            ::close(fd);
            return false;
        }
        if (done == 0)
            break;
        got += done;
    }
    ::close(fd);
    back.truncate(got);
#else
    QFile file(m_destination);
    const QByteArray back = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
#endif
    if (back != m_written) {
        error = differs;
        return false;
    }
    return true;
}

void syncFolder(const QString &folder)
{
    flushFolderEntries(folder);
}

bool writeFileAtomically(const QString &path, const QByteArray &bytes, QString &error, ReplaceStyle style)
{
    if (style == ReplaceStyle::Pc && isReadOnly(path)) {
        error = QCoreApplication::translate("FileReplacement", "Cannot write %1: the file is read-only.")
                    .arg(path);
        return false;
    }
    FileReplacement file(path, style);
    return file.open(error) && file.write(bytes, error) && file.commit(error);
}
