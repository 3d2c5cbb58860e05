#pragma once

#include <QString>

/// The program's own folder (AppPath): DQ480_HOME when set, else on Windows the executable's folder
/// for a portable copy and the user's local data folder for an installed one, else the per-user
/// data folder. Created when missing. Needs the application object to exist.
QString resolveProgramFolder();

/// Why the program folder cannot take the files the program keeps in it (the work folder, the
/// project folders, the test tone), in the operator's words; empty when it can. Tried with a file
/// of its own, as permissions alone do not tell (a read-only mount, an administrator's account).
QString programFolderProblem(const QString &folder);
