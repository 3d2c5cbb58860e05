#pragma once

#include <QLockFile>
#include <QString>

/// Keeps a second copy of the program from running in the same user session. The lock file holds
/// the owner's process id, so a lock left by a crashed copy is taken over rather than blocking.
class SingleInstance
{
public:
    /// The lock in the session's runtime folder (or the temporary folder where there is none).
    SingleInstance();
    explicit SingleInstance(const QString &lockPath);

    /// True when this copy now holds the lock (or already did); false when another copy runs.
    bool acquire();

    static QString defaultLockPath();

private:
    QLockFile m_lock;
};
