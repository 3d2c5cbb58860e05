#include "setting/PcFileReplacement.h"

#include "platform/os/OsFiles.h"
#include "setting/FileAttributes.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <algorithm>
#include <cerrno>

namespace {

// What marks a temporary file as this program's own: the file's name, this mark and six letters
// or digits. No operator names a file so, so only these are ever taken for leftovers and removed.
const QLatin1String TemporaryMark(".dq480-saving-");
constexpr int SuffixLength = 6;
// Random names that are all taken mean something else fills the folder.
constexpr int LastAttempt = 21;

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
bool isLeftoverName(const QString &name, const QString &fileName)
{
    const QString prefix = fileName + TemporaryMark;
    if (name.size() != prefix.size() + SuffixLength || !name.startsWith(prefix))
        return false;
    return std::all_of(name.end() - SuffixLength, name.end(),
                       [](QChar c) { return c.unicode() < 128 && c.isLetterOrNumber(); });
}

// The file the operator's link leads to is the one replaced; the link stays.
QString linkFollowed(const QString &destination)
{
    const QFileInfo info(destination);
    if (!info.isSymLink())
        return destination;
    return info.exists() ? info.canonicalFilePath() : info.symLinkTarget();
}

} // namespace

PcFileReplacement::PcFileReplacement(const QString &destination, const ReplacementDevice &device)
    : FileReplacement(linkFollowed(destination), device)
    , m_named(destination)
{ }

void PcFileReplacement::removeLeftovers() const
{
    const QFileInfo info(destination());
    const QDir folder = info.dir();
    const QString pattern = info.fileName() + TemporaryMark + QString(SuffixLength, QLatin1Char('?'));
    for (const QString &name : folder.entryList({pattern}, QDir::Files | QDir::Hidden)) {
        if (isLeftoverName(name, info.fileName()) && entryKind(folder.filePath(name)) == EntryKind::File)
            QFile::remove(folder.filePath(name));
    }
}

bool PcFileReplacement::open(QString &error)
{
    // The rename would slip past the protection the operator gave the file.
    if (isReadOnly(destination())) {
        error = QCoreApplication::translate("FileReplacement", "Cannot write %1: the file is read-only.")
                    .arg(m_named);
        return false;
    }
    removeLeftovers();
    const int permissions = filePermissions(destination());
    for (int attempt = 0;; ++attempt) {
        switch (create(destination() + TemporaryMark + randomSuffix(), error)) {
        case Created::Yes:
            setFilePermissions(descriptor(), permissions);
            return true;
        case Created::NameTaken:
            if (attempt < LastAttempt)
                continue;
            return fail(error, destination(), EEXIST);
        case Created::Failed:
            return false;
        }
    }
}

bool PcFileReplacement::commit(QString &error)
{
    if (!putInPlace(error))
        return false;
    syncFolder(QFileInfo(destination()).path());
    return true;
}

bool writeFileAtomically(const QString &path, const QByteArray &bytes, QString &error)
{
    PcFileReplacement file(path);
    return file.open(error) && file.write(bytes, error) && file.commit(error);
}
