#pragma once

#include "platform/FolderLock.h"

#include <QLockFile>
#include <QString>

/// Keeps a second copy of the program from running in the same user session, or on the same
/// program folder from another session (another user's, with another runtime folder): the
/// folder's work files are cleared at start-up and must have one owner. The session's lock file
/// holds the owner's process id, so a lock left by a crashed copy is taken over rather than
/// blocking; the folder's lock goes with the process that held it.
class SingleInstance
{
public:
    /// The lock in the session's runtime folder (or the temporary folder where there is none).
    SingleInstance();
    explicit SingleInstance(const QString &lockPath);

    /// True when this copy now holds the locks (or already did); false when another copy runs in
    /// this session or on `programFolder`.
    bool acquire(const QString &programFolder = QString());

    static QString defaultLockPath();

private:
    QLockFile m_lock;
    FolderLock m_folderLock;
};
