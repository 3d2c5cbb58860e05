#pragma once

#include <QString>

#include <cstdint>

/// A lock on a folder that every process of the machine sees, whichever user runs it, held while
/// the object lives and let go by the system when the process ends, however it ends. Nothing is
/// written into the folder, so a folder that cannot be written can be locked too.
class FolderLock
{
public:
    enum class Outcome {
        Taken, // this object holds it now (or already did)
        HeldElsewhere, // another process holds it
        Unavailable, // the folder cannot be opened or its file system has no locks
    };

    FolderLock() = default;
    ~FolderLock();
    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;

    Outcome take(const QString &folder);

private:
    std::intptr_t m_handle = -1;
};
