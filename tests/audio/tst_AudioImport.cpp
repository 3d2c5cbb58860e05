#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include "AudioDecode.h"
#include "AudioFixtures.h"
#include "AudioImport.h"
#include "AudioInfo.h"
#include "Loudness.h"
#include "Mp2File.h"
#include "PeakLimiter.h"
#include "Resample.h"
#include "SentenceName.h"
#include "TestMounts.h"

using namespace AudioFixtures;

namespace {

enum class Source { SineWav48Stereo, SpeechFlac, SpeechMp3, ShortChime, PlosivesWav, Espeak, EspeakWord };

// What an MP2 plays at, measured as `dq480-cli info` measures it: one channel at its own rate.
LoudnessMeasure playedMeasure(const QString &mp2)
{
    DecodedAudio audio;
    QString error;
    LoudnessMeasure measure;
    if (!decodeAudioFile(mp2, audio, error))
        return measure;
    measureLoudness(audio.samples, 1, audio.sampleRate, measure, error);
    return measure;
}

// Scales a sound so that it measures `lufs`.
Sound atLoudness(Sound sound, double lufs)
{
    LoudnessMeasure measure;
    QString error;
    measureLoudness(sound.samples, sound.channels, sound.rate, measure, error);
    const float gain = float(dbToGain(lufs - measure.integratedLufs));
    for (float &s : sound.samples)
        s *= gain;
    return sound;
}

QStringList filesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System);
}

} // namespace

class tst_AudioImport : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    QString makeSource(Source source)
    {
        const auto made = [&](const char *name, const Sound &sound, int format) {
            const QString path = m_dir.filePath(QLatin1String(name));
            return write(path, sound, format) ? path : QString();
        };
        switch (source) {
        case Source::SineWav48Stereo:
            return made("sine48.wav", atLoudness(sine(1000.0, 4.0, 48000, 2, 0.1), -30.0), Wav16);
        case Source::SpeechFlac:
            return made("speech.flac", speechLike(5.0, 48000, 2), Flac16);
        case Source::SpeechMp3:
            return made("speech.mp3", speechLike(5.0, 44100, 2), Mp3);
        case Source::ShortChime:
            return made("chime.wav", sine(880.0, 0.25, 48000, 1, 0.1), Wav16);
        case Source::PlosivesWav:
            return made("plosives.wav", speechWithPlosives(5.0, 44100, 1), Wav16);
        case Source::Espeak:
        case Source::EspeakWord: {
            // A word under a second has few peaks, each weighing much in its loudness.
            const QString path = m_dir.filePath(QStringLiteral("espeak.wav"));
            QProcess espeak;
            espeak.start(
                QStringLiteral("espeak-ng"),
                {QStringLiteral("-w"), path,
                 source == Source::EspeakWord
                     ? QStringLiteral("extra")
                     : QStringLiteral("Attention please. The train to Osaka departs from platform four.")});
            return espeak.waitForFinished() && espeak.exitCode() == 0 ? path : QString();
        }
        }
        return {};
    }

