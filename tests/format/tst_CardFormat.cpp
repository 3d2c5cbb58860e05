#include "CardFormatter.h"
#include "FormatCommand.h"
#include "GuiFixture.h"
#include "InitialControlFile.h"
#include "TestFiles.h"
#include "dlgFMT.h"

#include <QProcess>
#include <QPushButton>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>

#include <unistd.h>

namespace {

bool run(const QString &program, const QStringList &args)
{
    QProcess process;
    process.start(program, args);
    return process.waitForFinished(30000) && process.exitStatus() == QProcess::NormalExit
        && process.exitCode() == 0;
}

} // namespace

class tst_CardFormat : public QObject
{
    Q_OBJECT

private slots:
    void commandLine_data()
    {
        QTest::addColumn<bool>("fixed");
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("command");
        QTest::newRow("removable card") << false << ""
                                        << "C:\\WINDOWS\\system32\\cmd.exe /c format.com E:/X "
                                           "/FS:FAT<C:\\WINDOWS\\system32\\DQ480tmp\\FMT.tmp";
        QTest::newRow("fixed drive keeps its label")
            << true << "VOICE"
            << "C:\\WINDOWS\\system32\\cmd.exe /c format.com E: /V:VOICE/X "
               "/FS:FAT<C:\\WINDOWS\\system32\\DQ480tmp\\FMT_HDD.tmp";
    }
    void commandLine()
    {
        QFETCH(bool, fixed);
        QFETCH(QString, label);
        QFETCH(QString, command);
        QCOMPARE(FormatCommand::commandLine(QStringLiteral("C:\\WINDOWS\\system32"), QStringLiteral("E:"),
                                            fixed, label),
                 command);
        QCOMPARE(FormatCommand::fixedDriveAnswers(QStringLiteral("VOICE")), QStringLiteral("VOICE\r\nY\r\n"));
    }

    void initialControlFileLeavesTheProjectAsItWas_data()
    {
        QTest::addColumn<bool>("cardReady");
        QTest::newRow("written") << true;
        QTest::newRow("card write fails") << false;
    }
    void initialControlFileLeavesTheProjectAsItWas()
    {
        QFETCH(bool, cardReady);
        GuiFixture f;
        QTemporaryDir card;
        SharedState &state = *f.state;
        fillFullProject(state.Setting);
        state.SentencePath = QStringLiteral("/voice/");
        state.CardSlot = card.path();
        state.SettingBuffer.CardName = QStringLiteral("untouched");
        const SettingData before = state.Setting;
        const SettingData bufferBefore = state.SettingBuffer;
        f.msgBox.answerOkBoxes = true;
        CardWriteHooks hooks;
        hooks.slotTest = [&] {
            state.CardFreeSpace = QString::number(10'000'000);
            return cardReady;
        };
        QCOMPARE(WriteInitialControlFile(state, f.msgBox, hooks), cardReady);
        QVERIFY(settingSectionEquals(state.Setting, before, SettingSection::All));
        QVERIFY(settingSectionEquals(state.SettingBuffer, bufferBefore, SettingSection::All));
        QCOMPARE(state.SentencePath, QStringLiteral("/voice/"));
        if (cardReady) {
            const QByteArray control = readTestFile(card.filePath(QStringLiteral("CONTENTS/DQ480.CSV")));
            QVERIFY(control.startsWith("CARDNAME,,\r\nCARDATB,A6,\r\nSNTCTTL,SIN1KHZ ,\r\n"));
            QVERIFY(control.contains("\r\nPRGDATA,3000,\r\n"));
            QVERIFY(!control.contains("PRGDATA,0001"));
            QCOMPARE(control.count("PRGOPT,2F01,"), 64);
            QVERIFY(control.contains("PRGNAME,P064,"));
        }
    }

    void aDriveThatIsGoneLeavesExitDisabled()
    {
        GuiFixture f;
        f.state->CardSlot = QStringLiteral("/media/gone");
        dlgFMT dialog(f.context, nullptr);
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Format"));
        QCOMPARE(dialog.progressText(), QStringLiteral(" Format FAT16 file system /media/gone"));
        QVERIFY(!dialog.Form_Activate());
        QVERIFY(!findControl<QPushButton>(&dialog, QStringLiteral("cmdOK"))->isEnabled());
        QCOMPARE(dialog.progressText(), QStringLiteral(" Format FAT16 file system /media/gone"));
    }

    void aFatImageFormattedAndGivenItsControlFile()
    {
        if (QStandardPaths::findExecutable(QStringLiteral("mkfs.fat")).isEmpty()
            || QStandardPaths::findExecutable(QStringLiteral("fsck.fat")).isEmpty())
            QSKIP("mkfs.fat and fsck.fat (dosfstools) are not installed");
        QTemporaryDir dir;
        const QString image = dir.filePath(QStringLiteral("card.img"));
        QFile file(image);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(file.resize(64 * 1024 * 1024));
        file.close();

        DriveInfo drive;
        drive.path = dir.filePath(QStringLiteral("mnt"));
        drive.device = image;
        drive.type = DriveInfo::Removable;
        CardFormatter formatter;
        QSignalSpy finished(&formatter, &CardFormatter::finished);
        QString error;
        QVERIFY2(formatter.start(drive, error), qPrintable(error));
        QVERIFY(finished.wait(30000));
        QVERIFY2(finished.first().at(0).toBool(), qPrintable(finished.first().at(1).toString()));
        QVERIFY(run(QStringLiteral("fsck.fat"), {QStringLiteral("-n"), image}));

        if (geteuid() != 0 || QStandardPaths::findExecutable(QStringLiteral("fusefat")).isEmpty())
            QSKIP("writing the control file onto the image needs root and fusefat");
        QDir().mkpath(drive.path);
        if (!run(QStringLiteral("fusefat"), {QStringLiteral("-o"), QStringLiteral("rw+"), image, drive.path}))
            QSKIP("this machine does not allow FUSE mounts");
        GuiFixture f;
        f.msgBox.answerOkBoxes = true;
        fillSentences(f.state->Setting, 128, 3);
        const SettingData before = f.state->Setting;
        f.state->CardSlot = drive.path;
        CardWriteHooks hooks;
        hooks.slotTest = [&] {
            f.state->CardFreeSpace = QString::number(60'000'000);
            return true;
        };
        const bool written = WriteInitialControlFile(*f.state, f.msgBox, hooks);
        const QByteArray control = readTestFile(drive.path + QStringLiteral("/CONTENTS/DQ480.CSV"));
        run(QStringLiteral("fusermount"), {QStringLiteral("-u"), drive.path});
        QVERIFY(written);
        QVERIFY(control.contains("PRGOPT,2F01,"));
        QVERIFY(settingSectionEquals(f.state->Setting, before, SettingSection::All));
        QVERIFY(run(QStringLiteral("fsck.fat"), {QStringLiteral("-n"), image}));
    }
};

QTEST_MAIN(tst_CardFormat)
#include "tst_CardFormat.moc"
