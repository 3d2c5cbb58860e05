#include "setting/FileReplacement.h"

#include "platform/os/OsFiles.h"
#include "setting/FileAttributes.h"

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

// What marks a temporary file as this program's own: the file's name, this mark and six letters
// or digits. No operator names a file so, so only these are ever taken for leftovers and removed.
const QLatin1String TemporaryMark(".dq480-saving-");
constexpr int SuffixLength = 6;

QString randomSuffix()
{
    static constexpr char Letters[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    QString suffix;
    QRandomGenerator *random = QRandomGenerator::global();
    for (int i = 0; i < SuffixLength; ++i)
        suffix += QLatin1Char(Letters[random->bounded(int(sizeof(Letters) - 1))]);
    return suffix;
}

// A temporary file of an interrupted save of `fileName`.
bool isPcLeftoverName(const QString &name, const QString &fileName)
{
    const QString prefix = fileName + TemporaryMark;
    if (name.size() != prefix.size() + SuffixLength || !name.startsWith(prefix))
        return false;
    return std::all_of(name.end() - SuffixLength, name.end(),
                       [](QChar c) { return c.unicode() < 128 && c.isLetterOrNumber(); });
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

qint64 ReplacementDevice::write(int fd, const char *data, qint64 size) const
{
    return ::write(fd, data, static_cast<size_t>(size));
}

bool ReplacementDevice::sync(int fd) const
{
    return !syncFailed(fd);
}

bool ReplacementDevice::rename(const QString &from, const QString &to) const
{
    return renameOver(from, to);
}

const ReplacementDevice &ReplacementDevice::system()
{
    static const ReplacementDevice calls {};
    return calls;
}

FileReplacement::FileReplacement(const QString &destination, ReplaceStyle style,
                                 const ReplacementDevice &device)
    : m_destination(destination)
    , m_style(style)
    , m_device(device)
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
    const QString pattern = info.fileName() + TemporaryMark + QString(SuffixLength, QLatin1Char('?'));
    for (const QString &name : folder.entryList({pattern}, QDir::Files | QDir::Hidden)) {
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
            m_temporary = m_destination + TemporaryMark + randomSuffix();
        // Created here and now, never an entry that was there before (nor a link's target).
        m_fd = createNewFile(m_temporary);
        if (m_fd < 0 && (errno == EACCES || errno == EPERM))
            return folderRefused(error);
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

bool FileReplacement::commit(QString &error)
{
    if (m_fd < 0) {
        error = QCoreApplication::translate("FileReplacement", "Cannot write %1: the file is not open.")
                    .arg(m_destination);
        return false;
    }
    // A full disk may show only now, when the cached writes reach it.
    if (!m_device.sync(m_fd))
        return fail(error, m_destination, errno);
    const int fd = m_fd;
    m_fd = -1;
    if (::close(fd) != 0)
        return fail(error, m_destination, errno);
    if (!m_device.rename(m_temporary, m_destination))
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
