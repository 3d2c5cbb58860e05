#include "widgets/SystemInfoProgram.h"

#include "platform/os/OsSystemInfo.h"

QString findSystemInformationProgram(const QStringList &searchPaths)
{
    return systemInformationProgram(searchPaths);
}
