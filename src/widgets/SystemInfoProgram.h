#pragma once

#include <QString>
#include <QStringList>

/// The system's information program for the about box, as a full path; empty where the system has
/// none. Windows names it in the registry; elsewhere it is one of the desktops' system information
/// tools found on `searchPaths` (the PATH when empty).
QString findSystemInformationProgram(const QStringList &searchPaths = {});
