#include "platform/os/OsSystemInfo.h"

#include <QStandardPaths>

#ifdef Q_OS_WIN
#include <QSettings>

namespace {

QString registryText(const QString &key, const QString &value)
{
    const QSettings settings(key, QSettings::NativeFormat);
    // A registry value is read as at most 1024 characters, cut at its first zero character.
    const QString text = settings.value(value).toString().left(1024);
    const qsizetype zero = text.indexOf(QChar(0));
    return zero < 0 ? text : text.left(zero);
}

} // namespace

QString systemInformationProgram(const QStringList &)
{
    QString path
        = registryText(QStringLiteral("HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Shared Tools\\MSINFO"),
                       QStringLiteral("PATH"));
    if (path.isEmpty()) {
        const QString folder
            = registryText(QStringLiteral("HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Shared Tools Location"),
                           QStringLiteral("MSINFO"));
        if (!folder.isEmpty())
            path = folder + QStringLiteral("\\MSINFO32.EXE");
    }
    return path;
}

#else

QString systemInformationProgram(const QStringList &searchPaths)
{
    // Tools that show the machine's hardware and system come first; a system monitor will do.
    static const char *const candidates[]
        = {"hardinfo2", "hardinfo", "kinfocenter", "gnome-system-monitor", "mate-system-monitor"};
    for (const char *name : candidates) {
        const QString found = QStandardPaths::findExecutable(QLatin1String(name), searchPaths);
        if (!found.isEmpty())
            return found;
    }
    return QString();
}

#endif
