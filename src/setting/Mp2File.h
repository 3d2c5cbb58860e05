#pragma once

#include <QByteArrayView>
#include <QString>

/// True for the first four bytes of an MP2 frame the device plays: MPEG-1 Layer II, 64, 96, 128
/// or 192 kbit/s, 32 or 44.1 kHz, mono.
bool isAcceptedMp2Header(QByteArrayView firstBytes);

/// Reads the file's first four bytes and judges them; a missing or short file, or anything but a
/// regular file, is refused.
bool IsValidMp2File(const QString &path);
