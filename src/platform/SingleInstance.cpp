#include "platform/SingleInstance.h"

bool SingleInstance::acquire(const QString &programFolder)
{
    // A folder that cannot be locked (a network share without locks) is no reason not to start.
    return m_folderLock.take(programFolder) != FolderLock::Outcome::HeldElsewhere;
}
