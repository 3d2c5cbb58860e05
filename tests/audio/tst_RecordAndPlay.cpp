// Recording a sentence at the PC and playing a program, against a real sound server: a PulseAudio
// daemon of the test's own whose default input is a 440 Hz sine and whose output is a null sink.

#include "audio/AudioDecode.h"
#include "audio/AudioImport.h"
#include "audio/Loudness.h"
#include "audio/ProgramDuration.h"
#include "program/ProgramWindowTable.h"
#include "program/frmProg.h"
#include "program/frmStep.h"
#include "sentence/LevelMeter.h"
#include "sentence/TakeRecorder.h"
#include "sentence/dlgPcCa.h"
#include "sentence/dlgRecorder.h"
#include "support/AudioFixtures.h"
#include "support/GuiFixture.h"
#include "support/PulseServer.h"
#include "support/TestFiles.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>

#include <cmath>
#include <functional>

using namespace AudioFixtures;

namespace {

constexpr double Pi = 3.141592653589793;

// The frequency from 50 Hz to 4 kHz that holds the most of the sound's energy, to 1 Hz, over a
// second from its middle.
double strongestFrequency(const std::vector<float> &samples, int rate)
{
    const size_t length = std::min(samples.size(), size_t(rate));
    const size_t start = (samples.size() - length) / 2;
    const auto power = [&](double hz) {
        // Goertzel: one bin of the spectrum.
        const double coefficient = 2.0 * std::cos(2.0 * Pi * hz / rate);
        double s1 = 0.0, s2 = 0.0;
        for (size_t i = 0; i < length; ++i) {
            const double s0 = samples[start + i] + coefficient * s1 - s2;
            s2 = s1;
            s1 = s0;
        }
        return s1 * s1 + s2 * s2 - coefficient * s1 * s2;
    };
    const auto strongestIn = [&](double from, double to, double step) {
        double best = from, bestPower = -1.0;
        for (double hz = from; hz <= to; hz += step)
            if (const double p = power(hz); p > bestPower) {
                best = hz;
                bestPower = p;
            }
        return best;
    };
    const double coarse = strongestIn(50.0, 4000.0, 10.0);
    return strongestIn(coarse - 10.0, coarse + 10.0, 1.0);
}

// From the first to the last sample louder than -40 dBFS, in seconds.
double soundingSeconds(const QByteArray &pcm16, int rate)
{
    const auto *samples = reinterpret_cast<const qint16 *>(pcm16.constData());
    const qsizetype count = pcm16.size() / 2;
    qsizetype first = -1, last = -1;
    for (qsizetype i = 0; i < count; ++i)
        if (std::abs(samples[i]) > 328) {
            if (first < 0)
                first = i;
            last = i;
        }
    return first < 0 ? 0.0 : double(last - first + 1) / rate;
}

} // namespace

class tst_RecordAndPlay : public QObject
{
    Q_OBJECT

    std::unique_ptr<PulseServer> server;
    std::unique_ptr<GuiFixture> f;

    SharedState &state() const { return *f->state; }
    QString workFile(const QString &name) const
    {
        return f->home.filePath(QStringLiteral("SoundTmp/") + name);
    }
    QStringList workFiles() const
    {
        return QDir(f->home.filePath(QStringLiteral("SoundTmp"))).entryList(QDir::Files);
    }

    // Opens the recorder from the sentence table's Record button and hands it to `act`, which
    // closes it with OK or Cancel; whatever `act` left open is cancelled.
    void withRecorder(dlgPcCa &table, const std::function<void(dlgRecorder &)> &act)
    {
        QTimer::singleShot(0, this, [&] {
            auto *recorder = qobject_cast<dlgRecorder *>(QApplication::activeModalWidget());
            QVERIFY(recorder);
            act(*recorder);
            if (recorder->isVisible())
                recorder->reject();
        });
        findControl<QPushButton>(&table, QStringLiteral("cmdPcCaRecord"))->click();
    }

    // HIGH.MP2 (20 frames of 880 Hz) and LOW.MP2 (15 frames of 440 Hz) in the work folder, entries
    // 1 and 2 of the sentence table; entry 3 names GONE.MP2, which is nowhere.
    void makeTones()
    {
        QTemporaryDir recordings;
        const struct
        {
            const char *name;
            double hz;
            int frames; // MPEG frames of 1152 samples at 32 kHz
        } tones[] = {{"HIGH", 880.0, 20}, {"LOW", 440.0, 15}};
        QDir().mkpath(workFile(QString()));
        for (const auto &tone : tones) {
            const QString wav = recordings.filePath(QLatin1String(tone.name) + QStringLiteral(".wav"));
            QVERIFY(write(wav, sine(tone.hz, tone.frames * 1152 / 32000.0, 32000, 1, 0.2), Wav16));
            ImportResult result;
            QString error;
            QVERIFY2(importRecording(wav, workFile(QLatin1String(tone.name) + QStringLiteral(".MP2")), {},
                                     result, error),
                     qPrintable(error));
        }
        SettingData &buffer = state().SettingBuffer;
        buffer.SentenceFileName[0] = QStringLiteral("HIGH.MP2");
        buffer.SentenceFileName[1] = QStringLiteral("LOW.MP2");
        buffer.SentenceFileName[2] = QStringLiteral("GONE.MP2");
    }

