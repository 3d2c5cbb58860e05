#pragma once

#include <QByteArrayView>

#include <optional>

/// What the frame headers of an MPEG audio stream (MP3, MP2) tell about its length, read without
/// decoding: each header gives its frame's length, so a file that ends inside a frame shows it,
/// and the Xing, Info or VBRI header that encoders put first says how many frames they wrote.
struct MpegStreamLength
{
    qint64 audioFrames = 0; // whole frames of sound, one after another from the first
    int samplesPerFrame = 0; // 0 when no frame was found
    bool lastFrameCut = false; // a frame's header promises more bytes than the file has left
    std::optional<qint64> declaredFrames; // the encoder's count, when it wrote one
    qint64 audioSamples() const { return audioFrames * samplesPerFrame; }
    /// The file ends before the stream does.
    bool truncated() const { return lastFrameCut || (declaredFrames && audioFrames < *declaredFrames); }
};

/// Walks the frames of the stream in `bytes` (after an ID3v2 tag, if any) until the file ends or
/// something other than a frame of the same stream follows (an ID3v1 or APE tag).
MpegStreamLength measureMpegStream(QByteArrayView bytes);
