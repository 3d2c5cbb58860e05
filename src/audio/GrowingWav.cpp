#include "audio/GrowingWav.h"

#include <QCoreApplication>
#include <QDir>
#include <QtEndian>

#include <cstring>

namespace {

constexpr qint64 HeaderBytes = 44;
constexpr qint64 RiffSizeAt = 4;
constexpr qint64 DataSizeAt = 40;

QByteArray floatWavHeader(int rate)
{
    QByteArray header(HeaderBytes, '\0');
    char *h = header.data();
    std::memcpy(h, "RIFF", 4);
    qToLittleEndian<quint32>(HeaderBytes - 8, h + RiffSizeAt);
    std::memcpy(h + 8, "WAVEfmt ", 8);
    qToLittleEndian<quint32>(16, h + 16);
    qToLittleEndian<quint16>(3, h + 20); // IEEE float
    qToLittleEndian<quint16>(1, h + 22); // mono
    qToLittleEndian<quint32>(quint32(rate), h + 24);
    qToLittleEndian<quint32>(quint32(rate) * 4, h + 28);
    qToLittleEndian<quint16>(4, h + 32);
    qToLittleEndian<quint16>(32, h + 34);
    std::memcpy(h + 36, "data", 4);
    return header;
}

} // namespace

bool GrowingWav::fail(QString &error)
{
    error = QCoreApplication::translate("FileReplacement", "Cannot write %1: %2")
                .arg(QDir::toNativeSeparators(m_file.fileName()), m_file.errorString());
    return false;
}

bool GrowingWav::open(const QString &path, int sampleRate, QString &error)
{
    m_file.close();
    m_file.setFileName(path);
    m_rate = sampleRate;
    m_frames = 0;
    // Unbuffered: each write reaches the system at once, so that a full disk is told at the append
    // that meets it.
    if (!m_file.open(QIODevice::ReadWrite | QIODevice::Truncate | QIODevice::Unbuffered))
        return fail(error);
    const QByteArray header = floatWavHeader(sampleRate);
    return m_file.write(header) == header.size() || fail(error);
}

bool GrowingWav::append(const float *samples, qint64 count, QString &error)
{
    if (count <= 0)
        return true;
    if (!m_file.isOpen()) {
        error = QCoreApplication::translate("FileReplacement", "Cannot write %1: the file is not open.")
                    .arg(QDir::toNativeSeparators(m_file.fileName()));
        return false;
    }
    QByteArray bytes(count * qint64(sizeof(float)), Qt::Uninitialized);
    for (qint64 i = 0; i < count; ++i)
        qToLittleEndian(samples[i], bytes.data() + i * qint64(sizeof(float)));
    if (!m_file.seek(HeaderBytes + m_frames * qint64(sizeof(float))) || m_file.write(bytes) != bytes.size())
        return fail(error);
    // The sizes are counted only once the samples are there: a write cut short leaves the header
    // on the sound before it.
    const quint32 dataBytes = quint32((m_frames + count) * qint64(sizeof(float)));
    char size[4];
    qToLittleEndian(dataBytes, size);
    if (!m_file.seek(DataSizeAt) || m_file.write(size, 4) != 4)
        return fail(error);
    qToLittleEndian(quint32(HeaderBytes - 8 + dataBytes), size);
    if (!m_file.seek(RiffSizeAt) || m_file.write(size, 4) != 4)
        return fail(error);
    m_frames += count;
    return true;
}

bool GrowingWav::close(QString &error)
{
    if (!m_file.isOpen())
        return true;
    const bool flushed = m_file.flush();
    m_file.close();
    return (flushed && m_file.error() == QFileDevice::NoError) || fail(error);
}
