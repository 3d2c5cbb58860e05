#pragma once

#include <QString>

/// The program's own folder (AppPath): DQ480_HOME when set, else on Windows the executable's folder
/// for a portable copy and the user's local data folder for an installed one, else the per-user
/// data folder. Created when missing. Needs the application object to exist.
QString resolveProgramFolder();
