#pragma once

// Starting and waiting for the system's format command, without Qt.

#include <string>

// Wide strings throughout: a folder or label outside the ANSI code page, or read in it and taken
// for UTF-8, would reach the format command garbled.

/// The Windows system directory (GetSystemDirectory, 256 characters, cut at the first NUL).
std::wstring winSystemDirectory();

/// The volume label of a drive ("E:"), empty when it has none.
std::wstring winVolumeLabel(const std::wstring &drive);

/// The code page the format command reads its redirected answers in: the console's, which is the
/// OEM code page (437 or 850 on a western PC, where the ANSI one is 1252).
unsigned winConsoleCodePage();

/// Runs a command line hidden (no console window). The process, or null when it did not start,
/// with `reason` in the system's words.
void *winStartHidden(const std::wstring &commandLine, std::wstring &reason);

/// Waits up to `milliseconds` for the process; true when it has ended.
bool winProcessEnded(void *process, unsigned milliseconds);

void winCloseProcess(void *process);
