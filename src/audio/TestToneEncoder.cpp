#include "setting/TestToneEncoder.h"

#include "audio/Mp2Encode.h"

#include <cmath>
#include <vector>

namespace {

constexpr int Seconds = 3;
constexpr double Frequency = 1000.0;
constexpr double Peak = 16000.0; // of 32768, full scale

} // namespace

QByteArray encodeTestTone(QString &error)
{
    // The tone is encoded as every sentence of standard quality is: 32 kHz, 64 kbit/s, mono.
    constexpr Mp2Quality Quality = Mp2Quality::Standard;
    const int rate = mp2SampleRate(Quality);
    constexpr double TwoPi = 6.283185307179586;
    std::vector<float> samples(size_t(rate) * Seconds);
    for (size_t i = 0; i < samples.size(); ++i)
        samples[i] = float(Peak * std::sin(TwoPi * Frequency * double(i) / rate) / 32768.0);
    return encodeMp2(samples, Quality, error);
}
