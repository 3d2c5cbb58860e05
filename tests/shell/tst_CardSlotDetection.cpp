#include "CardSlotDetection.h"
#include "GuiFixture.h"
#include "SingleInstance.h"
#include "frmEdit.h"
#include "frmMain.h"

#include <QAction>
#include <QPushButton>
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
        GuiFixture f;
        f.drives.list = drives;
        CardSlotDetection detection(*f.state, f.drives);
        CardSlotMenu menu;
        QCOMPARE(detection.DetectCardSlots(menu), chosen);
        QCOMPARE(f.state->CardSlotValid, chosen);
        for (int i = 0; i < CardSlotMenu::Entries; ++i) {
            QCOMPARE(!menu.captions[i].isEmpty() && menu.captions[i] != QLatin1String("Nothing"), i < listed);
            QCOMPARE(menu.checked[i], chosen && i == 0);
        }
        if (chosen) {
            QCOMPARE(f.state->CardSlot, QStringLiteral("/media/card0"));
            QCOMPARE(f.state->CardTotalSize, QString::number(64 * MiB));
            QCOMPARE(f.state->CardAvailableSpace, QString::number(16 * MiB));
        }
    }

    void removingTheChosenCardAmongOthers_data()
    {
        QTest::addColumn<int>("others");
        QTest::newRow("one left") << 1;
        QTest::newRow("two left") << 2;
    }
    void removingTheChosenCardAmongOthers()
    {
        QFETCH(int, others);
        GuiFixture f;
        f.drives.list = cards(others + 1);
        SingleInstance instance;
        frmMain window(f.context);
        QVERIFY(window.MDIForm_Load(instance));
        window.findChild<QAction *>(QStringLiteral("mnuNew"))->trigger();
        frmEdit *edit = window.editWindow();
        QVERIFY(edit);
        window.mnuCard_Click(1);
        QCOMPARE(f.state->CardSlot, QStringLiteral("/media/card1"));
        QVERIFY(f.state->CardSlotValid);
        QVERIFY(findControl<QPushButton>(edit, QStringLiteral("cmdCaWrite"))->isEnabled());

        f.drives.list.removeAt(1);
        window.SysInfo1_DeviceChange();
        // A single card left is chosen by itself; with more the operator has to choose again.
        const bool chosen = others == 1;
        QCOMPARE(f.state->CardSlotValid, chosen);
        QCOMPARE(f.state->CardSlot, chosen ? QStringLiteral("/media/card0") : QString());
        for (int i = 0; i < frmMain::CardSlotEntries; ++i)
            QCOMPARE(window.findChild<QAction *>(QStringLiteral("mnuCard_%1").arg(i))->isChecked(),
                     chosen && i == 0);
        for (const char *name : {"cmdCaWrite", "cmdTCaPc", "cmdTCaFormat"})
            QCOMPARE(findControl<QPushButton>(edit, QLatin1String(name))->isEnabled(), chosen);
        VERIFY_NO_UNEXPECTED_BOX(f.msgBox);
    }
};

QTEST_MAIN(tst_CardSlotDetection)
#include "tst_CardSlotDetection.moc"
