#pragma once

#include <QString>

/// The name of the file that marks an unpacked portable copy of the Windows program.
inline constexpr char PortableMarkerName[] = "PORTABLE.txt";

/// Where the program keeps its own folder (work folder, project folders, test tone) when nothing
/// else is chosen. On Windows a portable copy (the marker file beside the .exe) keeps it next to
/// the .exe, as the program always did; an installed copy lives under Program Files, which an
/// operator cannot write, so it uses the user's own local data folder. Elsewhere the user's data
/// folder. Needs the application object to exist.
QString defaultProgramFolder();
