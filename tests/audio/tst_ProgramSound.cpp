#include "audio/AudioDecode.h"
#include "audio/AudioImport.h"
#include "audio/ProgramDuration.h"
#include "audio/ProgramSound.h"
#include "audio/ProgramWav.h"
#include "setting/SettingData.h"
#include "support/AudioFixtures.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace AudioFixtures;

namespace {

// What a rendering should hold: a sentence by name, or silence of some seconds.
struct Expected
{
    QString sentence;
    double silence = 0.0;
};

} // namespace

Q_DECLARE_METATYPE(Expected)

namespace {

std::vector<float> readWav(const QString &path, int &rate)
{
    SF_INFO info {};
    SNDFILE *file = sf_open(QFile::encodeName(path).constData(), SFM_READ, &info);
    if (!file)
        return {};
    std::vector<float> samples(size_t(info.frames) * size_t(info.channels));
    sf_readf_float(file, samples.data(), info.frames);
    sf_close(file);
    rate = info.channels == 1 ? info.samplerate : -1;
    return samples;
}

} // namespace

class tst_ProgramSound : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QString m_folder;
    SettingData m_data;
    QHash<QString, std::vector<float>> m_decoded; // each sentence as the decoder alone gives it

    QStringList folders() const { return {m_folder}; }

    void setProgram(const QStringList &steps, qint32 option, int count, int interval)
    {
        m_data.ProgramOption[0] = option;
        m_data.RepeatCount[0] = qint16(count);
        m_data.RepeatInterval[0] = qint16(interval);
        for (size_t i = 0; i < SettingData::StepsPerProgram; ++i)
            m_data.ProgramData[0][i] = i < size_t(steps.size()) ? steps[qsizetype(i)] : QString();
    }

