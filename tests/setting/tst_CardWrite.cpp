#include "setting/CardWrite.h"
#include "setting/FileAttributes.h"
#include "setting/Mp2File.h"
#include "setting/SettingFileWriter.h"
#include "setting/TestTone.h"
#include "support/ScriptedMsgBox.h"
#include "support/TestFiles.h"
#include "support/TestProjects.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <QTest>

#include "support/TestMounts.h"

namespace {

const QByteArray GoodHeader("\xFF\xFD\x48\xC4", 4); // Layer II, 64 kbit/s, 32 kHz, mono
const QString TooLarge = QStringLiteral("The file being written is too large for the destination drive.");
const QString Complete = QStringLiteral("Card write is complete");

QByteArray mp2(const QByteArray &header, int size = 4000)
{
    QByteArray bytes = header;
    bytes.append(QByteArray(size - header.size(), '\x55'));
    return bytes;
}

bool isMountPoint(const QString &path)
{
    return QStorageInfo(path).rootPath() == path;
}

// A FUSE card needs a moment to appear; a process that ended has failed.
bool waitForMount(const QString &path, QProcess &process)
{
    for (int i = 0; i < 100; ++i) {
        if (isMountPoint(path))
            return true;
        if (process.waitForFinished(50))
            return false;
    }
    return false;
}

// After a pulled card, fusefat keeps the image until the last open file is gone.
bool waitForImageRelease(const QString &image)
{
    for (int i = 0; i < 100; ++i) {
        bool busy = false;
        for (const QString &pid : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
            QFile cmdline(QStringLiteral("/proc/%1/cmdline").arg(pid));
            if (cmdline.open(QIODevice::ReadOnly) && cmdline.readAll().contains(QFile::encodeName(image)))
                busy = true;
        }
        if (!busy)
            return true;
        QTest::qWait(50);
    }
    return false;
}

} // namespace

class tst_CardWrite : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> home;
    std::unique_ptr<QTemporaryDir> card;
    std::unique_ptr<SharedState> state;
    ScriptedMsgBox msgBox;
    qint64 freeSpace = 100'000'000;
    std::function<void(const QString &, int, int)> progress;
    QStringList skipped;

    QString onCard(const QString &name) const { return card->filePath(QStringLiteral("CONTENTS/") + name); }

    void addSentence(int slot, const QString &name, const QByteArray &bytes)
    {
        state->Setting.SentenceFileName[slot] = name;
        state->Setting.SentenceControl[slot] = QStringLiteral("A%1").arg(slot + 1, 3, 10, QLatin1Char('0'));
        state->Setting.ProgramSort[slot] = static_cast<qint16>(slot + 1);
        writeTestFile(home->filePath(QStringLiteral("Station/") + name), bytes);
    }

    bool write()
    {
        CardWriteHooks hooks;
        hooks.slotTest = [this] {
            state->CardFreeSpace = QString::number(freeSpace);
            return true;
        };
        hooks.showMissingFiles = [](const QStringList &) {
        };
        hooks.progress = progress;
        hooks.skipped = [this](const QString &name) {
            skipped << name;
        };
        return WriteCard(*state, msgBox, hooks, true);
    }

