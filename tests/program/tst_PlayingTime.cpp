#include "audio/AudioImport.h"
#include "audio/ProgramDuration.h"
#include "program/ProgramWindowTable.h"
#include "program/frmProg.h"
#include "program/frmStep.h"
#include "setting/SentenceFolders.h"
#include "support/AudioFixtures.h"
#include "support/GuiFixture.h"

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QPushButton>
#include <QTest>

using namespace AudioFixtures;

class tst_PlayingTime : public QObject
{
    Q_OBJECT

    std::unique_ptr<GuiFixture> f;
    QTemporaryDir recordings;

    SharedState &state() const { return *f->state; }

    // HELLO.MP2 plays 1.512 s and SPEECH.MP2 2.016 s (whole frames of 1152 samples at 32 kHz) in
    // the project's folder; slot 3 names a sentence without a file.
    void makeSentences()
    {
        const QString folder = projectSentenceFolder(state());
        QDir().mkpath(folder);
        const QString hello = recordings.filePath(QStringLiteral("hello.wav"));
        const QString speech = recordings.filePath(QStringLiteral("speech.wav"));
        QVERIFY(write(hello, sine(440.0, 1.5, 48000, 2, 0.1), Wav16));
        QVERIFY(write(speech, speechLike(2.0, 44100, 1), Wav16));
        ImportResult result;
        QString error;
        QVERIFY2(importRecording(hello, folder + QStringLiteral("HELLO.MP2"), ImportOptions(), result, error),
                 qPrintable(error));
        QVERIFY2(
            importRecording(speech, folder + QStringLiteral("SPEECH.MP2"), ImportOptions(), result, error),
            qPrintable(error));
        state().SettingBuffer.SentenceFileName[0] = QStringLiteral("HELLO.MP2");
        state().SettingBuffer.SentenceFileName[1] = QStringLiteral("SPEECH.MP2");
        state().SettingBuffer.SentenceFileName[2] = QStringLiteral("GONE.MP2");
    }

    void setSteps(int program, const QStringList &steps)
    {
        auto &stored = state().SettingBuffer.ProgramData[program];
        for (qsizetype i = 0; i < stored.size(); ++i)
            stored[i] = i < steps.size() ? steps[i] : QString();
    }

private slots:
    void init()
    {
        f = std::make_unique<GuiFixture>();
        makeSentences();
    }
    void cleanup()
    {
        VERIFY_NO_UNEXPECTED_BOX(f->msgBox);
        f.reset();
    }

    void programTime_data()
    {
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QString>("text");
        QTest::newRow("a sentence twice around a wait of 2.5 s")
            << QStringList {"0001", "2225", "0001"} << "0:05.5";
        QTest::newRow("sentence 000 and an empty slot")
            << QStringList {"0000", "0004", "0002"} << "0:02.0 (A000, A004 not found)";
        QTest::newRow("more missing than named")
            << QStringList {"0005", "0006", "0004", "0007", "0005", "0008"}
            << "0:00.0 (A005, A006, A004 and 2 more not found)";
    }
    void programTime()
    {
        QFETCH(QStringList, steps);
        QFETCH(QString, text);
        setSteps(4, steps);
        QCOMPARE(programPlayingTimeText(
                     programPlayingTime(state().SettingBuffer, 4, sentenceSoundFolders(state()))),
                 text);
    }

    // A sentence chosen in the sentence table but not applied yet waits in the work folder; its
    // time counts from there.
    void workFolderComesFirst()
    {
        const QString work = workFolder(state());
        QDir().mkpath(work);
        QVERIFY(QFile::copy(projectSentenceFolder(state()) + QStringLiteral("HELLO.MP2"),
                            work + QStringLiteral("GONE.MP2")));
        setSteps(0, {QStringLiteral("0003")});
        QCOMPARE(programPlayingTimeText(
                     programPlayingTime(state().SettingBuffer, 0, sentenceSoundFolders(state()))),
                 QStringLiteral("0:01.5"));
    }

    // The playing time follows the steps when the step window's OK applies them.
    void programWindowFollowsSteps()
    {
        setSteps(0, {QStringLiteral("0001"), QStringLiteral("0002")});
        state().Setting = state().SettingBuffer;
        ProgramWindowTable table;
        QMdiArea area;
        auto *window = new frmProg(f->context, table, 1, 1, &area);
        table.occupy(1, window, 1);
        area.addSubWindow(window)->show();
        findControl<QPushButton>(window, QStringLiteral("cmdProgStep"))->click();
        frmStep *steps = window->stepWindow();
        QVERIFY(steps);
        // A third step: the first sentence again.
        steps->box(2)->setText(QStringLiteral("A001"));
        QVERIFY(steps->txtStpIdx_LostFocus(2));
        QPointer<frmStep> alive(steps);
        findControl<QPushButton>(steps, QStringLiteral("cmdStepOk"))->click();
        QCOMPARE(findControl<QLabel>(window, QStringLiteral("lblPrgTime"))->text(),
                 QStringLiteral("Playing time: 0:05.0"));
        if (alive)
            alive->closeFrame();
    }
};

QTEST_MAIN(tst_PlayingTime)
#include "tst_PlayingTime.moc"
