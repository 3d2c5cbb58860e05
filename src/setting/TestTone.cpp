#include "setting/TestTone.h"

#include "setting/PathText.h"
#include "setting/SettingFileIO.h"
#include "setting/TestToneEncoder.h"

#include <QFileInfo>

QString testTonePath(const QString &appPath)
{
    return joinPath(appPath, QStringLiteral("SIN1KHZ.MP2"));
}

bool ensureTestTone(const QString &appPath, QString &error)
{
    const QString path = testTonePath(appPath);
    if (QFileInfo::exists(path))
        return true;
    const QByteArray tone = encodeTestTone(error);
    return !tone.isEmpty() && writeFileAtomically(path, tone, error);
}