private slots:
    void roundTrip_data()
    {
        QTest::addColumn<Source>("source");
        QTest::addColumn<Mp2Quality>("quality");
        QTest::addColumn<double>("target");
        QTest::addColumn<int>("rate");
        QTest::newRow("sine 48 kHz stereo at -30 LUFS")
            << Source::SineWav48Stereo << Mp2Quality::Standard << -16.0 << 32000;
        QTest::newRow("FLAC speech") << Source::SpeechFlac << Mp2Quality::Standard << -16.0 << 32000;
        QTest::newRow("MP3 speech") << Source::SpeechMp3 << Mp2Quality::High << -16.0 << 44100;
        // Shorter than the 400 ms the loudness meter needs.
        QTest::newRow("chime of a quarter second")
            << Source::ShortChime << Mp2Quality::Standard << -16.0 << 32000;
        // Peaks far over the loudness: the target is reached only by limiting them.
        QTest::newRow("speech with hard consonants")
            << Source::PlosivesWav << Mp2Quality::Standard << -16.0 << 32000;
        QTest::newRow("espeak-ng, high") << Source::Espeak << Mp2Quality::High << -16.0 << 44100;
        QTest::newRow("espeak-ng, standard") << Source::Espeak << Mp2Quality::Standard << -16.0 << 32000;
        QTest::newRow("espeak-ng, one short word")
            << Source::EspeakWord << Mp2Quality::Standard << -16.0 << 32000;
    }
    void roundTrip()
    {
        QFETCH(Source, source);
        QFETCH(Mp2Quality, quality);
        QFETCH(double, target);
        QFETCH(int, rate);
        const QString input = makeSource(source);
        if (input.isEmpty())
            QSKIP(source == Source::Espeak || source == Source::EspeakWord
                      ? "espeak-ng is not installed"
                      : "libsndfile cannot write MP3 here");
        DecodedAudio original;
        QString error;
        QVERIFY2(decodeAudioFile(input, original, error), qPrintable(error));

        const QString output = m_dir.filePath(QStringLiteral("OUT.MP2"));
        ImportOptions options;
        options.quality = quality;
        options.targetLufs = target;
        ImportResult result;
        QVERIFY2(importRecording(input, output, options, result, error), qPrintable(error));

        QVERIFY(IsValidMp2File(output));
        DecodedAudio played;
        QVERIFY2(decodeAudioFile(output, played, error), qPrintable(error));
        QCOMPARE(played.channels, 1);
        QCOMPARE(played.sampleRate, rate);
        const std::optional<double> seconds = mp2Duration(output);
        QVERIFY(seconds);
        QVERIFY2(std::fabs(*seconds - original.seconds()) <= 0.030,
                 qPrintable(QStringLiteral("%1 s from %2 s").arg(*seconds).arg(original.seconds())));
        const LoudnessMeasure measure = playedMeasure(output);
        QVERIFY2(std::fabs(measure.integratedLufs - target) <= 0.5,
                 qPrintable(QStringLiteral("%1 LUFS").arg(measure.integratedLufs)));
        QVERIFY2(measure.truePeakDb <= -1.0, qPrintable(QStringLiteral("%1 dBTP").arg(measure.truePeakDb)));
        // What the import reports is what the file plays at.
        QCOMPARE(result.loudnessLufs, measure.integratedLufs);
        QCOMPARE(result.truePeakDb, measure.truePeakDb);
    }

    // Loud targets, which a plain gain would push over the ceiling: the limiter takes the peaks
    // down and the loudness reaches a target within its reach; the sentence stays under -1 dBTP
    // even for one out of reach, where limiting stops short of squashing the whole voice.
    void loudTargetKeepsTheCeiling_data()
    {
        QTest::addColumn<double>("target");
        QTest::addColumn<bool>("reached");
        QTest::newRow("-12 LUFS, 3 dB over") << -12.0 << true;
        QTest::newRow("-5 LUFS, 10 dB over") << -5.0 << false;
    }
    void loudTargetKeepsTheCeiling()
    {
        QFETCH(double, target);
        QFETCH(bool, reached);
        const QString input = m_dir.filePath(QStringLiteral("loud.wav"));
        QVERIFY(write(input, speechLike(3.0, 48000, 1), Wav16));
        ImportOptions options;
        options.targetLufs = target;
        ImportResult result;
        QString error;
        const QString output = m_dir.filePath(QStringLiteral("LOUD.MP2"));
        QVERIFY2(importRecording(input, output, options, result, error), qPrintable(error));
        const LoudnessMeasure measure = playedMeasure(output);
        QVERIFY2(measure.truePeakDb <= -1.0, qPrintable(QStringLiteral("%1 dBTP").arg(measure.truePeakDb)));
        if (reached)
            QVERIFY2(std::fabs(measure.integratedLufs - target) <= 0.5,
                     qPrintable(QStringLiteral("%1 LUFS").arg(measure.integratedLufs)));
    }

    // A burst in a quiet tone is held at the ceiling; the tone before it, and once the gain has
    // recovered after it, passes unchanged, and the gain moves without jumps.
    void limiterTouchesOnlyThePeaks()
    {
        constexpr int Rate = 32000;
        const Sound tone = sine(440.0, 2.0, Rate, 1, 0.1);
        std::vector<float> samples = tone.samples;
        const size_t burst = Rate;
        for (size_t i = burst; i < burst + Rate / 50; ++i)
            samples[i] += float(0.8 * std::sin(6.283185307179586 * 3000.0 * double(i) / Rate));
        const std::vector<float> input = samples;
        PeakLimiter limiter(input, Rate);
        QVERIFY(limiter.apply(1.0f, 0.5f, samples) < 1.0f);
        const size_t lookAhead = Rate * 5 / 1000;
        float highest = 0.0f;
        for (size_t i = 0; i < samples.size(); ++i) {
            highest = std::max(highest, std::fabs(samples[i]));
            if (i < burst - lookAhead)
                QCOMPARE(samples[i], input[i]);
            if (i > burst + Rate / 2)
                QVERIFY2(std::fabs(samples[i] - input[i]) <= 0.001f, qPrintable(QString::number(i)));
        }
        QVERIFY2(highest <= 0.5f, qPrintable(QString::number(highest)));
        // Before the burst the gain is the ratio of output to input: it falls as a ramp over the
        // look-ahead, at most half a percent a sample, not in a step.
        float previous = 1.0f;
        size_t previousAt = burst - lookAhead - 1;
        for (size_t i = burst - lookAhead; i < burst; ++i) {
            if (std::fabs(input[i]) < 0.05f)
                continue;
            const float gain = samples[i] / input[i];
            QVERIFY2(std::fabs(gain - previous) <= 0.005f * float(i - previousAt),
                     qPrintable(QString::number(i)));
            previous = gain;
            previousAt = i;
        }
        QVERIFY2(previous < 0.6f, qPrintable(QString::number(previous)));
    }

    void trimCutsSilenceAtBothEnds()
    {
        Sound sound = sine(500.0, 3.0, 48000, 1, 0.2);
        std::fill(sound.samples.begin(), sound.samples.begin() + 48000, 0.0f); // 1 s before
        std::fill(sound.samples.end() - 24000, sound.samples.end(), 0.0f); // 0.5 s after
        const QString input = m_dir.filePath(QStringLiteral("pauses.wav"));
        QVERIFY(write(input, sound, Wav16));
        ImportOptions options;
        options.trimSilence = true;
        ImportResult result;
        QString error;
        const QString output = m_dir.filePath(QStringLiteral("PAUSES.MP2"));
        QVERIFY2(importRecording(input, output, options, result, error), qPrintable(error));
        QVERIFY2(std::fabs(*mp2Duration(output) - 1.54) <= 0.030,
                 qPrintable(QString::number(*mp2Duration(output))));
    }

    void refusedInputLeavesNothing_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("reason");
        QTest::newRow("not audio") << "text"
                                   << "it is not a recording this program can read";
        QTest::newRow("truncated WAV") << "truncatedWav"
                                       << "it is truncated";
        QTest::newRow("hiss under -50 dBFS") << "hiss"
                                             << "it is silent";
        QTest::newRow("31 minutes") << "tooLong"
                                    << "it is longer than 30 minutes";
    }
    void refusedInputLeavesNothing()
    {
        QFETCH(QString, kind);
        QFETCH(QString, reason);
        QTemporaryDir inputs;
        QTemporaryDir outputs;
        const QString input = inputs.filePath(QStringLiteral("rec.wav"));
        std::atomic<bool> cancel = false;
        if (kind == QLatin1String("text")) {
            QFile file(input);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("These are the words of the announcement, not their sound.\n");
        } else if (kind == QLatin1String("truncatedWav")) {
            const QString good = inputs.filePath(QStringLiteral("good.wav"));
            QVERIFY(write(good, sine(440.0, 2.0, 48000, 2, 0.3), Wav16));
            QFile file(good);
            QVERIFY(file.open(QIODevice::ReadOnly));
            QFile cut(input);
            QVERIFY(cut.open(QIODevice::WriteOnly));
            cut.write(file.read(50000));
        } else if (kind == QLatin1String("hiss")) {
            QVERIFY(write(input, sine(3000.0, 2.0, 48000, 2, 0.002), Wav16));
        } else if (kind == QLatin1String("tooLong")) {
            // 31 minutes at a low rate keeps the file small; the length is what counts.
            QVERIFY(write(input, sine(100.0, 31 * 60, 1000, 1, 0.3), SF_FORMAT_WAV | SF_FORMAT_PCM_U8));
        }
        ImportOptions options;
        options.cancel = &cancel;
        ImportResult result;
        QString error;
        QVERIFY(!importRecording(input, outputs.filePath(QStringLiteral("REC.MP2")), options, result, error));
        QVERIFY2(error.startsWith(QStringLiteral("Cannot import %1: ").arg(input)), qPrintable(error));
        QVERIFY2(error.contains(reason), qPrintable(error));
        QCOMPARE(filesIn(outputs.path()), QStringList());
    }

    // A disk that fills while the sentence is written keeps no part of it, and an older sentence
    // of the same name stays as it was.
    void fullDiskKeepsOldSentence()
    {
        QString skip;
        const auto disk = TestMount::tmpfs("8k", skip);
        if (!disk)
            QSKIP(qPrintable(skip));
        const QString output = disk->filePath(QStringLiteral("LONG.MP2"));
        {
            QFile old(output);
            QVERIFY(old.open(QIODevice::WriteOnly));
            old.write("old sentence");
        }
        const QString input = m_dir.filePath(QStringLiteral("long.wav"));
        QVERIFY(write(input, speechLike(10.0, 48000, 2), Wav16));
        ImportOptions options;
        ImportResult result;
        QString error;
        QVERIFY(!importRecording(input, output, options, result, error));
        QVERIFY2(error.contains(QStringLiteral("No space left on device")), qPrintable(error));
        QCOMPARE(filesIn(disk->path()), QStringList {QStringLiteral("LONG.MP2")});
        QFile old(output);
        QVERIFY(old.open(QIODevice::ReadOnly));
        QCOMPARE(old.readAll(), QByteArray("old sentence"));
    }

    // The rate converter each quality takes must pass, untouched, the top of the band its encoder
    // keeps: 13.5 kHz for standard, 20.7 kHz for high.
    void converterKeepsTheEncodersBand_data()
    {
        QTest::addColumn<Mp2Quality>("quality");
        QTest::addColumn<double>("hz");
        QTest::newRow("standard, 13.4 kHz") << Mp2Quality::Standard << 13400.0;
        QTest::newRow("high, 20.5 kHz") << Mp2Quality::High << 20500.0;
    }
    void converterKeepsTheEncodersBand()
    {
        QFETCH(Mp2Quality, quality);
        QFETCH(double, hz);
        const Sound tone = sine(hz, 1.0, 48000, 1, 0.5);
        std::vector<float> out;
        QString error;
        QVERIFY2(resampleMono(tone.samples, 48000, mp2SampleRate(quality), out, error, converterFor(quality)),
                 qPrintable(error));
        // The middle half, away from the converter's run-in and run-out.
        double sum = 0.0;
        const size_t from = out.size() / 4;
        const size_t to = out.size() * 3 / 4;
        for (size_t i = from; i < to; ++i)
            sum += double(out[i]) * out[i];
        const double levelDb = 10.0 * std::log10(sum / double(to - from) / (0.5 * 0.5 / 2.0));
        QVERIFY2(std::fabs(levelDb) < 0.1, qPrintable(QStringLiteral("%1 dB").arg(levelDb)));
    }

    void sentenceNames_data()
    {
        QTest::addColumn<QString>("recording");
        QTest::addColumn<bool>("fits");
        QTest::addColumn<QString>("proposed");
        QTest::newRow("eight characters") << "Platform.flac" << true << "PLATFORM.MP2";
        QTest::newRow("nine characters") << "platforms.wav" << false << "PLATFORM.MP2";
        QTest::newRow("blank") << "good morning.wav" << false << "GOOD_MOR.MP2";
        QTest::newRow("full stop") << "a.b.wav" << false << "A_B.MP2";
        QTest::newRow("device name on Windows") << "con.wav" << false << "CON2.MP2";
        QTest::newRow("accented letter") << QStringLiteral("\u00dcberfahrt.wav") << false << "UBERFAHR.MP2";
        QTest::newRow("nothing usable")
            << QStringLiteral("\u304a\u77e5\u3089\u305b.wav") << false << "SENTENCE.MP2";
    }
    void sentenceNames()
    {
        QFETCH(QString, recording);
        QFETCH(bool, fits);
        QFETCH(QString, proposed);
        QCOMPARE(isFittingSentenceName(QFileInfo(recording).completeBaseName()), fits);
        QCOMPARE(proposeSentenceName(recording), proposed);
        QVERIFY(isFittingSentenceName(proposed));
    }
};

QTEST_GUILESS_MAIN(tst_AudioImport)
#include "tst_AudioImport.moc"
