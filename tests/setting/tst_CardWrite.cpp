#include "CardWrite.h"
#include "FileAttributes.h"
#include "Mp2File.h"
#include "ScriptedMsgBox.h"
#include "SettingFileWriter.h"
#include "TestFiles.h"
#include "TestProjects.h"
#include "TestTone.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/mount.h>
#include <unistd.h>

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

} // namespace

class tst_CardWrite : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> home;
    std::unique_ptr<QTemporaryDir> card;
    std::unique_ptr<SharedState> state;
    ScriptedMsgBox msgBox;
    qint64 freeSpace = 100'000'000;
    QStringList missingShown;

    QString onCard(const QString &name) const { return card->filePath(QStringLiteral("CONTENTS/") + name); }

    void addSentence(int slot, const QString &name, const QByteArray &bytes)
    {
        SentenceSlotsHelper::set(state->Setting, slot, name);
        writeTestFile(home->filePath(QStringLiteral("Station/") + name), bytes);
    }

    struct SentenceSlotsHelper
    {
        static void set(SettingData &data, int slot, const QString &name)
        {
            data.SentenceFileName[slot] = name;
            data.SentenceControl[slot] = QStringLiteral("A%1").arg(slot + 1, 3, 10, QLatin1Char('0'));
            data.ProgramSort[slot] = static_cast<qint16>(slot + 1);
        }
    };

    bool write()
    {
        CardWriteHooks hooks;
        hooks.slotTest = [this] {
            state->CardFreeSpace = QString::number(freeSpace);
            return true;
        };
        hooks.showMissingFiles = [this](const QStringList &missing) {
            missingShown = missing;
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
        missingShown.clear();
        addSentence(0, QStringLiteral("HELLO.MP2"), mp2(GoodHeader));
        addSentence(1, QStringLiteral("RAIN2.MP2"), mp2(GoodHeader, 9000));
    }
    void cleanup()
    {
        QVERIFY2(msgBox.unexpected.isEmpty(), qPrintable(msgBox.unexpected.join(QLatin1Char('|'))));
    }

    void aFreshCard()
    {
        QVERIFY(write());
        QCOMPARE(msgBox.shown, QStringList {Complete});
        QCOMPARE(readTestFile(onCard(QStringLiteral("DQ480.CSV"))), WriteSettingBody(*state));
        QCOMPARE(readTestFile(onCard(QStringLiteral("RAIN2.MP2"))), mp2(GoodHeader, 9000));
        QVERIFY(IsValidMp2File(onCard(QStringLiteral("SIN1KHZ.MP2"))));
        QVERIFY(IsValidMp2File(testTonePath(home->path())));
    }

    void anExistingControlFile_data()
    {
        QTest::addColumn<MsgBox::Answer>("answer");
        QTest::addColumn<bool>("written");
        QTest::newRow("OK writes over it") << MsgBox::Answer::Ok << true;
        QTest::newRow("Cancel stops") << MsgBox::Answer::Cancel << false;
    }
    void anExistingControlFile()
    {
        QFETCH(MsgBox::Answer, answer);
        QFETCH(bool, written);
        QDir(card->path()).mkpath(QStringLiteral("CONTENTS"));
        writeTestFile(onCard(QStringLiteral("DQ480.CSV")), "old");
        msgBox.script({answer});
        QCOMPARE(write(), written);
        QCOMPARE(msgBox.shown.first(), QStringLiteral("Write over the setting data"));
        QCOMPARE(readTestFile(onCard(QStringLiteral("DQ480.CSV"))) == "old", !written);
        QCOMPARE(QFileInfo::exists(onCard(QStringLiteral("HELLO.MP2"))), written);
    }

    void aReadOnlyControlFileStopsEverything()
    {
        QDir(card->path()).mkpath(QStringLiteral("CONTENTS"));
        writeTestFile(onCard(QStringLiteral("DQ480.CSV")), "protected");
        setReadOnly(onCard(QStringLiteral("DQ480.CSV")), true);
        QVERIFY(!write());
        QCOMPARE(msgBox.shown, QStringList {"This card is read only"});
        QCOMPARE(readTestFile(onCard(QStringLiteral("DQ480.CSV"))), QByteArray("protected"));
    }

    void writeProtectionMakesTheControlFileReadOnly()
    {
        state->Setting.CardAttribute = static_cast<qint16>(state->Setting.CardAttribute | 0x10);
        QVERIFY(write());
        QVERIFY(isReadOnly(onCard(QStringLiteral("DQ480.CSV"))));
    }

    void aReadOnlySentenceOnTheCard_data()
    {
        QTest::addColumn<MsgBox::Answer>("answer");
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("Yes replaces") << MsgBox::Answer::Yes << mp2(GoodHeader);
        QTest::newRow("No keeps") << MsgBox::Answer::No << QByteArray("kept");
    }
    void aReadOnlySentenceOnTheCard()
    {
        QFETCH(MsgBox::Answer, answer);
        QFETCH(QByteArray, content);
        QDir(card->path()).mkpath(QStringLiteral("CONTENTS"));
        writeTestFile(onCard(QStringLiteral("HELLO.MP2")), "kept");
        setReadOnly(onCard(QStringLiteral("HELLO.MP2")), true);
        msgBox.script({answer});
        QVERIFY(write());
        QCOMPARE(msgBox.shown.first(),
                 QStringLiteral("This folder already contains read-only a file named 'HELLO.MP2\r\n',Would "
                                "like to replace the existing file?"));
        QCOMPARE(readTestFile(onCard(QStringLiteral("HELLO.MP2"))), content);
        QCOMPARE(readTestFile(onCard(QStringLiteral("RAIN2.MP2"))), mp2(GoodHeader, 9000));
    }

    void filesTheDeviceCannotPlayAreRefusedByName_data()
    {
        QTest::addColumn<QByteArray>("header");
        QTest::newRow("48 kHz") << QByteArray("\xFF\xFD\x44\xC4", 4);
        QTest::newRow("stereo") << QByteArray("\xFF\xFD\x48\x04", 4);
        QTest::newRow("160 kbit/s") << QByteArray("\xFF\xFD\x98\xC4", 4);
        QTest::newRow("Layer III") << QByteArray("\xFF\xFB\x48\xC4", 4);
    }
    void filesTheDeviceCannotPlayAreRefusedByName()
    {
        QFETCH(QByteArray, header);
        writeTestFile(home->filePath(QStringLiteral("Station/HELLO.MP2")), mp2(header));
        QVERIFY(write());
        QCOMPARE(msgBox.shown, (QStringList {"Filesystem error :HELLO.MP2", Complete}));
        QVERIFY(!QFileInfo::exists(onCard(QStringLiteral("HELLO.MP2"))));
        QVERIFY(QFileInfo::exists(onCard(QStringLiteral("RAIN2.MP2"))));
    }

    void theToneLeavesWhenSwitchedOff()
    {
        QVERIFY(write());
        QVERIFY(QFileInfo::exists(onCard(QStringLiteral("SIN1KHZ.MP2"))));
        state->SurveillanceFile = false;
        msgBox.script({MsgBox::Answer::Ok}); // write over the control file
        QVERIFY(write());
        QVERIFY(!QFileInfo::exists(onCard(QStringLiteral("SIN1KHZ.MP2"))));
        QVERIFY(!readTestFile(onCard(QStringLiteral("DQ480.CSV"))).contains("SIN1KHZ"));
    }

    void notEnoughSpaceStopsAfterTheControlFile_data()
    {
        QTest::addColumn<qint64>("space");
        QTest::newRow("equal") << qint64(4000 + 9000);
        QTest::newRow("less") << qint64(12000);
    }
    void notEnoughSpaceStopsAfterTheControlFile()
    {
        QFETCH(qint64, space);
        state->SurveillanceFile = false; // the sentences alone decide
        freeSpace = space;
        QVERIFY(!write());
        QCOMPARE(msgBox.shown, QStringList {TooLarge});
        QVERIFY(QFileInfo::exists(onCard(QStringLiteral("DQ480.CSV"))));
        QVERIFY(!QFileInfo::exists(onCard(QStringLiteral("HELLO.MP2"))));
    }

    void missingSentenceFilesAreListed()
    {
        SentenceSlotsHelper::set(state->Setting, 7, QStringLiteral("GONE.MP2"));
        QVERIFY(write());
        QCOMPARE(missingShown, QStringList {"GONE.MP2"});
        QCOMPARE(msgBox.shown, QStringList {Complete});
    }

    void aSlotThatIsNotReady()
    {
        CardWriteHooks hooks;
        hooks.slotTest = [] {
            return false;
        };
        QVERIFY(!WriteCard(*state, msgBox, hooks, true));
        QCOMPARE(msgBox.shown, QStringList {"The setting slot is not ready"});
        QVERIFY(!QDir(card->filePath(QStringLiteral("CONTENTS"))).exists());
    }

    void aCardFillingUpMidWriteIsReported()
    {
        if (geteuid() != 0)
            QSKIP("mounting a small tmpfs as the card needs root");
        QTemporaryDir small;
        if (::mount("tmpfs", QFile::encodeName(small.path()).constData(), "tmpfs", 0, "size=64k") != 0)
            QSKIP("this machine does not allow mounting a tmpfs");
        state->CardSlot = small.path();
        addSentence(2, QStringLiteral("BIG.MP2"), mp2(GoodHeader, 200'000));
        const bool written = write(); // the recorded free space lets it start
        ::umount(QFile::encodeName(small.path()).constData());
        QVERIFY(!written);
        QCOMPARE(msgBox.shown.size(), 1);
        QVERIFY2(msgBox.shown.first().startsWith(QStringLiteral("Card write stopped at BIG.MP2.")),
                 qPrintable(msgBox.shown.first()));
        QVERIFY(readTestFile(home->filePath(QStringLiteral("Station/BIG.MP2"))).size() == 200'000);
    }
};

QTEST_GUILESS_MAIN(tst_CardWrite)
#include "tst_CardWrite.moc"
