#include "FatVariant.h"
#include "FuseImage.h"
#include "GuiFixture.h"
#include "LinuxDriveSource.h"
#include "ProjectCommands.h"
#include "TestFiles.h"
#include "dlgFMT.h"
#include "frmEdit.h"

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

    QString mount(int count)
    {
        for (int i = 0; i < count; ++i) {
            const QString image = dir.filePath(QStringLiteral("card%1.img").arg(i));
            const QString mountPoint = dir.filePath(QStringLiteral("card%1").arg(i));
            QFile file(image);
            if (!file.open(QIODevice::WriteOnly) || !file.resize(16 * 1024 * 1024))
                return QStringLiteral("cannot make %1").arg(image);
            file.close();
            if (!run(QStringLiteral("mkfs.fat"), {QStringLiteral("-F"), QStringLiteral("12"), image}))
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
            if (const auto *label = dialog->findChild<QLabel *>(QStringLiteral("lblReason")))
                reason = label->text();
            progress = dialog->progressText();
            auto *exit = dialog->findChild<QPushButton *>(QStringLiteral("cmdOK"));
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
};

} // namespace

class tst_CardFormat : public QObject
{
    Q_OBJECT

private slots:
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
        const QString mkfs = QStandardPaths::findExecutable(QStringLiteral("mkfs.fat"));
        if (mkfs.isEmpty() || QStandardPaths::findExecutable(QStringLiteral("fsck.fat")).isEmpty())
            QSKIP("mkfs.fat and fsck.fat (dosfstools) are not installed");
        if (geteuid() != 0 || QStandardPaths::findExecutable(QStringLiteral("fusefat")).isEmpty())
            QSKIP("serving card images needs root and fusefat");
        MountedCards cards;
        if (const QString why = cards.mount(2); !why.isEmpty())
            QSKIP(qPrintable(why));
        const QByteArray otherBefore = sha1Of(cards.images[0]);

        GuiFixture f;
        // Only these two are looked at: another mount of the machine may not answer.
        const LinuxDriveSource system({}, [&](const QString &mountPoint) {
            return cards.mounts.contains(mountPoint) ? LinuxDriveSource::statvfsSpace(mountPoint)
                                                     : std::nullopt;
        });
        for (const DriveInfo &drive : system.drives()) {
            if (cards.mounts.contains(drive.path))
                f.drives.list << drive;
        }
        QCOMPARE(f.drives.list.size(), 2);
        QCOMPARE(f.drives.list[1].device, cards.images[1]);
        f.state->CardSlot = cards.mounts[1];
        f.state->CardSlotValid = true;
        f.state->CurrentFilePath = QStringLiteral("New File");

        QTemporaryDir tools;
        const QByteArray path = qgetenv("PATH");
        if (fat12Runner) {
            // Formats FAT12 whatever it is asked for.
            const QString fake = tools.filePath(QStringLiteral("mkfs.fat"));
            writeTestFile(fake,
                          "#!/bin/sh\nfor last; do :; done\nexec " + mkfs.toUtf8() + " -F 12 \"$last\"\n");
            QFile::setPermissions(fake, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
            qputenv("PATH", tools.path().toUtf8() + ':' + path);
        }
        QMdiArea area;
        ProjectCommands commands(f.context, nullptr);
        auto *edit = new frmEdit(f.context, commands, &area);
        area.addSubWindow(edit);
        edit->Form_Load();
        ExitWhenDone exitWhenDone(edit);
        f.msgBox.answerOkBoxes = true;
        f.msgBox.script({MsgBox::Answer::Ok});
        edit->cmdTCaFormat_Click();
        qputenv("PATH", path);

        QCOMPARE(f.msgBox.shown, QStringList {"Format start drive: " + cards.mounts[1]} + messages);
        QCOMPARE(exitWhenDone.progress, progress);
        if (fat12Runner)
            QCOMPARE(exitWhenDone.reason, cards.images[1] + " did not receive a FAT16 file system.");
        const QByteArray control = readTestFile(cards.mounts[1] + QStringLiteral("/CONTENTS/DQ480.CSV"));
        QCOMPARE(control.contains("PRGOPT,2F01,"), !fat12Runner);
        cards.unmount();
        QCOMPARE(sha1Of(cards.images[0]), otherBefore);
        QCOMPARE(fatKindOf(cards.images[0]), std::optional(FatVariant::Fat12));
        QCOMPARE(fatKindOf(cards.images[1]),
                 std::optional(fat12Runner ? FatVariant::Fat12 : FatVariant::Fat16));
        QProcess fsck;
        fsck.start(QStringLiteral("fsck.fat"), {QStringLiteral("-n"), cards.images[1]});
        QVERIFY(fsck.waitForFinished(30000));
        QVERIFY2(fsck.exitCode() == 0, fsck.readAllStandardOutput().constData());
        QVERIFY(f.msgBox.unexpected.isEmpty());
    }
};

QTEST_MAIN(tst_CardFormat)
#include "tst_CardFormat.moc"