    // Program 1's window in `area`, with its step window open.
    frmProg *openProgram(QMdiArea &area, ProgramWindowTable &windows)
    {
        auto *program = new frmProg(f->context, windows, 1, 1, &area);
        windows.occupy(1, program, 1);
        QMdiSubWindow *frame = area.addSubWindow(program);
        frame->setAttribute(Qt::WA_DeleteOnClose);
        area.show();
        frame->show();
        findControl<QPushButton>(program, QStringLiteral("cmdProgStep"))->click();
        return program;
    }

    static void press(dlgRecorder &recorder, const char *button)
    {
        QPushButton *found = findControl<QPushButton>(&recorder, QLatin1String(button));
        QVERIFY2(found->isEnabled(), button);
        found->click();
    }

private slots:
    void initTestCase()
    {
        QString skip;
        server = PulseServer::start(skip);
        if (!server)
            QSKIP(qPrintable(skip));
    }
    void init() { f = std::make_unique<GuiFixture>(); }
    void cleanup()
    {
        if (f)
            VERIFY_NO_UNEXPECTED_BOX(f->msgBox);
        f.reset();
        if (server)
            QVERIFY(server->restoreSource());
    }

    // A take of three seconds from the system's default input is a sentence of that length at the
    // import's loudness, and it is the input's sound: its strongest frequency is the sine's.
    void takeBecomesSentence()
    {
        dlgPcCa table(f->context, nullptr);
        table.show();
        QVERIFY(QTest::qWaitForWindowActive(&table));
        table.box(2)->setFocus();
        double pressedFor = 0.0;
        withRecorder(table, [&](dlgRecorder &recorder) {
            auto *input = findControl<QComboBox>(&recorder, QStringLiteral("cmbRecInput"));
            QCOMPARE(input->currentText(), PulseServer::SourceDescription);
            QCOMPARE(findControl<QLineEdit>(&recorder, QStringLiteral("txtRecName"))->text(),
                     QStringLiteral("TAKE"));
            QVERIFY(!findControl<QPushButton>(&recorder, QStringLiteral("cmdRecOk"))->isEnabled());
            QElapsedTimer pressed;
            press(recorder, "cmdRecRecord");
            pressed.start();
            QTest::qWait(3000);
            pressedFor = pressed.elapsed() / 1000.0;
            press(recorder, "cmdRecStop");
            QTRY_VERIFY_WITH_TIMEOUT(recorder.recorder().hasTake(), 5000);
            // The take waits in the work folder.
            QVERIFY(QFile::exists(workFile(QStringLiteral("take.wav"))));
            QVERIFY(!findControl<LevelMeter>(&recorder, QStringLiteral("lvlRecInput"))->clipped());
            press(recorder, "cmdRecOk");
        });
        QCOMPARE(table.box(2)->text(), QStringLiteral("TAKE.MP2"));
        QCOMPARE(state().SettingBuffer.SentenceFileName[2], QStringLiteral("TAKE.MP2"));
        QCOMPARE(workFiles(), QStringList {QStringLiteral("TAKE.MP2")});

        DecodedAudio sentence;
        QString error;
        QVERIFY2(decodeAudioFile(workFile(QStringLiteral("TAKE.MP2")), sentence, error), qPrintable(error));
        QVERIFY2(std::abs(sentence.seconds() - pressedFor) <= 0.1
                     && std::abs(sentence.seconds() - 3.0) <= 0.2,
                 qPrintable(QStringLiteral("%1 s for %2 s pressed").arg(sentence.seconds()).arg(pressedFor)));
        QCOMPARE(sentence.sampleRate, 32000);
        LoudnessMeasure measure;
        QVERIFY2(measureLoudness(sentence.samples, sentence.channels, sentence.sampleRate, measure, error),
                 qPrintable(error));
        QVERIFY2(std::abs(measure.integratedLufs + 16.0) <= 1.0,
                 qPrintable(QString::number(measure.integratedLufs)));
        const double hz = strongestFrequency(downmixToMono(sentence), sentence.sampleRate);
        QVERIFY2(std::abs(hz - 440.0) <= 2.0, qPrintable(QString::number(hz)));
    }

