#include "audio/Mp2Encode.h"

#include <QCoreApplication>

#include <twolame.h>

#include <algorithm>
#include <cmath>
#include <memory>

int mp2SampleRate(Mp2Quality quality)
{
    return quality == Mp2Quality::High ? 44100 : 32000;
}

int mp2BitrateKbps(Mp2Quality quality)
{
    return quality == Mp2Quality::High ? 128 : 64;
}

namespace {

struct EncoderCloser
{
    void operator()(twolame_options *encoder) const { twolame_close(&encoder); }
};

} // namespace

QByteArray encodeMp2(const std::vector<float> &mono, Mp2Quality quality, QString &error,
                     const WorkProgress &progress)
{
    std::unique_ptr<twolame_options, EncoderCloser> encoder(twolame_init());
    if (!encoder) {
        error = QCoreApplication::translate("AudioImport", "the MP2 encoder could not start.");
        return {};
    }
    twolame_set_num_channels(encoder.get(), 1);
    twolame_set_mode(encoder.get(), TWOLAME_MONO);
    twolame_set_in_samplerate(encoder.get(), mp2SampleRate(quality));
    twolame_set_out_samplerate(encoder.get(), mp2SampleRate(quality));
    twolame_set_bitrate(encoder.get(), mp2BitrateKbps(quality));
    if (twolame_init_params(encoder.get()) != 0) {
        error = QCoreApplication::translate("AudioImport", "the MP2 encoder refused its settings.");
        return {};
    }
    constexpr int Block = Mp2FrameSamples * 16;
    std::vector<short> pcm(Block);
    // A Layer II frame at 192 kbit/s and 32 kHz is 864 bytes; room for every frame of a block.
    std::vector<unsigned char> frames(size_t(Block) + 16384);
    QByteArray out;
    out.reserve(qsizetype(double(mono.size()) / mp2SampleRate(quality) * mp2BitrateKbps(quality) * 125)
                + 4096);
    for (size_t start = 0; start < mono.size(); start += Block) {
        const size_t count = std::min(size_t(Block), mono.size() - start);
        for (size_t i = 0; i < count; ++i)
            pcm[i] = short(std::lround(std::clamp(mono[start + i], -1.0f, 32767.0f / 32768.0f) * 32768.0f));
        const int written = twolame_encode_buffer(encoder.get(), pcm.data(), nullptr, int(count),
                                                  frames.data(), int(frames.size()));
        if (written < 0) {
            error = QCoreApplication::translate("AudioImport", "the MP2 encoder failed.");
            return {};
        }
        out.append(reinterpret_cast<const char *>(frames.data()), written);
        if (progress && !progress(double(start + count) / double(mono.size()))) {
            error = QCoreApplication::translate("AudioImport", "the import was cancelled.");
            return {};
        }
    }
    const int flushed = twolame_encode_flush(encoder.get(), frames.data(), int(frames.size()));
    if (flushed < 0) {
        error = QCoreApplication::translate("AudioImport", "the MP2 encoder failed.");
        return {};
    }
    out.append(reinterpret_cast<const char *>(frames.data()), flushed);
    return out;
}
