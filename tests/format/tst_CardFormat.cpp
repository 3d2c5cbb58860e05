#include "cardedit/frmEdit.h"
#include "format/dlgFMT.h"
#include "platform/FatVariant.h"
#include "platform/linux/FuseImage.h"
#include "platform/linux/LinuxDriveSource.h"
#include "support/GuiFixture.h"
#include "support/TestFiles.h"
#include "support/TestMounts.h"
#include "widgets/ProjectCommands.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QLabel>
#include <QMdiArea>
#include <QProcess>
#include <QPushButton>
#include <QStandardPaths>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <unistd.h>

namespace {

bool run(const QString &program, const QStringList &args)
{
    QProcess process;
    process.start(program, args);
    return process.waitForFinished(30000) && process.exitStatus() == QProcess::NormalExit
        && process.exitCode() == 0;
}

QByteArray sha1Of(const QString &path)
{
    return QCryptographicHash::hash(readTestFile(path), QCryptographicHash::Sha1);
}

std::optional<FatVariant::Kind> fatKindOf(const QString &image)
{
    const auto clusters = FatVariant::clusterCountFromBootSector(readTestFile(image).left(512));
    return clusters ? std::optional(FatVariant::kindFromClusterCount(*clusters)) : std::nullopt;
}

// Card images, FAT12 to begin with, each served by fusefat on a folder of its own as a card is.
struct MountedCards
{
    QTemporaryDir dir;
    QStringList images;
    QStringList mounts;

    QString mount(int count, qint64 kib = 16 * 1024, const QStringList &mkfs = {"-F", "12"})
    {
        for (int i = 0; i < count; ++i) {
            const QString image = dir.filePath(QStringLiteral("card%1.img").arg(i));
            const QString mountPoint = dir.filePath(QStringLiteral("card%1").arg(i));
            QFile file(image);
            if (!file.open(QIODevice::WriteOnly) || !file.resize(kib * 1024))
                return QStringLiteral("cannot make %1").arg(image);
            file.close();
            if (!run(QStringLiteral("mkfs.fat"), mkfs + QStringList {image}))
                return QStringLiteral("mkfs.fat failed");
            QDir().mkpath(mountPoint);
            if (!run(QStringLiteral("fusefat"),
                     {QStringLiteral("-o"), QStringLiteral("rw+"), image, mountPoint}))
                return QStringLiteral("this machine does not allow FUSE mounts");
            images << image;
            mounts << mountPoint;
        }
        return QString();
    }
    void unmount()
    {
        for (const QString &mountPoint : std::as_const(mounts))
            run(QStringLiteral("fusermount"), {QStringLiteral("-u"), mountPoint});
        mounts.clear();
        // fusefat writes its last sectors after the unmount; the images are read only after that.
        const QDeadlineTimer deadline(10000);
        for (const QString &image : std::as_const(images)) {
            while (fuseFatServes(QStringLiteral("/proc"), image) && !deadline.hasExpired())
                QThread::msleep(20);
        }
    }
    ~MountedCards() { unmount(); }
};

// Answers the format dialog's "Exit" as soon as it is enabled, so that a modal format runs to its end.
struct ExitWhenDone : QTimer
{
    explicit ExitWhenDone(QWidget *owner)
    {
        setInterval(50);
        connect(this, &QTimer::timeout, owner, [owner, this] {
            auto *dialog = owner->findChild<dlgFMT *>();
            if (!dialog)
                return;
            auto *exit = dialog->findChild<QPushButton *>(QStringLiteral("cmdOK"));
            if (const auto *label = dialog->findChild<QLabel *>(QStringLiteral("lblReason"))) {
                reason = label->text();
                // Every line of the reason within the label, and the label within the dialog.
                reasonFits = !label->isVisible()
                    || (label->height() >= label->heightForWidth(label->width())
                        && dialog->rect().contains(QRect(label->mapTo(dialog, QPoint()), label->size())));
            }
            progress = dialog->progressText();
            if (exit->isEnabled())
                exit->click();
            else if (deadline.hasExpired())
                dialog->done(QDialog::Rejected);
        });
        start();
    }
    QDeadlineTimer deadline {60000};
    QString progress;
    QString reason;
    bool reasonFits = true;
};

// The format run as the operator starts it from the card edit window, on the card slot among
// `cards`; what the dialog showed last is kept.
struct FormatRun
{
    GuiFixture f;
    QString progress;
    QString reason;
    bool reasonFits = true;

