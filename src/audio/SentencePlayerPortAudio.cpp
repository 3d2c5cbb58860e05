// Sentence playback through PortAudio: WASAPI or MME on Windows, ALSA or PulseAudio elsewhere.
// PortAudio starts only when a sentence plays (or the dialog asks for an output), so the program
// itself starts without loading a sound system.

#include "audio/SentencePlayer.h"

#include "audio/AudioDecode.h"

#include <QCoreApplication>

#include <algorithm>
#include <portaudio.h>

struct SentencePlayer::Output
{
    std::vector<float> samples;
    std::size_t channels = 1;
    std::size_t position = 0; // touched only by PortAudio's thread once the stream runs
    PaStream *stream = nullptr;

    // Runs on PortAudio's thread: hands out the next samples, then silence and the end.
    static int feed(const void *, void *out, unsigned long frames, const PaStreamCallbackTimeInfo *,
                    PaStreamCallbackFlags, void *data)
    {
        auto &output = *static_cast<Output *>(data);
        auto *samples = static_cast<float *>(out);
        const std::size_t wanted = frames * output.channels;
        const std::size_t given = std::min(wanted, output.samples.size() - output.position);
        std::copy_n(output.samples.data() + output.position, given, samples);
        std::fill(samples + given, samples + wanted, 0.0f);
        output.position += given;
        return given < wanted ? paComplete : paContinue;
    }
};

void SentencePlayer::OutputEnd::operator()(Output *output) const
{
    if (output->stream) {
        Pa_AbortStream(output->stream);
        Pa_CloseStream(output->stream);
    }
    Pa_Terminate();
    delete output;
}

bool SentencePlayer::hasOutput()
{
    if (Pa_Initialize() != paNoError)
        return false;
    const bool found = Pa_GetDefaultOutputDevice() != paNoDevice;
    Pa_Terminate();
    return found;
}

SentencePlayer::OutputHandle SentencePlayer::startOutput(const DecodedAudio &audio, QString &reason)
{
    if (Pa_Initialize() != paNoError) {
        reason = QCoreApplication::translate("SentencePlayer", "the PC's sound system does not start.");
        return nullptr;
    }
    // From here on, the handle's end terminates PortAudio again, whatever happens.
    OutputHandle output(new Output);
    output->samples = audio.samples;
    output->channels = std::size_t(std::max(audio.channels, 1));
    if (Pa_GetDefaultOutputDevice() == paNoDevice) {
        reason = QCoreApplication::translate("SentencePlayer", "this PC has no audio output.");
        return nullptr;
    }
    const PaError opened
        = Pa_OpenDefaultStream(&output->stream, 0, audio.channels, paFloat32, audio.sampleRate,
                               paFramesPerBufferUnspecified, &Output::feed, output.get());
    if (opened != paNoError) {
        output->stream = nullptr;
        reason = opened == paInvalidSampleRate
            ? QCoreApplication::translate("SentencePlayer", "the PC's audio output does not take %1 Hz.")
                  .arg(audio.sampleRate)
            : QCoreApplication::translate("SentencePlayer", "the PC's audio output cannot be opened.");
        return nullptr;
    }
    if (Pa_StartStream(output->stream) != paNoError) {
        reason = QCoreApplication::translate("SentencePlayer", "the PC's audio output cannot be opened.");
        return nullptr;
    }
    return output;
}
