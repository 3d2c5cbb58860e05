#include "capabilities/CapabilityPlugin.h"

#include <QCoreApplication>
#include <QDir>
#include <QPluginLoader>

#include <atomic>

QString capabilityFileName(Capability capability)
{
    switch (capability) {
    case Capability::SoundPlayback:
        return QStringLiteral("dq480-playback");
    case Capability::AudioCodecs:
        return QStringLiteral("dq480-codecs");
    case Capability::TestToneEncoder:
        return QStringLiteral("dq480-testtone");
    case Capability::Printing:
        return QStringLiteral("dq480-print");
    }
    return {};
}

QString capabilityTitle(Capability capability)
{
    switch (capability) {
    case Capability::SoundPlayback:
        return QCoreApplication::translate("CapabilityPlugin", "Sound playback");
    case Capability::AudioCodecs:
        return QCoreApplication::translate("CapabilityPlugin", "Sound file conversion");
    case Capability::TestToneEncoder:
        return QCoreApplication::translate("CapabilityPlugin", "The test-tone encoder");
    case Capability::Printing:
        return QCoreApplication::translate("CapabilityPlugin", "Printing");
    }
    return {};
}

namespace {

// The folders searched for plugins, in order.
QStringList capabilityFolders()
{
    const QString programFolder = QCoreApplication::applicationDirPath();
    QStringList folders;
    // A folder of one's own first, for a program run from elsewhere (tests, a portable copy).
    const QString chosen = qEnvironmentVariable("DQ480_PLUGINS");
    if (!chosen.isEmpty())
        folders << chosen;
    // Beside the program in the build folder and on Windows; below the library folder once installed.
    folders << programFolder
            << QDir::cleanPath(programFolder + QStringLiteral("/" DQ480_INSTALLED_PLUGIN_FOLDER));
    folders.removeDuplicates();
    return folders;
}

// Searches the plugin folders; the root object, or null with `error`.
QObject *findAndLoad(Capability capability, QString &error)
{
    const QString name = capabilityFileName(capability);
    const QStringList folders = capabilityFolders();
    for (const QString &folder : folders) {
        QPluginLoader loader(QDir(folder).filePath(name));
        if (loader.fileName().isEmpty())
            continue;
        if (QObject *root = loader.instance())
            return root;
        error = QCoreApplication::translate("CapabilityPlugin",
                                            "%1 is not installed: %2 is there but does not load; "
                                            "reinstall the program.")
                    .arg(capabilityTitle(capability), QDir::toNativeSeparators(loader.fileName()));
        return nullptr;
    }
    error = QCoreApplication::translate("CapabilityPlugin", "%1 is not installed: %2 is missing from %3.")
                .arg(capabilityTitle(capability), name, QDir::toNativeSeparators(folders.constLast()));
    return nullptr;
}

} // namespace

QObject *loadCapability(Capability capability, QString &error)
{
    // A loaded plugin belongs to the process, as Qt keeps its library until the process ends, so
    // its root is kept here too and later uses search no folder. A missing one is searched for
    // again at each use, so that it is named each time and found once it is installed. Imports
    // reach here from worker threads.
    static std::atomic<QObject *> roots[int(Capability::Printing) + 1] {};
    std::atomic<QObject *> &root = roots[int(capability)];
    if (QObject *kept = root.load(std::memory_order_acquire))
        return kept;
    QObject *loaded = findAndLoad(capability, error);
    if (loaded)
        root.store(loaded, std::memory_order_release);
    return loaded;
}
