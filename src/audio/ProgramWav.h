#pragma once

#include <QString>

class ProgramSound;

/// Writes the whole of a program's sound (which must end) to `path` as a 16-bit mono WAV file,
/// through a file replacement: the file is either the old one or the whole new one. False with
/// `error` naming the file and the reason.
bool writeProgramWav(ProgramSound &sound, const QString &path, QString &error);
