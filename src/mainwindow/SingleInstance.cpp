#include "mainwindow/SingleInstance.h"

#include <QDir>
#include <QStandardPaths>

SingleInstance::SingleInstance()
    : SingleInstance(defaultLockPath())
{ }

SingleInstance::SingleInstance(const QString &lockPath)
    : m_lock(lockPath)
{
    // Never treat a live owner's lock as stale by age; only a dead owner frees it.
    m_lock.setStaleLockTime(0);
}

bool SingleInstance::acquire(const QString &programFolder)
{
    if (!m_lock.isLocked() && !m_lock.tryLock(0))
        return false;
    // A folder that cannot be locked (a network share without locks) is no reason not to start.
    if (!programFolder.isEmpty() && m_folderLock.take(programFolder) == FolderLock::Outcome::HeldElsewhere) {
        m_lock.unlock();
        return false;
    }
    return true;
}

QString SingleInstance::defaultLockPath()
{
    QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty())
        folder = QDir::tempPath();
    return QDir(folder).filePath(QStringLiteral("dq480-%1.lock").arg(qEnvironmentVariable("USER")));
}