private slots:
    // HELLO.MP2 (1.2 s tone) and CHIME.MP2 (0.7 s speech-like) at 32 kHz; HIGH.MP2 at 44.1 kHz;
    // slot 3 names a file that is not there, slot 5 a pipe.
    void initTestCase()
    {
        m_folder = m_dir.filePath(QStringLiteral("sentences"));
        QVERIFY(QDir().mkpath(m_folder));
        const struct
        {
            const char *name;
            Sound sound;
            Mp2Quality quality;
        } made[] = {{"HELLO", sine(440.0, 1.2, 48000, 1, 0.2), Mp2Quality::Standard},
                    {"CHIME", speechLike(0.7, 44100, 2), Mp2Quality::Standard},
                    {"HIGH", sine(660.0, 0.5, 44100, 1, 0.2), Mp2Quality::High}};
        for (const auto &m : made) {
            const QString wav = m_dir.filePath(QLatin1String(m.name) + QStringLiteral(".wav"));
            const QString mp2 = QDir(m_folder).filePath(QLatin1String(m.name) + QStringLiteral(".MP2"));
            QVERIFY(write(wav, m.sound, Wav16));
            ImportOptions options;
            options.quality = m.quality;
            ImportResult result;
            QString error;
            QVERIFY2(importRecording(wav, mp2, options, result, error), qPrintable(error));
            DecodedAudio audio;
            QVERIFY2(decodeAudioFile(mp2, audio, error), qPrintable(error));
            m_decoded.insert(QLatin1String(m.name), downmixToMono(audio));
        }
        QVERIFY(
            mkfifo(QFile::encodeName(QDir(m_folder).filePath(QStringLiteral("PIPE.MP2"))).constData(), 0600)
            == 0);
        const char *names[] = {"HELLO.MP2", "CHIME.MP2", "GONE.MP2", "HIGH.MP2", "PIPE.MP2"};
        for (int slot = 0; slot < 5; ++slot)
            m_data.SentenceFileName[size_t(slot)] = QLatin1String(names[slot]);
    }

    void render_data()
    {
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<qint32>("option");
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("interval");
        QTest::addColumn<int>("passes");
        QTest::addColumn<QList<Expected>>("expected");
        QTest::addColumn<QStringList>("skipped");
        const Expected hello {QStringLiteral("HELLO")};
        const Expected chime {QStringLiteral("CHIME")};
        auto quiet = [](double seconds) {
            return Expected {QString(), seconds};
        };
        QTest::newRow("sentences back to back around a wait of 2.5 s")
            << QStringList {"0001", "0002", "2225", "0001"} << 0x2D01 << 1 << 0 << 0
            << QList<Expected> {hello, chime, quiet(2.5), hello} << QStringList();
        QTest::newRow("whole-second and tenth waits")
            << QStringList {"2005", "0002", "2203", "2010"} << 0x2D01 << 1 << 0 << 0
            << QList<Expected> {quiet(5), chime, quiet(0.3), quiet(10)} << QStringList();
        QTest::newRow("Repeat 3 times, 10 s apart, none after the last")
            << QStringList {"0001", "2201"} << 0x6000 << 3 << 1 << 0
            << QList<Expected> {hello, quiet(0.1), quiet(10), hello, quiet(0.1), quiet(10), hello, quiet(0.1)}
            << QStringList();
        QTest::newRow("Repeat interval 6 is one minute")
            << QStringList {"0002"} << 0x6000 << 2 << 6 << 0 << QList<Expected> {chime, quiet(60), chime}
            << QStringList();
        QTest::newRow("Repeat interval 7 is two minutes")
            << QStringList {"0002"} << 0x6001 << 2 << 7 << 0 << QList<Expected> {chime, quiet(120), chime}
            << QStringList();
        QTest::newRow("Repeat count 0 plays until stopped: two passes asked")
            << QStringList {"0001"} << 0x6000 << 0 << 2 << 2 << QList<Expected> {hello, quiet(20), hello}
            << QStringList();
        QTest::newRow("Repeat 2 cut to one pass")
            << QStringList {"0001"} << 0x6000 << 2 << 2 << 1 << QList<Expected> {hello} << QStringList();
        QTest::newRow("Endless, play interval 3 s, three passes asked")
            << QStringList {"0002", "0001"} << 0xC018 << 0 << 0 << 3
            << QList<Expected> {chime, hello, quiet(3), chime, hello, quiet(3), chime, hello}
            << QStringList();
        QTest::newRow("Endless as a file holds it, sign-extended, interval 1 s")
            << QStringList {"0002"} << qint32(0xFFFFC008) << 0 << 0 << 2
            << QList<Expected> {chime, quiet(1), chime} << QStringList();
        QTest::newRow("Endless ignores the repeat interval")
            << QStringList {"0002"} << 0xC000 << 5 << 3 << 2 << QList<Expected> {chime, chime}
            << QStringList();
        QTest::newRow("Single-Program plays once whatever its count and interval")
            << QStringList {"0001"} << 0x4001 << 5 << 3 << 0 << QList<Expected> {hello} << QStringList();
        QTest::newRow("Continuous plays once whatever the passes asked")
            << QStringList {"0001"} << 0x2D01 << 1 << 0 << 4 << QList<Expected> {hello} << QStringList();
        QTest::newRow("missing, empty, pipe and sentence 000 skipped and named")
            << QStringList {"0001", "0003", "2201", "0009", "0005", "0000", "0002"} << 0x2D01 << 1 << 0 << 0
            << QList<Expected> {hello, quiet(0.1), chime}
            << QStringList {
                   "A003: GONE.MP2 is in none of the work folder, the project's folder and the sentence "
                   "folder.",
                   "A009: sentence 009 has no file in the sentence table.",
                   "A005: " + QDir::toNativeSeparators(QDir(m_folder).filePath("PIPE.MP2"))
                       + " cannot be played: it is a pipe or a device, not a file: only files are read.",
                   "A000: sentence 000 has no file in the sentence table."};
    }

    // The WAV holds each sentence exactly as its decoding gives it, each silence as zeros of its
    // length, and one pass lasts what the program window's playing time says.
    void render()
    {
        QFETCH(QStringList, steps);
        QFETCH(qint32, option);
        QFETCH(int, count);
        QFETCH(int, interval);
        QFETCH(int, passes);
        QFETCH(QList<Expected>, expected);
        QFETCH(QStringList, skipped);
        setProgram(steps, option, count, interval);
        ProgramSound sound(m_data, 0, folders(), passes);
        QStringList named;
        for (const SkippedStep &s : sound.skipped())
            named << s.shown + QStringLiteral(": ") + s.reason;
        QCOMPARE(named, skipped);
        QCOMPARE(sound.sampleRate(), 32000);
        QCOMPARE(double(sound.passFrames()) / 32000, programPlayingTime(m_data, 0, folders()).seconds);

        const QString wav = m_dir.filePath(QStringLiteral("program.wav"));
        QString error;
        QVERIFY2(writeProgramWav(sound, wav, error), qPrintable(error));
        float after = 0.0f;
        QCOMPARE(sound.read(&after, 1), 0); // the sound ends where its length said
        QVERIFY2(sound.problems().isEmpty(), qPrintable(sound.problems().join(QLatin1Char('\n'))));
        int rate = 0;
        const std::vector<float> got = readWav(wav, rate);
        QCOMPARE(rate, 32000);
        size_t at = 0;
        for (const Expected &part : expected) {
            if (part.sentence.isEmpty()) {
                const size_t length = size_t(qRound64(part.silence * rate));
                QVERIFY2(at + length <= got.size(), "the sound ends too early");
                const auto loud = std::find_if(got.begin() + qint64(at), got.begin() + qint64(at + length),
                                               [](float s) { return s != 0.0f; });
                QVERIFY2(
                    loud == got.begin() + qint64(at + length),
                    qPrintable(QStringLiteral("sound at sample %1 in a silence").arg(loud - got.begin())));
                at += length;
                continue;
            }
            const std::vector<float> &sentence = m_decoded[part.sentence];
            QVERIFY2(at + sentence.size() <= got.size(), "the sound ends too early");
            for (size_t i = 0; i < sentence.size(); ++i) {
                // 16 bits keep a sample to half a step.
                if (std::abs(got[at + i] - sentence[i]) > 1.0f / 32767)
                    QFAIL(qPrintable(QStringLiteral("%1 differs at its sample %2 (sample %3 of the sound)")
                                         .arg(part.sentence)
                                         .arg(i)
                                         .arg(at + i)));
            }
            at += sentence.size();
        }
        QCOMPARE(got.size(), at);
        QCOMPARE(QFileInfo(wav).size(), qint64(44 + 2 * at));
        QCOMPARE(qint64(got.size()), sound.totalFrames());
    }

    // A 44.1 kHz sentence among 32 kHz ones: the whole plays at 44.1 kHz, each sentence as long as
    // before to the sample, and a pass as long as the playing time says.
    void mixedRates()
    {
        setProgram({"0001", "2210", "0004"}, 0x2D01, 1, 0);
        ProgramSound sound(m_data, 0, folders());
        QCOMPARE(sound.sampleRate(), 44100);
        const qint64 hello = qRound64(double(m_decoded[QStringLiteral("HELLO")].size()) * 44100 / 32000);
        QCOMPARE(sound.passFrames(), hello + 44100 + qint64(m_decoded[QStringLiteral("HIGH")].size()));
        QVERIFY(
            std::abs(double(sound.passFrames()) / 44100 - programPlayingTime(m_data, 0, folders()).seconds)
            < 1.0 / 44100);
        std::vector<float> all(size_t(sound.totalFrames()) + 10);
        QCOMPARE(sound.read(all.data(), qint64(all.size())), sound.totalFrames());
        QCOMPARE(sound.read(all.data(), 1), 0);
    }

    // Pulled a little at a time, as a sound output pulls it: the same samples, and the step being
    // played follows.
    void pulledInPieces()
    {
        setProgram({"0001", "2201", "0002"}, 0x6000, 2, 1);
        ProgramSound whole(m_data, 0, folders());
        std::vector<float> once(size_t(whole.totalFrames()));
        QCOMPARE(whole.read(once.data(), qint64(once.size())), qint64(once.size()));

        ProgramSound pieces(m_data, 0, folders());
        std::vector<float> pulled;
        QList<int> steps;
        float block[997];
        while (const qint64 got = pieces.read(block, 997)) {
            pulled.insert(pulled.end(), block, block + got);
            if (steps.isEmpty() || steps.last() != pieces.currentStep())
                steps << pieces.currentStep();
        }
        QVERIFY(pulled == once);
        QCOMPARE(steps, (QList<int> {0, 1, 2, -1, 0, 1, 2}));
    }

    // A sentence whose frames are all there by their headers but whose file ends inside the last
    // one: it keeps its time, as silence, and is named.
    void truncatedSentenceIsNamed()
    {
        QFile hello(QDir(m_folder).filePath(QStringLiteral("HELLO.MP2")));
        QVERIFY(hello.open(QIODevice::ReadOnly));
        const QString cut = QDir(m_folder).filePath(QStringLiteral("CUT.MP2"));
        QFile file(cut);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(hello.readAll().chopped(50));
        file.close();
        m_data.SentenceFileName[9] = QStringLiteral("CUT.MP2");
        setProgram({"0010", "0002"}, 0x2D01, 1, 0);
        ProgramSound sound(m_data, 0, folders());
        QVERIFY(sound.skipped().isEmpty());
        std::vector<float> all(size_t(sound.totalFrames()));
        QCOMPARE(sound.read(all.data(), qint64(all.size())), qint64(all.size()));
        QCOMPARE(
            sound.problems(),
            QStringList {"A010 plays as silence: " + QDir::toNativeSeparators(cut)
                         + " cannot be played: it is truncated: the file ends before the recording does."});
        const qint64 chime = qint64(m_decoded[QStringLiteral("CHIME")].size());
        QVERIFY(std::all_of(all.begin(), all.end() - chime, [](float s) { return s == 0.0f; }));
        m_data.SentenceFileName[9].clear();
    }

    // Nothing to hear and no interval: a program playing until stopped ends at once instead of
    // giving no sound for ever; with an interval it gives silence for as long as it is pulled.
    void nothingToHearNeverHangs()
    {
        setProgram({"0003", "0005"}, 0xC000, 0, 0);
        ProgramSound nothing(m_data, 0, folders());
        float block[64];
        QCOMPARE(nothing.read(block, 64), 0);
        QCOMPARE(nothing.totalFrames(), 0);

        setProgram({"0003"}, 0xC008, 0, 0);
        ProgramSound waiting(m_data, 0, folders());
        QCOMPARE(waiting.totalFrames(), -1);
        for (int i = 0; i < 1000; ++i)
            QCOMPARE(waiting.read(block, 64), 64);
        QString error;
        QVERIFY(!writeProgramWav(waiting, m_dir.filePath(QStringLiteral("endless.wav")), error));
        QVERIFY2(error.contains(QLatin1String("plays until stopped")), qPrintable(error));
    }
};

QTEST_GUILESS_MAIN(tst_ProgramSound)
#include "tst_ProgramSound.moc"
