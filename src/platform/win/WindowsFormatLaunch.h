#pragma once

#include "platform/DriveInfo.h"

#include <QString>

/// What the card format runs on Windows, worked out before anything runs: the system's format
/// command and the answers it reads.
struct WindowsFormatLaunch
{
    QString program; // the command processor the command line starts
    QString commandLine;
    QString answerFile;
    QString answers; // written to answerFile first; empty for a removable drive, whose file is kept in place
};

/// The launch for `drive`, from the system directory and, for a fixed drive, its volume label.
WindowsFormatLaunch windowsFormatLaunch(const DriveInfo &drive);

/// Writes the answers a fixed drive's format reads; false with `error` naming the
/// file and the reason when it cannot.
bool writeFormatAnswers(const WindowsFormatLaunch &launch, QString &error);
