#include "SystemInfoProgram.h"

#include "OsSystemInfo.h"

QString findSystemInformationProgram(const QStringList &searchPaths)
{
    return systemInformationProgram(searchPaths);
}
