#pragma once

// Starting and waiting for the system's format command, without Qt.

#include <string>

/// The Windows system directory (GetSystemDirectoryA, 256 characters, cut at the first NUL).
std::string winSystemDirectory();

/// The volume label of a drive ("E:"), empty when it has none.
std::string winVolumeLabel(const std::string &drive);

/// Runs a command line hidden (no console window). The process, or null when it did not start.
void *winStartHidden(const std::string &commandLine);

/// Waits up to `milliseconds` for the process; true when it has ended.
bool winProcessEnded(void *process, unsigned milliseconds);

void winCloseProcess(void *process);
