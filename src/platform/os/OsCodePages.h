#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

// Code pages by name through the system's own converter. Qt converts only Unicode, Latin-1 and
// the system's code page without ICU, which the Windows build has not; Windows itself converts
// every code page it has installed.

/// The Windows code page a name stands for ("CP932", "Shift_JIS", "windows-1252"), when the
/// system can convert it; 0 for any other name, and always 0 outside Windows.
int systemCodePageNamed(const QString &name);

/// Text into the code page's bytes; a character the code page lacks becomes its stand-in ("?").
QByteArray encodeInSystemCodePage(int codePage, QStringView text);

QString decodeInSystemCodePage(int codePage, QByteArrayView bytes);
