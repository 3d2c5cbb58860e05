#include "platform/linux/FuseImage.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QList>

namespace {

// fusefat [-o options] [-f|-d|-s...] image mountpoint: the two arguments that are not options.
QStringList positionalArguments(const QList<QByteArray> &arguments)
{
    QStringList positional;
    for (qsizetype i = 1; i < arguments.size(); ++i) {
        const QByteArray &argument = arguments[i];
        if (argument == "-o")
            ++i; // its value follows
        else if (!argument.isEmpty() && !argument.startsWith('-')) // fuse blanks out parts of options
            positional << QFile::decodeName(argument);
    }
    return positional;
}

// Image and mount point of each running fusefat process, with relative paths made absolute.
QList<std::pair<QString, QString>> fuseFatProcesses(const QString &procRoot)
{
    QList<std::pair<QString, QString>> served;
    const QDir proc(procRoot);
    // One entry at a time: a sorted list would hold a file information record for every process.
    QDirIterator processes(procRoot, QDir::Dirs | QDir::NoDotAndDotDot);
    while (processes.hasNext()) {
        processes.next();
        const QString pid = processes.fileName();
        if (pid.isEmpty() || !pid.front().isDigit())
            continue;
        QFile cmdline(proc.filePath(pid + QStringLiteral("/cmdline")));
        if (!cmdline.open(QIODevice::ReadOnly))
            continue;
        // Nearly every process is another program, told by the name its command line starts with.
        const QByteArray start = cmdline.read(4096);
        if (QFileInfo(QFile::decodeName(start.left(start.indexOf('\0')))).fileName() != u"fusefat")
            continue;
        const QList<QByteArray> arguments = (start + cmdline.readAll()).split('\0');
        const QStringList positional = positionalArguments(arguments);
        if (positional.size() != 2)
            continue;
        // Relative paths are the process's own; it may have moved to "/" since.
        const QDir cwd(QFileInfo(proc.filePath(pid + QStringLiteral("/cwd"))).symLinkTarget());
        served.append({QDir::cleanPath(cwd.absoluteFilePath(positional[0])),
                       QDir::cleanPath(cwd.absoluteFilePath(positional[1]))});
    }
    return served;
}

} // namespace

QHash<QString, QString> fuseFatImages(const QString &procRoot)
{
    QHash<QString, QString> images;
    for (const auto &[image, served] : fuseFatProcesses(procRoot))
        images.insert(served, image);
    return images;
}

bool fuseFatServes(const QString &procRoot, const QString &image)
{
    const QString wanted = QDir::cleanPath(QFileInfo(image).absoluteFilePath());
    for (const auto &served : fuseFatProcesses(procRoot)) {
        if (served.first == wanted)
            return true;
    }
    return false;
}