    // Cancel, after a take was recorded and heard (and the playing stopped), leaves no file and no
    // entry behind.
    void cancelLeavesNothing()
    {
        dlgPcCa table(f->context, nullptr);
        withRecorder(table, [&](dlgRecorder &recorder) {
            press(recorder, "cmdRecRecord");
            QTest::qWait(500);
            press(recorder, "cmdRecStop");
            QTRY_VERIFY_WITH_TIMEOUT(recorder.recorder().hasTake(), 5000);
            press(recorder, "cmdRecPlay");
            press(recorder, "cmdRecStop");
            press(recorder, "cmdRecCancel");
        });
        QCOMPARE(workFiles(), QStringList());
        QCOMPARE(table.box(0)->text(), QString());
        QVERIFY(!findControl<QPushButton>(&table, QStringLiteral("cmdPcCaApp"))->isEnabled());
    }

    // A take that would replace the entry's sentence asks as an import does; Cancel keeps the take
    // in the recorder and the entry as it was.
    void replacingAsksFirst()
    {
        state().SettingBuffer.SentenceFileName[0] = QStringLiteral("OLD.MP2");
        dlgPcCa table(f->context, nullptr);
        f->msgBox.script({MsgBox::Answer::Cancel, MsgBox::Answer::Ok});
        withRecorder(table, [&](dlgRecorder &recorder) {
            press(recorder, "cmdRecRecord");
            QTest::qWait(500);
            press(recorder, "cmdRecStop");
            QTRY_VERIFY_WITH_TIMEOUT(recorder.recorder().hasTake(), 5000);
            press(recorder, "cmdRecOk");
            QVERIFY(recorder.isVisible());
            QCOMPARE(table.box(0)->text(), QStringLiteral("OLD.MP2"));
            QCOMPARE(workFiles(), QStringList {QStringLiteral("take.wav")});
            press(recorder, "cmdRecOk");
            QVERIFY(!recorder.isVisible());
        });
        const QString question
            = QStringLiteral("The recordings replace these entries:\n001: OLD.MP2\nImport the recordings?");
        QCOMPARE(f->msgBox.shown, (QStringList {question, question}));
        QCOMPARE(table.box(0)->text(), QStringLiteral("TAKE.MP2"));
        QCOMPARE(workFiles(), QStringList {QStringLiteral("TAKE.MP2")});
    }

    // The take stops by itself at the longest recording an import takes, to the sample, and says so.
    void longestTakeStopsItself()
    {
        dlgPcCa table(f->context, nullptr);
        f->msgBox.script({MsgBox::Answer::Ok});
        withRecorder(table, [&](dlgRecorder &recorder) {
            recorder.recorder().setLongest(1.0);
            press(recorder, "cmdRecRecord");
            QTRY_VERIFY_WITH_TIMEOUT(recorder.recorder().hasTake(), 6000);
            QCOMPARE(f->msgBox.shown,
                     QStringList {"The recording stopped by itself at 0:01.0, the longest a "
                                  "sentence is made from."});
            DecodedAudio take;
            QString error;
            QVERIFY2(decodeAudioFile(recorder.recorder().path(), take, error), qPrintable(error));
            QCOMPARE(take.frames(), qint64(take.sampleRate));
            QCOMPARE(findControl<QLabel>(&recorder, QStringLiteral("lblRecTime"))->text(),
                     QStringLiteral("0:01.0"));
        });
    }

    // An input driven past full scale shows on the meter, and stays shown for the take.
    void clippingShows()
    {
        QVERIFY(server->pactl(
            {QStringLiteral("set-source-volume"), PulseServer::Source, QStringLiteral("400%")}));
        dlgPcCa table(f->context, nullptr);
        withRecorder(table, [&](dlgRecorder &recorder) {
            auto *meter = findControl<LevelMeter>(&recorder, QStringLiteral("lvlRecInput"));
            press(recorder, "cmdRecRecord");
            QTRY_VERIFY_WITH_TIMEOUT(meter->clipped(), 4000);
            QVERIFY2(meter->text().endsWith(QLatin1String("dBFS, clipped")), qPrintable(meter->text()));
            QCOMPARE(meter->accessibleDescription(), meter->text());
        });
    }

