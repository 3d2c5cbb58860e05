#include "audio/AudioDecode.h"
#include "audio/AudioImport.h"
#include "audio/Loudness.h"
#include "sentence/RecordingImport.h"
#include "sentence/dlgPcCa.h"
#include "sentence/dlgSentenceNames.h"
#include "setting/CardWrite.h"
#include "setting/Mp2File.h"
#include "support/AudioFixtures.h"
#include "support/GuiFixture.h"
#include "support/TestFiles.h"
#include "support/TestMounts.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QProgressDialog>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QUrl>

#include <cmath>

using namespace AudioFixtures;

class tst_SentenceImport : public QObject
{
    Q_OBJECT

    std::unique_ptr<GuiFixture> f;
    QTemporaryDir recordings;

    SharedState &state() const { return *f->state; }
    QString recording(const QString &name) const { return recordings.filePath(name); }
    QString workFile(const QString &name) const
    {
        return f->home.filePath(QStringLiteral("SoundTmp/") + name);
    }
    QStringList workFiles() const
    {
        return QDir(f->home.filePath(QStringLiteral("SoundTmp"))).entryList(QDir::Files);
    }

    // What the file manager's drag does: enter, then drop.
    static void dropOn(QWidget *box, const QStringList &paths)
    {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString &path : paths)
            urls << QUrl::fromLocalFile(path);
        data.setUrls(urls);
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(box, &enter);
        QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(box, &drop);
    }

    // Answers the sentence-name offer the next import shows: keeps the proposals it shows in
    // `offered`, types `names` over them one after the other (a refused name is answered by the
    // scripted message box and the next one is tried), then OK.
    QStringList offered;
    void answerNames(const QStringList &names)
    {
        QTimer::singleShot(0, this, [this, names] {
            auto *offer = qobject_cast<dlgSentenceNames *>(QApplication::activeModalWidget());
            QVERIFY(offer);
            for (int i = 0; offer->findChild<QLineEdit *>(QStringLiteral("txtSentenceName_%1").arg(i)); ++i)
                offered << offer->nameBox(i)->text();
            for (const QString &name : names) {
                offer->nameBox(0)->setText(name);
                findControl<QPushButton>(offer, QStringLiteral("cmdSentenceNamesOk"))->click();
            }
        });
    }

