#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include "audio/AudioDecode.h"
#include "audio/AudioImport.h"
#include "audio/AudioInfo.h"
#include "audio/GrowingWav.h"
#include "audio/Loudness.h"
#include "audio/Resample.h"
#include "audio/SentenceName.h"
#include "setting/Mp2File.h"
#include "support/AudioFixtures.h"
#include "support/TestFiles.h"
#include "support/TestMounts.h"

#include <sys/stat.h>

using namespace AudioFixtures;

namespace {

enum class Source { SineWav48Stereo, SpeechFlac, ShortChime, Click, ClickMp3, Espeak };

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
        case Source::ShortChime:
            return made("chime.wav", sine(880.0, 0.25, 48000, 1, 0.1), Wav16);
        case Source::Click:
            return made("click.wav", sine(880.0, 0.02, 48000, 1, 0.1), Wav16);
        case Source::ClickMp3:
            return made("click.mp3", sine(880.0, 0.02, 44100, 1, 0.1), Mp3);
        case Source::Espeak: {
            const QString path = m_dir.filePath(QStringLiteral("espeak.wav"));
            QProcess espeak;
            espeak.start(
                QStringLiteral("espeak-ng"),
                {QStringLiteral("-w"), path,
                 QStringLiteral("Attention please. The train to Osaka departs from platform four.")});
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
        QTest::addColumn<int>("rate");
        QTest::newRow("sine 48 kHz stereo at -30 LUFS")
            << Source::SineWav48Stereo << Mp2Quality::Standard << 32000;
        QTest::newRow("FLAC speech") << Source::SpeechFlac << Mp2Quality::Standard << 32000;
        // Shorter than the 400 ms the loudness meter needs.
        QTest::newRow("chime of a quarter second") << Source::ShortChime << Mp2Quality::Standard << 32000;
        // Shorter than two frames of the sentence: one frame, which has no next frame behind it.
        QTest::newRow("click of 20 ms") << Source::Click << Mp2Quality::Standard << 32000;
        QTest::newRow("MP3 click of 20 ms") << Source::ClickMp3 << Mp2Quality::Standard << 32000;
        QTest::newRow("espeak-ng, high") << Source::Espeak << Mp2Quality::High << 44100;
        QTest::newRow("espeak-ng, standard") << Source::Espeak << Mp2Quality::Standard << 32000;
    }
    void roundTrip()
    {
        QFETCH(Source, source);
        QFETCH(Mp2Quality, quality);
        QFETCH(int, rate);
        constexpr double target = -16.0;
        const QString input = makeSource(source);
        if (input.isEmpty() && source == Source::Espeak)
            QSKIP("espeak-ng is not installed");
        QVERIFY(!input.isEmpty());
        DecodedAudio original;
        QString error;
        QVERIFY2(decodeAudioFile(input, original, error), qPrintable(error));

        const QString output = m_dir.filePath(QStringLiteral("OUT.MP2"));
        ImportOptions options;
        options.quality = quality;
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
        // Measured as `dq480-cli info` measures it: one channel at its own rate.
        LoudnessMeasure measure;
        QVERIFY2(measureLoudness(played.samples, 1, played.sampleRate, measure, error), qPrintable(error));
        QVERIFY2(std::fabs(measure.integratedLufs - target) <= 0.5,
                 qPrintable(QStringLiteral("%1 LUFS").arg(measure.integratedLufs)));
        QVERIFY2(measure.truePeakDb <= -1.0, qPrintable(QStringLiteral("%1 dBTP").arg(measure.truePeakDb)));
        // What the import reports is what the file plays at.
        QCOMPARE(result.loudnessLufs, measure.integratedLufs);
        QCOMPARE(result.truePeakDb, measure.truePeakDb);
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
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("reason");
        QTest::newRow("not audio") << "text"
                                   << "rec.wav"
                                   << "it is not a recording this program can read.";
        QTest::newRow("truncated WAV") << "truncatedWav"
                                       << "rec.wav"
                                       << "it is truncated: the file ends before the recording does.";
        QTest::newRow("MP3 cut inside a frame")
            << "mp3CutInFrame"
            << "rec.mp3"
            << "it is truncated: the file ends before the recording does.";
        // Whole frames, but fewer than the encoder counted in its first frame.
        QTest::newRow("MP3 cut between frames")
            << "mp3CutBetweenFrames"
            << "rec.mp3"
            << "it is truncated: the file ends before the recording does.";
        QTest::newRow("sample rate of 100 Hz")
            << "rate100"
            << "rec.wav"
            << "its sample rate of 100 Hz is outside the rates this program converts (1000 to 768000 Hz).";
        QTest::newRow("header without a sample rate") << "noRate"
                                                      << "rec.wav"
                                                      << "its header is damaged: it does not tell a sample "
                                                         "rate, channels and coding this program can read.";
        const QString notAFile = QStringLiteral("it is a pipe or a device, not a file: only files are read.");
        QTest::newRow("named pipe") << "pipe"
                                    << "rec.wav" << notAFile;
        QTest::newRow("endless device") << "device"
                                        << "rec.wav" << notAFile;
    }
    void refusedInputLeavesNothing()
    {
        QFETCH(QString, kind);
        QFETCH(QString, name);
        QFETCH(QString, reason);
        QTemporaryDir inputs;
        QTemporaryDir outputs;
        const QString input = inputs.filePath(name);
        const QString good = inputs.filePath(QStringLiteral("good.") + QFileInfo(name).suffix());
        std::atomic<bool> cancel = false;
        if (kind == QLatin1String("text")) {
            writeTestFile(input, "These are the words of the announcement, not their sound.\n");
        } else if (kind == QLatin1String("truncatedWav")) {
            QVERIFY(write(good, sine(440.0, 2.0, 48000, 2, 0.3), Wav16));
            writeTestFile(input, readTestFile(good).left(50000));
        } else if (kind.startsWith(QLatin1String("mp3Cut"))) {
            QVERIFY(write(good, sine(440.0, 2.0, 44100, 1, 0.3), Mp3));
            const QByteArray whole = readTestFile(good);
            // 5,000 bytes end inside a frame; the frame header found after them starts a frame.
            const qsizetype frameStart = whole.indexOf("\xFF\xFB", 5000);
            QVERIFY(frameStart > 5000);
            writeTestFile(input, whole.left(kind == QLatin1String("mp3CutInFrame") ? 5000 : frameStart));
        } else if (kind == QLatin1String("rate100")) {
            QVERIFY(write(input, sine(10.0, 2.0, 100, 1, 0.3), Wav16));
        } else if (kind == QLatin1String("noRate")) {
            QVERIFY(write(good, sine(440.0, 0.1, 48000, 1, 0.3), Wav16));
            QByteArray bytes = readTestFile(good);
            bytes.replace(24, 4, QByteArray(4, '\0')); // the format chunk's sample rate
            writeTestFile(input, bytes);
        } else if (kind == QLatin1String("pipe")) {
            QCOMPARE(::mkfifo(QFile::encodeName(input).constData(), 0600), 0);
        } else if (kind == QLatin1String("device")) {
            QVERIFY(QFile::link(QStringLiteral("/dev/zero"), input));
        }
        ImportOptions options;
        options.cancel = &cancel;
        ImportResult result;
        QString error;
        QVERIFY(!importRecording(input, outputs.filePath(QStringLiteral("REC.MP2")), options, result, error));
        QCOMPARE(error, QStringLiteral("Cannot import %1: %2").arg(input, reason));
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
        writeTestFile(output, "old sentence");
        const QString input = m_dir.filePath(QStringLiteral("long.wav"));
        QVERIFY(write(input, speechLike(10.0, 48000, 2), Wav16));
        ImportOptions options;
        ImportResult result;
        QString error;
        QVERIFY(!importRecording(input, output, options, result, error));
        QVERIFY2(error.contains(QStringLiteral("No space left on device")), qPrintable(error));
        QCOMPARE(filesIn(disk->path()), QStringList {QStringLiteral("LONG.MP2")});
        QCOMPARE(readTestFile(output), QByteArray("old sentence"));
    }

    // A take that fills the disk keeps what was written as a whole WAV, and says why it stopped.
    void fullDiskKeepsTheTakeSoFar()
    {
        QString skip;
        const auto disk = TestMount::tmpfs("64k", skip);
        if (!disk)
            QSKIP(qPrintable(skip));
        const QString path = disk->filePath(QStringLiteral("take.wav"));
        GrowingWav take;
        QString error;
        QVERIFY2(take.open(path, 48000, error), qPrintable(error));
        const std::vector<float> block(1000, 0.25f);
        qint64 appended = 0;
        while (take.append(block.data(), qint64(block.size()), error))
            appended += qint64(block.size());
        QCOMPARE(error, QStringLiteral("Cannot write %1: No space left on device").arg(path));
        take.close(error); // the full disk may refuse the last flush too; what is there counts
        DecodedAudio kept;
        QVERIFY2(decodeAudioFile(path, kept, error), qPrintable(error));
        QCOMPARE(kept.frames(), appended);
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
        QTest::newRow("device name on Windows") << "con.wav" << false << "CON2.MP2";
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
