#include "capabilities/CapabilityPlugin.h"

#include <QCoreApplication>
#include <QDir>
#include <QPluginLoader>

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

} // namespace

QObject *loadCapability(Capability capability, QString &error)
{
    const QString name = capabilityFileName(capability);
    const QStringList folders = capabilityFolders();
    for (const QString &folder : folders) {
        // Qt keeps a plugin loaded once it is, so a later loader finds the same object at once.
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
