#pragma once

// Recordings made at test time (no audio kept in the repository), written through libsndfile.

#include <QFile>
#include <QString>

#include <cmath>
#include <random>
#include <vector>

#include <sndfile.h>

namespace AudioFixtures {

struct Sound
{
    int rate = 48000;
    int channels = 2;
    std::vector<float> samples;
};

inline Sound sine(double hz, double seconds, int rate, int channels, double amplitude)
{
    Sound sound {rate, channels, {}};
    const size_t frames = size_t(seconds * rate);
    sound.samples.resize(frames * size_t(channels));
    for (size_t i = 0; i < frames; ++i) {
        const float value = float(amplitude * std::sin(6.283185307179586 * hz * double(i) / rate));
        for (int c = 0; c < channels; ++c)
            sound.samples[i * size_t(channels) + size_t(c)] = value;
    }
    return sound;
}

/// Speech-like: a gliding buzz in syllables of 0.2 s, pauses between words, a little breath noise.
inline Sound speechLike(double seconds, int rate, int channels)
{
    Sound sound {rate, channels, {}};
    const size_t frames = size_t(seconds * rate);
    sound.samples.resize(frames * size_t(channels));
    std::mt19937 random(7);
    std::normal_distribution<float> noise(0.0f, 0.02f);
    double phase = 0.0;
    for (size_t i = 0; i < frames; ++i) {
        const double t = double(i) / rate;
        const double pitch = 120.0 + 30.0 * std::sin(6.283185307179586 * 0.7 * t);
        phase += 6.283185307179586 * pitch / rate;
        const double syllable = std::fmod(t, 0.2) / 0.2;
        const bool pause = std::fmod(t, 1.3) > 1.05;
        const double envelope = pause ? 0.0 : std::sin(3.141592653589793 * syllable);
        double voice = 0.0;
        for (int harmonic = 1; harmonic <= 12; ++harmonic)
            voice += std::sin(phase * harmonic) / harmonic;
        const float value = float(0.15 * envelope * voice);
        for (int c = 0; c < channels; ++c)
            sound.samples[i * size_t(channels) + size_t(c)]
                = value * (c == 0 ? 1.0f : 0.8f) + noise(random) * float(envelope);
    }
    return sound;
}

/// Speech with hard consonants: `speechLike` with a click of a few milliseconds, near full scale,
/// at the start of every syllable, as a close microphone catches "t" and "k". Its peaks stand
/// about 20 dB over its loudness, where a steady voice stands 12.
inline Sound speechWithPlosives(double seconds, int rate, int channels)
{
    Sound sound = speechLike(seconds, rate, channels);
    std::mt19937 random(11);
    std::uniform_real_distribution<float> noise(-1.0f, 1.0f);
    const size_t click = size_t(rate) * 4 / 1000;
    for (size_t start = 0; start + click < sound.samples.size() / size_t(channels);
         start += size_t(rate) / 5) {
        for (size_t i = 0; i < click; ++i) {
            const float value = 0.7f * noise(random) * float(click - i) / float(click);
            for (int c = 0; c < channels; ++c)
                sound.samples[(start + i) * size_t(channels) + size_t(c)] += value;
        }
    }
    return sound;
}

/// Writes a sound in a libsndfile format (SF_FORMAT_WAV | SF_FORMAT_PCM_16 and so on).
inline bool write(const QString &path, const Sound &sound, int format)
{
    SF_INFO info {};
    info.samplerate = sound.rate;
    info.channels = sound.channels;
    info.format = format;
    SNDFILE *file = sf_open(QFile::encodeName(path).constData(), SFM_WRITE, &info);
    if (!file)
        return false;
    const sf_count_t frames = sf_count_t(sound.samples.size()) / sound.channels;
    const bool ok = sf_writef_float(file, sound.samples.data(), frames) == frames;
    return sf_close(file) == 0 && ok;
}

constexpr int Wav16 = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
constexpr int Flac16 = SF_FORMAT_FLAC | SF_FORMAT_PCM_16;
constexpr int Mp3 = SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III; // with the encoder's frame count first

} // namespace AudioFixtures
