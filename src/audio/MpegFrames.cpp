#include "audio/MpegFrames.h"

#include <algorithm>
#include <array>

namespace {

struct FrameHeader
{
    int version = 0; // 1 MPEG-1, 2 MPEG-2, 25 MPEG-2.5
    int layer = 0;
    int sampleRate = 0;
    bool mono = false;
    qint64 length = 0; // bytes, header included
    int samples = 0;

    bool sameStream(const FrameHeader &other) const
    {
        return version == other.version && layer == other.layer && sampleRate == other.sampleRate;
    }
};

quint32 bigEndian32(QByteArrayView bytes, qsizetype at)
{
    quint32 value = 0;
    for (qsizetype i = at; i < at + 4; ++i)
        value = (value << 8) | static_cast<uchar>(bytes[i]);
    return value;
}

// kbit/s by version group (MPEG-1, MPEG-2 and 2.5), layer and index; 0 is free format.
constexpr std::array<std::array<std::array<int, 15>, 3>, 2> Bitrates {{
    {{{0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448},
      {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384},
      {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320}}},
    {{{0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256},
      {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160},
      {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160}}},
}};

// The header at `at`, or none when there is no frame of a length the header tells (free format,
// reserved values).
std::optional<FrameHeader> headerAt(QByteArrayView bytes, qsizetype at)
{
    if (at + 4 > bytes.size())
        return std::nullopt;
    const quint32 word = bigEndian32(bytes, at);
    if ((word & 0xFFE00000u) != 0xFFE00000u)
        return std::nullopt;
    const int versionBits = (word >> 19) & 3;
    const int layerBits = (word >> 17) & 3;
    const int bitrateIndex = (word >> 12) & 15;
    const int rateIndex = (word >> 10) & 3;
    if (versionBits == 1 || layerBits == 0 || bitrateIndex == 0 || bitrateIndex == 15 || rateIndex == 3)
        return std::nullopt;
    FrameHeader header;
    header.version = versionBits == 3 ? 1 : versionBits == 2 ? 2 : 25;
    header.layer = 4 - layerBits;
    static constexpr std::array<int, 3> Mpeg1Rates {44100, 48000, 32000};
    header.sampleRate = Mpeg1Rates[rateIndex] / (header.version == 1 ? 1 : header.version == 2 ? 2 : 4);
    header.mono = ((word >> 6) & 3) == 3;
    const int padding = (word >> 9) & 1;
    const qint64 bitrate
        = qint64(Bitrates[header.version == 1 ? 0 : 1][header.layer - 1][bitrateIndex]) * 1000;
    if (header.layer == 1) {
        header.samples = 384;
        header.length = (12 * bitrate / header.sampleRate + padding) * 4;
    } else {
        const bool halfFrame = header.layer == 3 && header.version != 1;
        header.samples = halfFrame ? 576 : 1152;
        header.length = (halfFrame ? 72 : 144) * bitrate / header.sampleRate + padding;
    }
    return header;
}

qsizetype afterId3v2Tag(QByteArrayView bytes)
{
    if (bytes.size() < 10 || !bytes.startsWith("ID3"))
        return 0;
    qint64 size = 0;
    for (int i = 6; i < 10; ++i)
        size = (size << 7) | (static_cast<uchar>(bytes[i]) & 0x7F);
    const bool footer = static_cast<uchar>(bytes[5]) & 0x10;
    return qsizetype(std::min<qint64>(bytes.size(), 10 + size + (footer ? 10 : 0)));
}

// A header is taken as the stream's first when the frame after it starts with a header of the
// same stream, or when it is the file's only frame.
std::optional<qsizetype> firstFrame(QByteArrayView bytes, qsizetype from)
{
    constexpr qsizetype SearchLimit = 64 * 1024;
    for (qsizetype at = from; at < std::min(bytes.size(), from + SearchLimit); ++at) {
        const std::optional<FrameHeader> header = headerAt(bytes, at);
        if (!header)
            continue;
        const qsizetype next = at + header->length;
        const std::optional<FrameHeader> following = headerAt(bytes, next);
        if (next == bytes.size() || (following && following->sameStream(*header)))
            return at;
    }
    return std::nullopt;
}

// The frame count of a Xing or Info header (after the side information) or of a VBRI header (at
// a fixed place) in the first frame.
std::optional<qint64> declaredFrameCount(QByteArrayView bytes, qsizetype at, const FrameHeader &header)
{
    const QByteArrayView frame = bytes.sliced(at, std::min<qsizetype>(header.length, bytes.size() - at));
    const qsizetype sideInfo = header.version == 1 ? (header.mono ? 17 : 32) : (header.mono ? 9 : 17);
    const qsizetype xing = 4 + sideInfo;
    if (frame.size() >= xing + 12
        && (frame.sliced(xing, 4) == QByteArrayView("Xing")
            || frame.sliced(xing, 4) == QByteArrayView("Info"))
        && (bigEndian32(frame, xing + 4) & 1))
        return bigEndian32(frame, xing + 8);
    constexpr qsizetype Vbri = 36;
    if (frame.size() >= Vbri + 18 && frame.sliced(Vbri, 4) == QByteArrayView("VBRI"))
        return bigEndian32(frame, Vbri + 14);
    return std::nullopt;
}

} // namespace

MpegStreamLength measureMpegStream(QByteArrayView bytes)
{
    MpegStreamLength length;
    const std::optional<qsizetype> start = firstFrame(bytes, afterId3v2Tag(bytes));
    if (!start)
        return length;
    const FrameHeader first = *headerAt(bytes, *start);
    length.samplesPerFrame = first.samples;
    length.declaredFrames = declaredFrameCount(bytes, *start, first);
    // The frame that carries the count holds no sound.
    qsizetype at = length.declaredFrames ? *start + first.length : *start;
    for (;;) {
        const std::optional<FrameHeader> header = headerAt(bytes, at);
        // A file that ends inside the next header is cut short as well.
        if (!header && at < bytes.size() && bytes.size() - at < 4 && static_cast<uchar>(bytes[at]) == 0xFF)
            length.lastFrameCut = true;
        if (!header || !header->sameStream(first))
            break;
        if (at + header->length > bytes.size()) {
            length.lastFrameCut = true;
            break;
        }
        ++length.audioFrames;
        at += header->length;
    }
    return length;
}