    bool start(const MountedCards &cards, int slot)
    {
        // Only these cards are looked at: another mount of the machine may not answer.
        const LinuxDriveSource system({}, [&](const QString &mountPoint) {
            return cards.mounts.contains(mountPoint) ? LinuxDriveSource::statvfsSpace(mountPoint)
                                                     : std::nullopt;
        });
        for (const DriveInfo &drive : system.drives()) {
            if (cards.mounts.contains(drive.path))
                f.drives.list << drive;
        }
        if (f.drives.list.size() != cards.mounts.size() || f.drives.list[slot].device != cards.images[slot])
            return false;
        f.state->CardSlot = cards.mounts[slot];
        f.state->CardSlotValid = true;
        f.state->CurrentFilePath = QStringLiteral("New File");
        QMdiArea area;
        ProjectCommands commands(f.context, nullptr);
        auto *edit = new frmEdit(f.context, commands, &area);
        area.addSubWindow(edit);
        edit->Form_Load();
        ExitWhenDone exitWhenDone(edit);
        f.msgBox.answerOkBoxes = true;
        f.msgBox.script({MsgBox::Answer::Ok});
        edit->cmdTCaFormat_Click();
        progress = exitWhenDone.progress;
        reason = exitWhenDone.reason;
        reasonFits = exitWhenDone.reasonFits;
        return true;
    }
};

bool checkedByFsck(const QString &image)
{
    QProcess fsck;
    fsck.start(QStringLiteral("fsck.fat"), {QStringLiteral("-n"), image});
    return fsck.waitForFinished(30000) && fsck.exitStatus() == QProcess::NormalExit && fsck.exitCode() == 0;
}

QString whyNoCards()
{
    if (QStandardPaths::findExecutable(QStringLiteral("mkfs.fat")).isEmpty()
        || QStandardPaths::findExecutable(QStringLiteral("fsck.fat")).isEmpty())
        return QStringLiteral("mkfs.fat and fsck.fat (dosfstools) are not installed");
    if (geteuid() != 0 || QStandardPaths::findExecutable(QStringLiteral("fusefat")).isEmpty())
        return QStringLiteral("serving card images needs root and fusefat");
    return QString();
}

} // namespace

class tst_CardFormat : public QObject
{
    Q_OBJECT

private slots:
    // A locked card is said before card write offers anything: no answer could make it go through.
    void aLockedCardIsSaidBeforeCardWriteAsks()
    {
        QString skip;
        const auto locked = TestMount::tmpfs("1m", skip);
        if (!locked)
            QSKIP(qPrintable(skip));
        QVERIFY(locked->makeReadOnly());
        GuiFixture f;
        f.drives.list = {{locked->path(), DriveInfo::Removable, true, QStringLiteral("FAT"), 1 << 20, 1 << 20,
                          1 << 20, QString()}};
        f.state->CardSlot = locked->path();
        f.state->CardSlotValid = true;
        f.state->Setting.ProjectName = QStringLiteral("Station");
        QMdiArea area;
        ProjectCommands commands(f.context, nullptr);
        auto *edit = new frmEdit(f.context, commands, &area);
        area.addSubWindow(edit);
        edit->Form_Load();
        f.msgBox.script({MsgBox::Answer::Ok});
        edit->cmdCaWrite_Click();
        QCOMPARE(f.msgBox.shown, QStringList {"This card is read only"});
        QVERIFY(!QFileInfo::exists(locked->filePath(QStringLiteral("CONTENTS"))));
    }

