#pragma once

#include "platform/FolderLock.h"

#include <QString>

/// Keeps a second copy of the program off the program folder in use: its work folder is cleared
/// at start-up and must have one owner. The rule is the lock on that folder itself, so copies on
/// folders of their own (two users, each with theirs) both run, two copies on one folder do not,
/// whichever users run them, and a copy that died, however it died, holds nothing any more.
class SingleInstance
{
public:
    /// True when this copy now holds `programFolder` (or already did); false when another copy
    /// runs on it.
    bool acquire(const QString &programFolder);

private:
    FolderLock m_folderLock;
};
