#include "audio/GrowingWav.h"

#include "audio/WavHeader.h"

#include <QCoreApplication>
#include <QDir>
#include <QtEndian>

namespace {

// A write that meets a full disk is cut short without a reason; writing the rest makes the system
// say it ("No space left on device").
bool writeWhole(QFile &file, QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const qint64 written = file.write(bytes.data(), bytes.size());
        if (written <= 0)
            return false;
        bytes = bytes.sliced(written);
    }
    return true;
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
    const QByteArray header = wavHeader(sampleRate, WavSamples::Float32, 0);
    return writeWhole(m_file, header) || fail(error);
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
    if (!m_file.seek(WavHeaderBytes + m_frames * qint64(sizeof(float))) || !writeWhole(m_file, bytes))
        return fail(error);
    // The sizes are counted only once the samples are there: a write cut short leaves the header
    // on the sound before it.
    const QByteArray header = wavHeader(m_rate, WavSamples::Float32, m_frames + count);
    if (!m_file.seek(0) || !writeWhole(m_file, header))
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
