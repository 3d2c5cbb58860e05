#pragma once

#include <QtGlobal>

/// True when the program is built for Windows: paths with "\" and drive letters, setting files in
/// the system's ANSI code page, the system's format command.
constexpr bool runsOnWindows()
{
#ifdef Q_OS_WIN
    return true;
#else
    return false;
#endif
}
