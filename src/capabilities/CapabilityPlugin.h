#pragma once

#include <QCoreApplication>
#include <QObject>
#include <QString>

/// The optional parts of the program that are loaded when the operator first uses them, so that
/// one who only edits a project pays nothing for them. Each is a Qt plugin in the program's
/// plugin folder (next to the program in the build folder and on Windows).
enum class Capability {
    SoundPlayback, // Qt Multimedia or PortAudio
    AudioCodecs, // decoding, measuring and encoding recordings
    TestToneEncoder, // the MP2 encoder that makes the test tone
    Printing, // Qt Print Support and the print setting dialog
};

/// The plugin's file name without prefix or suffix ("dq480-playback").
QString capabilityFileName(Capability capability);

/// The capability in the operator's words ("Sound playback").
QString capabilityTitle(Capability capability);

/// The plugin's root object, loaded on the first call and kept for the process; null with
/// `error` saying, in plain words, which capability is not installed and why.
QObject *loadCapability(Capability capability, QString &error);

/// The plugin's implementation of `Interface`, or null with `error`.
template<class Interface>
Interface *capability(Capability which, QString &error)
{
    QObject *root = loadCapability(which, error);
    if (!root)
        return nullptr;
    auto *found = qobject_cast<Interface *>(root);
    if (!found)
        error = QCoreApplication::translate(
                    "CapabilityPlugin", "%1 is not installed: %2 is from another version of this program.")
                    .arg(capabilityTitle(which), capabilityFileName(which));
    return found;
}
