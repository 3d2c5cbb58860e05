#pragma once

#include <QString>

/// The program's own folder (AppPath): DQ480_HOME when set, else on Windows the executable's folder,
/// else the per-user data folder. Created when missing. Needs the application object to exist.
QString resolveProgramFolder();