private slots:
    void initTestCase()
    {
        QVERIFY(write(recording(QStringLiteral("hello.wav")), sine(440.0, 1.5, 48000, 2, 0.1), Wav16));
        QVERIFY(write(recording(QStringLiteral("quiet.wav")), sine(440.0, 1.0, 48000, 1, 0.0), Wav16));
        QVERIFY(write(recording(QStringLiteral("tone.wav")), sine(880.0, 1.0, 32000, 1, 0.1), Wav16));
        QVERIFY(write(recording(QStringLiteral("kept.wav")), sine(660.0, 1.0, 32000, 1, 0.1), Wav16));
    }
    void init()
    {
        f = std::make_unique<GuiFixture>();
        offered.clear();
    }
    void cleanup()
    {
        VERIFY_NO_UNEXPECTED_BOX(f->msgBox);
        f.reset();
    }

    // An MP2 chosen in Import... is made into a standard sentence at the matched loudness; the
    // same file dropped is copied as it is.
    void chosenMp2IsMadeStandard()
    {
        const QString high = recording(QStringLiteral("HIGH.MP2"));
        ImportOptions options;
        options.quality = Mp2Quality::High;
        ImportResult result;
        QString error;
        QVERIFY2(importRecording(recording(QStringLiteral("hello.wav")), high, options, result, error),
                 qPrintable(error));
        dlgPcCa dialog(f->context, nullptr);
        f->fileDialogs.answers = {high};
        findControl<QPushButton>(&dialog, QStringLiteral("cmdPcCaImport"))->click();
        QVERIFY2(f->fileDialogs.filters.first().contains(QLatin1String("*.mp2")),
                 qPrintable(f->fileDialogs.filters.first()));
        QCOMPARE(dialog.box(0)->text(), QStringLiteral("HIGH.MP2"));
        DecodedAudio made;
        QVERIFY2(decodeAudioFile(workFile(QStringLiteral("HIGH.MP2")), made, error), qPrintable(error));
        QCOMPARE(made.sampleRate, 32000);

        dropOn(dialog.box(1), {high});
        QCOMPARE(readTestFile(workFile(QStringLiteral("HIGH.MP2"))), readTestFile(high));
    }

    // What the table promises: a recording dropped on it plays from the card at the device's
    // loudness, in a file the device takes.
    void droppedRecordingReachesTheCardAtTheMatchedLoudness()
    {
        QString skip;
        const auto card = TestMount::tmpfs("4m", skip);
        if (!card)
            QSKIP(qPrintable(skip));
        Sound quiet = speechLike(4.0, 48000, 2);
        LoudnessMeasure before;
        QString error;
        QVERIFY2(measureLoudness(quiet.samples, 2, 48000, before, error), qPrintable(error));
        const float gain = float(dbToGain(-30.0 - before.integratedLufs));
        for (float &sample : quiet.samples)
            sample *= gain;
        const QString path = recording(QStringLiteral("station.wav"));
        QVERIFY(write(path, quiet, Wav16));

        dlgPcCa dialog(f->context, nullptr);
        dropOn(dialog.box(0), {path});
        findControl<QPushButton>(&dialog, QStringLiteral("cmdPcCaApp"))->click();
        QCOMPARE(state().Setting.SentenceFileName[0], QStringLiteral("STATION.MP2"));

        state().CardSlot = card->path();
        CardWriteHooks hooks;
        hooks.slotTest = [&] {
            state().CardFreeSpace = QString::number(4 * 1024 * 1024);
            return true;
        };
        hooks.showMissingFiles = [](const QStringList &missing) {
            QVERIFY(missing.isEmpty());
        };
        QVERIFY(WriteCard(state(), f->msgBox, hooks, false));
        const QString onCard = card->filePath(QStringLiteral("CONTENTS/STATION.MP2"));
        QVERIFY(IsValidMp2File(onCard));
        DecodedAudio played;
        QVERIFY2(decodeAudioFile(onCard, played, error), qPrintable(error));
        LoudnessMeasure measure;
        QVERIFY2(measureLoudness(played.samples, played.channels, played.sampleRate, measure, error),
                 qPrintable(error));
        QVERIFY2(std::abs(measure.integratedLufs + 16.0) <= 1.0,
                 qPrintable(QString::number(measure.integratedLufs)));
        QVERIFY(f->msgBox.shown.isEmpty());
    }

    // A recording named like a sentence the table holds elsewhere is offered a name of its own, so
    // that it does not replace the other sentence's sound; the operator may change the offer.
    void nameTakenElsewhereGetsAnother()
    {
        dlgPcCa dialog(f->context, nullptr);
        dropOn(dialog.box(0), {recording(QStringLiteral("hello.wav"))});
        f->msgBox.script({MsgBox::Answer::Ok});
        answerNames({QStringLiteral("hello"), QStringLiteral("greet")});
        dropOn(dialog.box(5), {recording(QStringLiteral("hello.wav"))});
        QCOMPARE(offered, QStringList {QStringLiteral("HELLO2")});
        QCOMPARE(f->msgBox.shown, QStringList {QStringLiteral("Incorrect value has been entered.")});
        QCOMPARE(dialog.box(0)->text(), QStringLiteral("HELLO.MP2"));
        QCOMPARE(dialog.box(5)->text(), QStringLiteral("GREET.MP2"));
        QVERIFY(IsValidMp2File(workFile(QStringLiteral("GREET.MP2"))));
        QVERIFY(!QFile::exists(workFile(QStringLiteral("HELLO2.MP2"))));
    }

    // Entries that hold sentences are replaced, and recordings past the table's end left out, only
    // when the operator says so, and the question names exactly the entries that change: a refused
    // recording leaves its own entry as it was. Cancel leaves the table and the work folder as they were.
    void importAsksBeforeReplacingOrLeavingOut_data()
    {
        QTest::addColumn<int>("box");
        QTest::addColumn<QStringList>("dropped");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<QString>("question");
        QTest::addColumn<QStringList>("entries");
        QTest::addColumn<QStringList>("made");
        const QString replace = "The recordings replace these entries:\n006: OLD.MP2\nImport the recordings?";
        const QString leftOut = "The table ends at entry 128; these recordings are left out:\ntone.wav\n"
                                "Import the recordings?";
        const QString silent
            = QStringLiteral("Cannot import %1: it is silent (nothing louder than -50 dBFS).")
                  .arg(recording(QStringLiteral("quiet.wav")));
        const QString oneRefused = silent
            + "\nThe recordings replace these entries:\n006: OLD.MP2\n008: LAST.MP2"
              "\nImport the recordings?";
        const QStringList one {"tone.wav"};
        const QStringList two {"hello.wav", "tone.wav"};
        const QStringList three {"hello.wav", "quiet.wav", "tone.wav"};
        const QStringList none;
        QTest::newRow("filled entry, Cancel")
            << 5 << one << false << replace << QStringList {"OLD.MP2"} << none;
        QTest::newRow("filled entry, OK")
            << 5 << one << true << replace << QStringList {"TONE.MP2"} << QStringList {"TONE.MP2"};
        QTest::newRow("table's end, Cancel") << 127 << two << false << leftOut << QStringList {""} << none;
        QTest::newRow("table's end, OK")
            << 127 << two << true << leftOut << QStringList {"HELLO.MP2"} << QStringList {"HELLO.MP2"};
        QTest::newRow("one refused of three, Cancel")
            << 5 << three << false << oneRefused << QStringList {"OLD.MP2", "KEPT.MP2", "LAST.MP2"} << none;
        QTest::newRow("one refused of three, OK")
            << 5 << three << true << oneRefused << QStringList {"HELLO.MP2", "KEPT.MP2", "TONE.MP2"}
            << QStringList {"HELLO.MP2", "TONE.MP2"};
        QTest::newRow("refused into empty entries")
            << 0 << QStringList {"quiet.wav", "hello.wav"} << true << silent << QStringList {"", "HELLO.MP2"}
            << QStringList {"HELLO.MP2"};
        QTest::newRow("named as the refused one's entry")
            << 6 << QStringList {"quiet.wav", "kept.wav"} << true
            << silent
                + "\nCannot enter KEPT.MP2 as entry 008: entry 007 stays as it was and holds a sentence of "
                  "that name."
            << QStringList {"KEPT.MP2", "LAST.MP2"} << none;
    }
    void importAsksBeforeReplacingOrLeavingOut()
    {
        QFETCH(int, box);
        QFETCH(QStringList, dropped);
        QFETCH(bool, ok);
        QFETCH(QString, question);
        QFETCH(QStringList, entries);
        QFETCH(QStringList, made);
        const char *held[] = {"OLD.MP2", "KEPT.MP2", "LAST.MP2"};
        for (int i = 0; i < 3; ++i)
            state().SettingBuffer.SentenceFileName[5 + i] = QLatin1String(held[i]);
        dlgPcCa dialog(f->context, nullptr);
        QStringList paths;
        for (const QString &name : dropped)
            paths << recording(name);
        f->msgBox.script({ok ? MsgBox::Answer::Ok : MsgBox::Answer::Cancel});
        dropOn(dialog.box(box), paths);
        QCOMPARE(f->msgBox.shown, QStringList {question});
        for (int i = 0; i < entries.size(); ++i) {
            QCOMPARE(dialog.box(box + i)->text(), entries[i]);
            QCOMPARE(state().SettingBuffer.SentenceFileName[box + i], entries[i]);
        }
        QCOMPARE(workFiles(), made);
        // The entry filled is scrolled into view, even in the table's last column.
        const int first = findControl<QScrollBar>(&dialog, QStringLiteral("hscCaPc"))->value();
        QVERIFY2(
            !ok || (first <= box / dlgPcCa::Rows && box / dlgPcCa::Rows < first + dlgPcCa::VisibleColumns),
            qPrintable(QString::number(first)));
    }

    // Cancel in the progress dialog stops the imports under way and removes what this run wrote.
    void cancelLeavesNothing()
    {
        const QString longer = recording(QStringLiteral("longer.wav"));
        QVERIFY(write(longer, speechLike(30.0, 48000, 2), Wav16));
        QTemporaryDir out;
        // The short one is written first; Cancel comes once it is there, while the long ones run.
        std::vector<RecordingJob> jobs {
            {recording(QStringLiteral("hello.wav")), out.filePath(QStringLiteral("S.MP2")), {}}};
        for (int i = 0; i < 4; ++i)
            jobs.push_back({longer, out.filePath(QStringLiteral("L%1.MP2").arg(i)), QString()});
        QWidget parent;
        QTimer poll;
        connect(&poll, &QTimer::timeout, &parent, [&] {
            auto *progress = parent.findChild<QProgressDialog *>(QStringLiteral("prgImport"));
            if (progress && QFile::exists(jobs.front().output))
                progress->cancel();
        });
        poll.start(2);
        QVERIFY(!runRecordingImports(jobs, &parent));
        for (const RecordingJob &job : jobs)
            QCOMPARE(job.error, QStringLiteral("The import was cancelled."));
        QCOMPARE(QDir(out.path()).entryList(QDir::Files | QDir::Hidden), QStringList());
    }

    // After Delete or Insert, what is said of the current box (under the table, in its tooltip)
    // follows the box, not the sentence that moved away.
    void currentTimeFollowsInsertAndDelete_data()
    {
        QTest::addColumn<QString>("command");
        QTest::newRow("delete") << "cmdPcCaDel";
        QTest::newRow("insert") << "cmdPcCaIns";
    }
    void currentTimeFollowsInsertAndDelete()
    {
        QFETCH(QString, command);
        dlgPcCa dialog(f->context, nullptr);
        dropOn(dialog.box(0), {recording(QStringLiteral("hello.wav"))});
        findControl<QPushButton>(&dialog, command)->click();
        QVERIFY(dialog.box(0)->text().isEmpty());
        QCOMPARE(findControl<QLabel>(&dialog, QStringLiteral("lblPcCaDuration"))->text(), QString());
        QCOMPARE(dialog.box(0)->toolTip(), QString());
    }
};

QTEST_MAIN(tst_SentenceImport)
#include "tst_SentenceImport.moc"