private slots:
    void init()
    {
        home = std::make_unique<QTemporaryDir>();
        card = std::make_unique<QTemporaryDir>();
        state = makeTestState(home->path());
        state->CardSlot = card->path();
        state->Setting.ProjectName = QStringLiteral("Station");
        QDir(home->path()).mkpath(QStringLiteral("Station"));
        msgBox = ScriptedMsgBox();
        msgBox.answerOkBoxes = true;
        freeSpace = 100'000'000;
        progress = nullptr;
        skipped.clear();
        addSentence(0, QStringLiteral("HELLO.MP2"), mp2(GoodHeader));
        addSentence(1, QStringLiteral("RAIN2.MP2"), mp2(GoodHeader, 9000));
    }
    void cleanup() { VERIFY_NO_UNEXPECTED_BOX(msgBox); }

    void aFreshCard()
    {
        QVERIFY(write());
        QCOMPARE(msgBox.shown, QStringList {Complete});
        QCOMPARE(readTestFile(onCard(QStringLiteral("DQ480.CSV"))), WriteSettingBody(*state));
        QCOMPARE(readTestFile(onCard(QStringLiteral("RAIN2.MP2"))), mp2(GoodHeader, 9000));
        QVERIFY(IsValidMp2File(testTonePath(home->path())));
        // Every card carries the same test tone, whichever build of the program made it.
        QCOMPARE(QCryptographicHash::hash(readTestFile(onCard(QStringLiteral("SIN1KHZ.MP2"))),
                                          QCryptographicHash::Sha256)
                     .toHex(),
                 QByteArray("690d17737d07185ffb7aa808f1762a93eccd26dabbe1e32c27ac0f3c35f861f1"));
    }

    void cancelKeepsAnExistingControlFile()
    {
        QDir(card->path()).mkpath(QStringLiteral("CONTENTS"));
        writeTestFile(onCard(QStringLiteral("DQ480.CSV")), "old");
        msgBox.script({MsgBox::Answer::Cancel});
        QVERIFY(!write());
        QCOMPARE(msgBox.shown.first(), QStringLiteral("Write over the setting data"));
        QCOMPARE(readTestFile(onCard(QStringLiteral("DQ480.CSV"))), QByteArray("old"));
        QVERIFY(!QFileInfo::exists(onCard(QStringLiteral("HELLO.MP2"))));
    }

    void notEnoughSpaceStopsAfterTheControlFile()
    {
        state->SurveillanceFile = false; // the sentences alone decide
        freeSpace = 4000 + 9000;
        QVERIFY(!write());
        QCOMPARE(msgBox.shown, QStringList {TooLarge});
        QVERIFY(QFileInfo::exists(onCard(QStringLiteral("DQ480.CSV"))));
        QVERIFY(!QFileInfo::exists(onCard(QStringLiteral("HELLO.MP2"))));
    }

    // Written again on a full card, the control file stays the old one, whole.
    void aFullCardKeepsTheOldControlFile()
    {
        QString skip;
        const auto card = TestMount::tmpfs("64k", skip);
        if (!card)
            QSKIP(qPrintable(skip));
        state->CardSlot = card->path();
        QDir(card->path()).mkpath(QStringLiteral("CONTENTS"));
        const QString control = card->filePath(QStringLiteral("CONTENTS/DQ480.CSV"));
        writeTestFile(control, "CARDNAME,old,\r\n");
        card->fill();
        msgBox.script({MsgBox::Answer::Ok});
        QVERIFY(!write());
        QCOMPARE(msgBox.shown,
                 (QStringList {"Write over the setting data",
                               QStringLiteral("Cannot write %1: No space left on device").arg(control)}));
        QCOMPARE(readTestFile(control), QByteArray("CARDNAME,old,\r\n"));
        QVERIFY(!QFileInfo::exists(control + QStringLiteral(".TMP")));
    }

    // A card pulled in the middle of the sentences: the write stops naming the file and the
    // reason, and what the card kept is, file by file, the old or the new content, whole.
    void aCardPulledMidWrite()
    {
        QString skip;
        const auto card = TestMount::fat16(2200, skip);
        if (!card)
            QSKIP(qPrintable(skip));
        state->CardSlot = card->path();
        QDir(card->path()).mkpath(QStringLiteral("CONTENTS"));
        writeTestFile(card->filePath(QStringLiteral("CONTENTS/DQ480.CSV")), "CARDNAME,old,\r\n");
        writeTestFile(card->filePath(QStringLiteral("CONTENTS/RAIN2.MP2")), "old rain");
        progress = [&](const QString &, int done, int) {
            if (done == 1)
                card->pull();
        };
        msgBox.script({MsgBox::Answer::Ok});
        QVERIFY(!write());
        QCOMPARE(msgBox.shown.size(), 2);
        QCOMPARE(
            msgBox.shown.at(1),
            QStringLiteral("Card write stopped at RAIN2.MP2.\nCannot write %1: No such file or directory")
                .arg(card->filePath(QStringLiteral("CONTENTS/RAIN2.MP2"))));

        QVERIFY(waitForImageRelease(card->imagePath()));
        QVERIFY(card->mountImage());
        QCOMPARE(readTestFile(card->filePath(QStringLiteral("CONTENTS/DQ480.CSV"))),
                 WriteSettingBody(*state));
        QCOMPARE(readTestFile(card->filePath(QStringLiteral("CONTENTS/HELLO.MP2"))), mp2(GoodHeader));
        QCOMPARE(readTestFile(card->filePath(QStringLiteral("CONTENTS/RAIN2.MP2"))), QByteArray("old rain"));
    }

    // The read-back reads what the card holds, not the PC's cache of what was written.
    void theReadBackReadsTheCardItself()
    {
        const QString python
            = QStandardPaths::findExecutable(QStringLiteral("python3"), {QStringLiteral("/usr/bin")});
        if (geteuid() != 0 || python.isEmpty())
            QSKIP("a FUSE card needs root and python3 with fusepy");
        QTemporaryDir backing;
        QTemporaryDir mountPoint;
        QProcess fs;
        fs.start(python,
                 {QStringLiteral(DQ480_TEST_SUPPORT "/altering_fs.py"), backing.path(), mountPoint.path(),
                  QStringLiteral("HELLO.MP2")});
        if (!waitForMount(mountPoint.path(), fs))
            QSKIP(qPrintable(QStringLiteral("the FUSE card did not mount: ") + fs.readAllStandardError()));
        state->CardSlot = mountPoint.path();
        addSentence(0, QStringLiteral("HELLO.MP2"), mp2(GoodHeader, 9000)); // whole pages stay cached
        const bool written = write();
        ::umount(QFile::encodeName(mountPoint.path()).constData());
        fs.waitForFinished();
        QVERIFY(!written);
        QCOMPARE(msgBox.shown,
                 QStringList {QStringLiteral("Card write stopped at HELLO.MP2.\n%1 on the card differs "
                                             "from the file written.")
                                  .arg(mountPoint.filePath(QStringLiteral("CONTENTS/HELLO.MP2")))});
    }

    // Links planted on the card never lead a write to a file on the PC: the link is named and
    // the write goes on or stops as for any file that cannot be written.
    void linksOnTheCardAreNotFollowed_data()
    {
        QTest::addColumn<QString>("link");
        QTest::addColumn<QStringList>("before");
        QTest::addColumn<QString>("after");
        QTest::newRow("sentence file")
            << "HELLO.MP2" << QStringList() << "Card write stopped at HELLO.MP2.\n%1";
        QTest::newRow("control file") << "DQ480.CSV" << QStringList {"Write over the setting data"} << "%1";
    }
    void linksOnTheCardAreNotFollowed()
    {
        QFETCH(QString, link);
        QFETCH(QStringList, before);
        QFETCH(QString, after);
        const QString victim = home->filePath(QStringLiteral("precious.txt"));
        writeTestFile(victim, "precious");
        QDir(card->path()).mkpath(QStringLiteral("CONTENTS"));
        QVERIFY(QFile::link(victim, onCard(link)));
        msgBox.script({MsgBox::Answer::Ok});
        QVERIFY(!write());
        const QString refusal
            = QStringLiteral("Cannot write %1: it is a symbolic link, and nothing is written through a link.")
                  .arg(onCard(link));
        QCOMPARE(msgBox.shown, before << after.arg(refusal));
        QCOMPARE(readTestFile(victim), QByteArray("precious"));
        QVERIFY(!isReadOnly(victim));
        msgBox.answers.clear();
    }

    // A card with its lock switch set takes nothing, and no question could change that.
    void aLockedCardIsSaidBeforeAnythingIsAsked_data()
    {
        QTest::addColumn<bool>("controlFile");
        QTest::newRow("card written before") << true;
        QTest::newRow("fresh card") << false;
    }
    void aLockedCardIsSaidBeforeAnythingIsAsked()
    {
        QFETCH(bool, controlFile);
        QString skip;
        const auto card = TestMount::fat16(2200, skip);
        if (!card)
            QSKIP(qPrintable(skip));
        if (controlFile) {
            QDir(card->path()).mkpath(QStringLiteral("CONTENTS"));
            writeTestFile(card->filePath(QStringLiteral("CONTENTS/DQ480.CSV")), "CARDNAME,old,\r\n");
        }
        card->unmount();
        QVERIFY(waitForImageRelease(card->imagePath()));
        QVERIFY(card->mountImage(true));
        state->CardSlot = card->path();
        QVERIFY(!write());
        QCOMPARE(msgBox.shown, QStringList {"This card is read only"});
        QCOMPARE(readTestFile(card->filePath(QStringLiteral("CONTENTS/DQ480.CSV"))),
                 controlFile ? QByteArray("CARDNAME,old,\r\n") : QByteArray());
    }

    // The card goes on without its test tone when the program folder cannot take it; the operator
    // is told, and the write counts as incomplete.
    void aTestToneThatCannotBeMadeIsReported()
    {
        QString skip;
        const auto programFolder = TestMount::tmpfs("1m", skip);
        if (!programFolder)
            QSKIP(qPrintable(skip));
        state->AppPath = programFolder->path();
        QDir(programFolder->path()).mkpath(QStringLiteral("Station"));
        for (const char *name : {"HELLO.MP2", "RAIN2.MP2"})
            QVERIFY(QFile::copy(home->filePath(QStringLiteral("Station/") + name),
                                programFolder->filePath(QStringLiteral("Station/") + name)));
        QVERIFY(programFolder->makeReadOnly());
        QVERIFY(write());
        QCOMPARE(msgBox.shown,
                 (QStringList {QStringLiteral("The test tone SIN1KHZ.MP2 did not reach the card.\n"
                                              "Cannot write %1: Read-only file system")
                                   .arg(programFolder->filePath(QStringLiteral("SIN1KHZ.MP2"))),
                               Complete}));
        QCOMPARE(skipped, QStringList {"SIN1KHZ.MP2"});
        QVERIFY(!QFileInfo::exists(onCard(QStringLiteral("SIN1KHZ.MP2"))));
        QCOMPARE(readTestFile(onCard(QStringLiteral("RAIN2.MP2"))), mp2(GoodHeader, 9000));
    }

    void aContentsFolderLinkedToThePcIsRefused()
    {
        const QString pcFolder = home->filePath(QStringLiteral("Station"));
        const QStringList before = QDir(pcFolder).entryList(QDir::Files);
        QVERIFY(QFile::link(pcFolder, card->filePath(QStringLiteral("CONTENTS"))));
        QVERIFY(!write());
        QCOMPARE(msgBox.shown,
                 QStringList {QStringLiteral("Cannot write %1: it is a symbolic link, and nothing is "
                                             "written through a link.")
                                  .arg(card->filePath(QStringLiteral("CONTENTS")))});
        QCOMPARE(QDir(pcFolder).entryList(QDir::Files), before);
    }
};

QTEST_GUILESS_MAIN(tst_CardWrite)
#include "tst_CardWrite.moc"