    void theCardSlotAmongTwoCardsIsFormatted_data()
    {
        QTest::addColumn<bool>("fat12Runner");
        QTest::addColumn<QString>("progress");
        QTest::addColumn<QStringList>("messages"); // after the format question
        QTest::newRow("FAT16") << false << " DQ-480 format complete" << QStringList {};
        QTest::newRow("the runner gives FAT12")
            << true << " DQ-480 format error" << QStringList {"DQ480 Format error end!"};
    }
    void theCardSlotAmongTwoCardsIsFormatted()
    {
        QFETCH(bool, fat12Runner);
        QFETCH(QString, progress);
        QFETCH(QStringList, messages);
        if (const QString why = whyNoCards(); !why.isEmpty())
            QSKIP(qPrintable(why));
        MountedCards cards;
        if (const QString why = cards.mount(2); !why.isEmpty())
            QSKIP(qPrintable(why));
        const QByteArray otherBefore = sha1Of(cards.images[0]);

        QTemporaryDir tools;
        const QByteArray path = qgetenv("PATH");
        if (fat12Runner) {
            // Formats FAT12 whatever it is asked for.
            const QString fake = tools.filePath(QStringLiteral("mkfs.fat"));
            writeTestFile(fake,
                          "#!/bin/sh\nfor last; do :; done\nexec "
                              + QStandardPaths::findExecutable(QStringLiteral("mkfs.fat")).toUtf8()
                              + " -F 12 \"$last\"\n");
            QFile::setPermissions(fake, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
            qputenv("PATH", tools.path().toUtf8() + ':' + path);
        }
        FormatRun format;
        const bool started = format.start(cards, 1);
        qputenv("PATH", path);
        QVERIFY(started);

        QCOMPARE(format.f.msgBox.shown, QStringList {"Format start drive: " + cards.mounts[1]} + messages);
        QCOMPARE(format.progress, progress);
        if (fat12Runner)
            QCOMPARE(format.reason, cards.images[1] + " did not receive a FAT16 file system.");
        const QByteArray control = readTestFile(cards.mounts[1] + QStringLiteral("/CONTENTS/DQ480.CSV"));
        QCOMPARE(control.contains("PRGOPT,2F01,"), !fat12Runner);
        cards.unmount();
        QCOMPARE(sha1Of(cards.images[0]), otherBefore);
        QCOMPARE(fatKindOf(cards.images[0]), std::optional(FatVariant::Fat12));
        QCOMPARE(fatKindOf(cards.images[1]),
                 std::optional(fat12Runner ? FatVariant::Fat12 : FatVariant::Fat16));
        QVERIFY(checkedByFsck(cards.images[1]));
        VERIFY_NO_UNEXPECTED_BOX(format.f.msgBox);
    }

    // Every card the slot offers (FAT, up to 128 MiB) formats: FAT16 with a cluster that fits it,
    // FAT12 where FAT16 cannot fit.
    void everyCardTheSlotOffersIsFormatted_data()
    {
        QTest::addColumn<int>("kib");
        QTest::addColumn<QStringList>("madeWith");
        QTest::addColumn<FatVariant::Kind>("kind");
        QTest::newRow("1.5 MiB") << 1536 << QStringList {"-F", "12"} << FatVariant::Fat12;
        QTest::newRow("8 MiB") << 8192 << QStringList {"-F", "12"} << FatVariant::Fat16;
        QTest::newRow("32 MiB") << 32768 << QStringList {"-F", "16", "-s", "4"} << FatVariant::Fat16;
        QTest::newRow("128 MiB") << 131072 << QStringList {"-F", "16", "-s", "8"} << FatVariant::Fat16;
    }
    void everyCardTheSlotOffersIsFormatted()
    {
        QFETCH(int, kib);
        QFETCH(QStringList, madeWith);
        QFETCH(FatVariant::Kind, kind);
        if (const QString why = whyNoCards(); !why.isEmpty())
            QSKIP(qPrintable(why));
        MountedCards cards;
        if (const QString why = cards.mount(1, kib, madeWith); !why.isEmpty())
            QSKIP(qPrintable(why));
        FormatRun format;
        QVERIFY(format.start(cards, 0));
        QVERIFY2(format.reason.isEmpty(), qPrintable(format.reason));
        QCOMPARE(format.progress, QStringLiteral(" DQ-480 format complete"));
        QCOMPARE(format.f.msgBox.shown, QStringList {"Format start drive: " + cards.mounts[0]});
        QVERIFY(
            readTestFile(cards.mounts[0] + QStringLiteral("/CONTENTS/DQ480.CSV")).contains("PRGOPT,2F01,"));
        cards.unmount();
        QCOMPARE(fatKindOf(cards.images[0]), std::optional(kind));
        QVERIFY(checkedByFsck(cards.images[0]));
    }

    // A format that fails leaves the card as it was, mounted where it was, and the dialog shows
    // the whole reason.
    void aFailedFormatLeavesTheCardMounted()
    {
        if (const QString why = whyNoCards(); !why.isEmpty())
            QSKIP(qPrintable(why));
        MountedCards cards;
        if (const QString why = cards.mount(1, 8192); !why.isEmpty())
            QSKIP(qPrintable(why));
        writeTestFile(cards.mounts[0] + QStringLiteral("/KEPT.MP2"), "kept");
        QTemporaryDir tools;
        const QString fake = tools.filePath(QStringLiteral("mkfs.fat"));
        writeTestFile(fake,
                      "#!/bin/sh\necho 'mkfs.fat: unable to write the boot sector of this card' >&2\n"
                      "exit 1\n");
        QFile::setPermissions(fake, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", tools.path().toUtf8() + ':' + path);
        FormatRun format;
        const bool started = format.start(cards, 0);
        qputenv("PATH", path);
        QVERIFY(started);

        QCOMPARE(format.progress, QStringLiteral(" DQ-480 format error"));
        QCOMPARE(format.reason,
                 QStringLiteral("The card %1 could not be formatted.\nmkfs.fat said: mkfs.fat: "
                                "unable to write the boot sector of this card")
                     .arg(cards.images[0]));
        QVERIFY(format.reasonFits);
        QCOMPARE(format.f.msgBox.shown,
                 (QStringList {"Format start drive: " + cards.mounts[0], "DQ480 Format error end!"}));
        QCOMPARE(format.f.state->CardSlot, cards.mounts[0]);
        QCOMPARE(readTestFile(cards.mounts[0] + QStringLiteral("/KEPT.MP2")), QByteArray("kept"));
    }
};

QTEST_MAIN(tst_CardFormat)
#include "tst_CardFormat.moc"