    // Pulling the input out mid-take stops the take, says why, and keeps what was recorded for Play
    // and OK; with no input left, Record says so.
    void lostInputKeepsTake()
    {
        dlgPcCa table(f->context, nullptr);
        f->msgBox.script({MsgBox::Answer::Ok, MsgBox::Answer::Ok});
        withRecorder(table, [&](dlgRecorder &recorder) {
            press(recorder, "cmdRecRecord");
            QTest::qWait(1000);
            QVERIFY(server->unloadSource());
            QTRY_VERIFY_WITH_TIMEOUT(recorder.recorder().hasTake(), 6000);
            QCOMPARE(f->msgBox.shown.size(), 1);
            const QRegularExpression said(QStringLiteral(
                "^The recording stopped at 0:0[12]\\.\\d: the input \"Sine source at 440 Hz\" is "
                "gone: it was unplugged, switched off or taken away by the sound system\\. The "
                "take so far is kept\\.$"));
            QVERIFY2(said.match(f->msgBox.shown.first()).hasMatch(), qPrintable(f->msgBox.shown.first()));
            const double kept = recorder.recorder().seconds();
            QVERIFY2(kept >= 0.8 && kept <= 2.5, qPrintable(QString::number(kept)));
            press(recorder, "cmdRecPlay");
            press(recorder, "cmdRecRecord");
            QCOMPARE(
                f->msgBox.shown.last(),
                QStringLiteral("This PC has no audio input: connect a microphone, then press Record again."));
            press(recorder, "cmdRecOk");
        });
        QVERIFY(server->loadSource());
        QCOMPARE(table.box(0)->text(), QStringLiteral("TAKE.MP2"));
        QVERIFY(QFile::exists(workFile(QStringLiteral("TAKE.MP2"))));
    }

    // The program window plays the working copy's steps as the device will: captured from the
    // output, the sound lasts the playing time the window shows; the step heard is shown there and
    // in the step window; a step whose sentence is missing is named and skipped; nothing of the
    // project changes.
    void programPlaysAsTheDeviceWill()
    {
        makeTones();
        SettingData &buffer = state().SettingBuffer;
        buffer.ProgramOption[0] = 0x2D01;
        buffer.ProgramData[0][0] = QStringLiteral("0001");
        buffer.ProgramData[0][1] = QStringLiteral("2210");
        buffer.ProgramData[0][2] = QStringLiteral("0003");
        buffer.ProgramData[0][3] = QStringLiteral("0002");
        state().CopyBufferToSetting(SettingSection::All);
        const SettingData before = buffer;
        const double playingTime = programPlayingTime(buffer, 0, sentenceSoundFolders(state())).seconds;

        QMdiArea area;
        ProgramWindowTable windows;
        frmProg *program = openProgram(area, windows);
        auto *frame = qobject_cast<QMdiSubWindow *>(program->parentWidget());
        frmStep *steps = program->stepWindow();
        QVERIFY(steps);

        QTemporaryDir captured;
        QProcess parec;
        QVERIFY(server->startMonitor(parec, captured.filePath(QStringLiteral("out.raw")), 32000));
        QTest::qWait(300);
        auto *status = findControl<QLabel>(program, QStringLiteral("lblPrgStatus"));
        QStringList said;
        QList<int> marked;
        QTimer watch;
        const auto look = [&] {
            const QString now = status->text().section(QLatin1Char('\n'), 0, 0);
            if (said.isEmpty() || said.last() != now)
                said << now;
            if (marked.isEmpty() || marked.last() != steps->playingStep())
                marked << steps->playingStep();
        };
        connect(&watch, &QTimer::timeout, this, look);
        watch.start(5);
        auto *play = findControl<QPushButton>(program, QStringLiteral("cmdProgPlay"));
        play->click();
        QVERIFY(!play->isEnabled());
        QTRY_VERIFY_WITH_TIMEOUT(play->isEnabled(), 15000);
        watch.stop();
        look();
        QTest::qWait(500);
        parec.terminate();
        QVERIFY(parec.waitForFinished(5000));

        const double heard
            = soundingSeconds(readTestFile(captured.filePath(QStringLiteral("out.raw"))), 32000);
        QVERIFY2(std::abs(heard - playingTime) <= 0.05,
                 qPrintable(QStringLiteral("heard %1 s of %2 s").arg(heard).arg(playingTime)));
        const QString gone
            = QStringLiteral("Skipped step 3, A003: GONE.MP2 is in none of the work folder, the "
                             "project's folder and the sentence folder.");
        const QStringList playing = said.mid(said.indexOf(QStringLiteral("Playing step 1: A001")));
        QVERIFY2(playing
                     == QStringList({"Playing step 1: A001", "Playing step 2: M1.0", "Playing step 4: A002",
                                     "Played to the end."}),
                 qPrintable(said.join(QLatin1Char('|'))));
        QCOMPARE(status->text(), QStringLiteral("Played to the end.\n") + gone);
        QStringList markedText;
        for (const int step : marked)
            markedText << QString::number(step);
        QVERIFY2(marked.mid(marked.indexOf(0)) == QList<int>({0, 1, 3, -1}),
                 qPrintable(markedText.join(QLatin1Char('|'))));
        QVERIFY(findControl<QLabel>(program, QStringLiteral("lblPrgPlayed"))
                    ->text()
                    .startsWith(QStringLiteral("Played 0:02.")));
        QVERIFY(settingSectionEquals(buffer, before, SettingSection::All));
        QVERIFY(state().SettingEqualsBuffer(SettingSection::All));
        QVERIFY(!findControl<QPushButton>(program, QStringLiteral("cmdProgSave"))->isEnabled());

        // Stop, and closing the window, end the sound at once: the output has no stream left.
        buffer.ProgramOption[0] = 0xC000; // Endless: plays until stopped
        auto *stop = findControl<QPushButton>(program, QStringLiteral("cmdProgStop"));
        play->click();
        QTRY_COMPARE_WITH_TIMEOUT(server->playingStreams(), 1, 5000);
        stop->click();
        QTRY_COMPARE_WITH_TIMEOUT(server->playingStreams(), 0, 5000);
        QCOMPARE(status->text().section(QLatin1Char('\n'), 0, 0), QStringLiteral("Stopped."));
        play->click();
        QTRY_COMPARE_WITH_TIMEOUT(server->playingStreams(), 1, 5000);
        state().CopyBufferToSetting(SettingSection::All);
        frame->close();
        QTRY_COMPARE_WITH_TIMEOUT(server->playingStreams(), 0, 5000);
    }

