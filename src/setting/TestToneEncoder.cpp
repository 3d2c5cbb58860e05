#include "setting/TestToneEncoder.h"

#include <QCoreApplication>

#include <cmath>
#include <vector>

#include <twolame.h>

namespace {

constexpr int SampleRate = 32000;
constexpr int Seconds = 3;
constexpr int BitrateKbps = 64;

} // namespace

QByteArray encodeTestTone(QString &error)
{
    twolame_options *encoder = twolame_init();
    if (!encoder) {
        error = QCoreApplication::translate("TestTone", "The MP2 encoder could not start.");
        return {};
    }
    twolame_set_num_channels(encoder, 1);
    twolame_set_mode(encoder, TWOLAME_MONO);
    twolame_set_in_samplerate(encoder, SampleRate);
    twolame_set_out_samplerate(encoder, SampleRate);
    twolame_set_bitrate(encoder, BitrateKbps);
    if (twolame_init_params(encoder) != 0) {
        twolame_close(&encoder);
        error = QCoreApplication::translate("TestTone", "The MP2 encoder refused the test tone's settings.");
        return {};
    }
    std::vector<short> samples(SampleRate * Seconds);
    constexpr double TwoPi = 6.283185307179586;
    for (size_t i = 0; i < samples.size(); ++i)
        samples[i]
            = static_cast<short>(std::lround(16000.0 * std::sin(TwoPi * 1000.0 * double(i) / SampleRate)));
    std::vector<unsigned char> out(samples.size() * 2 + 16384);
    const int written
        = twolame_encode_buffer(encoder, samples.data(), nullptr, static_cast<int>(samples.size()),
                                out.data(), static_cast<int>(out.size()));
    const int flushed = written < 0
        ? -1
        : twolame_encode_flush(encoder, out.data() + written, static_cast<int>(out.size()) - written);
    twolame_close(&encoder);
    if (written < 0 || flushed < 0) {
        error = QCoreApplication::translate("TestTone", "The MP2 encoder failed on the test tone.");
        return {};
    }
    return QByteArray(reinterpret_cast<const char *>(out.data()), written + flushed);
}
