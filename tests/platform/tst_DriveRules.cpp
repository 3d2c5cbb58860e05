#include "platform/FatVariant.h"
#include "platform/MediaCheck.h"

#include <QTest>

// The rules a drive is judged by, without a drive: they hold on every system the program runs on.
class tst_DriveRules : public QObject
{
    Q_OBJECT

private slots:
    // A card reader answers 11 media types, a floppy drive fewer or more; a drive that opens but
    // whose query fails (count 0) passes as well.
    void mediaCount_data()
    {
        QTest::addColumn<uint>("replyBytes");
        QTest::addColumn<int>("count");
        QTest::addColumn<bool>("passes");
        QTest::newRow("query failed") << 0u << 0 << true;
        QTest::newRow("10 types") << 240u << 10 << false;
        QTest::newRow("11 types") << 264u << 11 << true;
        QTest::newRow("11 types, reply rounded") << 275u << 11 << true;
        QTest::newRow("12 types") << 288u << 12 << false;
    }
    void mediaCount()
    {
        QFETCH(uint, replyBytes);
        QFETCH(int, count);
        QFETCH(bool, passes);
        QCOMPARE(modFDCHK::mediaCountFromBytes(replyBytes), count);
        QCOMPARE(modFDCHK::mediaCountPasses(count), passes);
    }

    // Microsoft's rule: fewer than 4085 clusters is FAT12, fewer than 65525 FAT16, else FAT32.
    void fatFromClusterCount_data()
    {
        QTest::addColumn<quint64>("clusters");
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("shown");
        QTest::newRow("4084") << quint64(4084) << int(FatVariant::Fat12) << "FAT";
        QTest::newRow("4085") << quint64(4085) << int(FatVariant::Fat16) << "FAT";
        QTest::newRow("65524") << quint64(65524) << int(FatVariant::Fat16) << "FAT";
        QTest::newRow("65525") << quint64(65525) << int(FatVariant::Fat32) << "FAT32";
        QTest::newRow("4 Gi") << (quint64(1) << 32) << int(FatVariant::Fat32) << "FAT32";
    }
    void fatFromClusterCount()
    {
        QFETCH(quint64, clusters);
        QFETCH(int, kind);
        QFETCH(QString, shown);
        QCOMPARE(int(FatVariant::kindFromClusterCount(clusters)), kind);
        QCOMPARE(FatVariant::fileSystemText(FatVariant::kindFromClusterCount(clusters)), shown);
    }
};

QTEST_GUILESS_MAIN(tst_DriveRules)
#include "tst_DriveRules.moc"
