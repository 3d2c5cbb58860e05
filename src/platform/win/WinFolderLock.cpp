#include "platform/FolderLock.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>

#include <windows.h>

FolderLock::~FolderLock()
{
    if (m_handle != -1)
        CloseHandle(reinterpret_cast<HANDLE>(m_handle));
}

FolderLock::Outcome FolderLock::take(const QString &folder)
{
    if (m_handle != -1)
        return Outcome::Taken;
    const QString canonical = QFileInfo(folder).canonicalFilePath();
    if (canonical.isEmpty())
        return Outcome::Unavailable;
    // A mutex named after the folder in the namespace all sessions share: another user's copy on
    // the same folder finds it. Paths on Windows ignore case, so the name does too.
    const QByteArray key = QCryptographicHash::hash(QDir::toNativeSeparators(canonical).toLower().toUtf8(),
                                                    QCryptographicHash::Sha1)
                               .toHex();
    const std::wstring name = L"Global\\dq480-folder-" + QString::fromLatin1(key).toStdWString();
    HANDLE mutex = CreateMutexW(nullptr, FALSE, name.c_str());
    const DWORD error = GetLastError();
    if (!mutex)
        return error == ERROR_ACCESS_DENIED ? Outcome::HeldElsewhere : Outcome::Unavailable;
    if (error == ERROR_ALREADY_EXISTS) {
        CloseHandle(mutex);
        return Outcome::HeldElsewhere;
    }
    m_handle = reinterpret_cast<std::intptr_t>(mutex);
    return Outcome::Taken;
}
