// The tool built without a sound system: the sound can still be written to a file.

#include "cli/ProgramSpeaker.h"

bool playOnSpeaker(ProgramSound &, QTextStream &, QString &error)
{
    error = QStringLiteral("This dq480-cli was built without a sound output: write the sound with "
                           "--render FILE.wav and play that file.");
    return false;
}
