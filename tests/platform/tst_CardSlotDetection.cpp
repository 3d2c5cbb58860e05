#include "platform/CardSlotDetection.h"
#include "support/FakeDriveSource.h"
#include "support/TestProjects.h"

#include <QTemporaryDir>
#include <QTest>

namespace {

constexpr qint64 MiB = 1024 * 1024;

DriveInfo card(const QString &path)
{
    DriveInfo drive;
    drive.path = path;
    drive.type = DriveInfo::Removable;
    drive.ready = true;
    drive.fileSystem = QStringLiteral("FAT");
    drive.totalSize = 64 * MiB;
    drive.freeSpace = 32 * MiB;
    drive.availableSpace = 16 * MiB;
    drive.device = QStringLiteral("/dev/sdx1");
    return drive;
}

QList<DriveInfo> cards(int count)
{
    QList<DriveInfo> list;
    for (int i = 0; i < count; ++i)
        list << card(QStringLiteral("/media/card%1").arg(i));
    return list;
}

} // namespace

class tst_CardSlotDetection : public QObject
{
    Q_OBJECT

private slots:
    void detection_data()
    {
        QTest::addColumn<QList<DriveInfo>>("drives");
        QTest::addColumn<int>("listed");
        QTest::addColumn<bool>("chosen");
        QTest::newRow("one") << cards(1) << 1 << true;
        QTest::newRow("eleven") << cards(11) << 10 << false;
    }
    void detection()
    {
        QFETCH(QList<DriveInfo>, drives);
        QFETCH(int, listed);
        QFETCH(bool, chosen);
        QTemporaryDir home;
        const auto state = makeTestState(home.path());
        FakeDriveSource source;
        source.list = drives;
        CardSlotDetection detection(*state, source);
        CardSlotMenu menu;
        QCOMPARE(detection.DetectCardSlots(menu), chosen);
        QCOMPARE(state->CardSlotValid, chosen);
        for (int i = 0; i < CardSlotMenu::Entries; ++i) {
            QCOMPARE(!menu.captions[i].isEmpty() && menu.captions[i] != QLatin1String("Nothing"), i < listed);
            QCOMPARE(menu.checked[i], chosen && i == 0);
        }
        if (chosen) {
            QCOMPARE(state->CardSlot, QStringLiteral("/media/card0"));
            QCOMPARE(state->CardTotalSize, QString::number(64 * MiB));
            QCOMPARE(state->CardAvailableSpace, QString::number(16 * MiB));
        }
    }
};

QTEST_MAIN(tst_CardSlotDetection)
#include "tst_CardSlotDetection.moc"
