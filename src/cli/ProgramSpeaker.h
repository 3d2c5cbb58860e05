#pragma once

#include <QString>
#include <QTextStream>

class ProgramSound;

/// Plays a program's sound on the PC's default audio output to its end (or until the tool is
/// stopped), printing each step as it starts. False with `error` when there is no output or it
/// fails; the reason says what to do instead.
bool playOnSpeaker(ProgramSound &sound, QTextStream &out, QString &error);