    // While a program plays, the line under the playing time names each step as the step window
    // shows it: sentences, waits in each of their forms, and the pass of a repeat.
    void playingStepShowsAsTheStepWindowShowsIt_data()
    {
        QTest::addColumn<QStringList>("stored");
        QTest::addColumn<int>("option");
        QTest::addColumn<QStringList>("said");
        QTest::newRow("a whole wait of ten seconds or more")
            << QStringList {"0001", "2120"} << 0x2D01
            << QStringList {"Playing step 1: A001", "Playing step 2: M120"};
        QTest::newRow("repeated: a wait in tenths, a whole wait under ten, the interval")
            << QStringList {"0002", "2203", "2001"} << 0x6000
            << QStringList {"Playing step 1: A002, pass 1 of 2", "Playing step 2: M0.3, pass 1 of 2",
                            "Playing step 3: M1.0, pass 1 of 2", "Waiting for pass 2"};
    }
    void playingStepShowsAsTheStepWindowShowsIt()
    {
        QFETCH(QStringList, stored);
        QFETCH(int, option);
        QFETCH(QStringList, said);
        makeTones();
        SettingData &buffer = state().SettingBuffer;
        buffer.ProgramOption[0] = option;
        buffer.RepeatCount[0] = 2;
        buffer.RepeatInterval[0] = 1;
        for (int i = 0; i < stored.size(); ++i)
            buffer.ProgramData[0][i] = stored[i];
        state().CopyBufferToSetting(SettingSection::All);
        QMdiArea area;
        ProgramWindowTable windows;
        frmProg *program = openProgram(area, windows);
        auto *status = findControl<QLabel>(program, QStringLiteral("lblPrgStatus"));
        QStringList lines;
        QTimer watch;
        connect(&watch, &QTimer::timeout, this, [&] {
            const QString now = status->text().section(QLatin1Char('\n'), 0, 0);
            if (now.startsWith(QLatin1String("Playing step")) || now.startsWith(QLatin1String("Waiting")))
                if (lines.isEmpty() || lines.last() != now)
                    lines << now;
        });
        watch.start(5);
        findControl<QPushButton>(program, QStringLiteral("cmdProgPlay"))->click();
        QTRY_VERIFY_WITH_TIMEOUT(lines.size() >= said.size(), 15000);
        findControl<QPushButton>(program, QStringLiteral("cmdProgStop"))->click();
        QCOMPARE(lines.mid(0, said.size()), said);
        for (int i = 0; i < stored.size(); ++i)
            QVERIFY2(said[i].startsWith(QStringLiteral("Playing step %1: %2")
                                            .arg(i + 1)
                                            .arg(program->stepWindow()->box(i)->text())),
                     qPrintable(program->stepWindow()->box(i)->text()));
        program->parentWidget()->close();
    }
};

QTEST_MAIN(tst_RecordAndPlay)
#include "tst_RecordAndPlay.moc"
