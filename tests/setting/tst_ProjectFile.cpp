#include "setting/CardFileReplacement.h"
#include "setting/FileAttributes.h"
#include "setting/FileReplacement.h"
#include "setting/PcFileReplacement.h"
#include "setting/ProjectFile.h"
#include "support/TestProjects.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "support/TestFiles.h"
#include "support/TestMounts.h"

#include <cerrno>
#include <memory>

namespace {

// A disk that fails as network and FUSE file systems and delayed allocation do, where a test
// machine cannot be made to: it takes a few bytes at a time, and fails with `error` at the write
// after the first `room` bytes, at the sync or at the rename.
struct FailingDevice : ReplacementDevice
{
    enum Fault { None, Write, Sync, Rename };
    Fault fault = None;
    int error = 0;
    qint64 room = 7;
    mutable qint64 taken = 0;

    qint64 write(int fd, const char *data, qint64 size) const override
    {
        if (fault == Write && taken >= room)
            return failed(-1);
        const qint64 done = ReplacementDevice::write(fd, data, std::min<qint64>(size, 3));
        taken += std::max<qint64>(done, 0);
        return done;
    }
    bool sync(int fd) const override { return fault == Sync ? failed(false) : ReplacementDevice::sync(fd); }
    bool rename(const QString &from, const QString &to) const override
    {
        return fault == Rename ? failed(false) : ReplacementDevice::rename(from, to);
    }
    template<typename T>
    T failed(T answer) const
    {
        errno = error;
        return answer;
    }
};

QStringList folderEntries(const QString &folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
}

} // namespace

class tst_ProjectFile : public QObject
{
    Q_OBJECT

private slots:
    // A save whose bytes the disk cannot take must leave the old file byte for byte and say why;
    // a small file fails only at the final flush.
    void aFullDiskKeepsTheOldFile()
    {
        QString skip;
        const auto disk = TestMount::tmpfs("64k", skip);
        if (!disk)
            QSKIP(qPrintable(skip));
        const auto state = makeTestState(disk->path());
        const QString path = disk->filePath(QStringLiteral("kept.stf"));
        QString error;
        QVERIFY(SaveProjectTo(*state, path, error));
        const QByteArray before = readTestFile(path);
        disk->fill();

        state->Setting.ProjectName = QStringLiteral("changed");
        QVERIFY(!SaveProjectTo(*state, path, error));
        QCOMPARE(error, QStringLiteral("Cannot write %1: No space left on device").arg(path));
        QCOMPARE(readTestFile(path), before);
        QVERIFY(!state->SettingEqualsSaved());
        QCOMPARE(folderEntries(disk->path()), (QStringList {"filler", "kept.stf"}));
    }

    // Whatever step the disk fails at, the file is the old one byte for byte and the reason is
    // named; writes taken a few bytes at a time still make the whole new file.
    void aDiskFailingAtAnyStepKeepsTheOldFile_data()
    {
        QTest::addColumn<bool>("onCard");
        QTest::addColumn<int>("fault");
        QTest::addColumn<int>("error");
        QTest::addColumn<QString>("reason");
        const auto row = [](const char *name, bool onCard, FailingDevice::Fault fault, int error) {
            QTest::newRow(name) << onCard << int(fault) << error
                                << (error ? qt_error_string(error) : QString());
        };
        row("PC, short writes", false, FailingDevice::None, 0);
        row("PC, full at a write", false, FailingDevice::Write, ENOSPC);
        row("PC, full at the sync", false, FailingDevice::Sync, ENOSPC);
        row("PC, rename refused", false, FailingDevice::Rename, EIO);
        row("card, short writes", true, FailingDevice::None, 0);
        row("card, pulled at a write", true, FailingDevice::Write, EIO);
        row("card, pulled at the sync", true, FailingDevice::Sync, EIO);
        row("card, rename refused", true, FailingDevice::Rename, EROFS);
    }
    void aDiskFailingAtAnyStepKeepsTheOldFile()
    {
        QFETCH(bool, onCard);
        QFETCH(int, fault);
        QFETCH(int, error);
        QFETCH(QString, reason);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("KEPT.CSV"));
        const QByteArray before = "PJNAME,old\r\n";
        const QByteArray after = "PJNAME,new and longer\r\n";
        writeTestFile(path, before);
        FailingDevice device;
        device.fault = FailingDevice::Fault(fault);
        device.error = error;

        const std::unique_ptr<FileReplacement> file = onCard
            ? std::unique_ptr<FileReplacement>(std::make_unique<CardFileReplacement>(path, device))
            : std::make_unique<PcFileReplacement>(path, device);
        QString message;
        const bool written = file->open(message) && file->write(after, message) && file->commit(message);
        QCOMPARE(written, reason.isEmpty());
        QCOMPARE(message,
                 reason.isEmpty() ? QString() : QStringLiteral("Cannot write %1: %2").arg(path, reason));
        QCOMPARE(readTestFile(path), reason.isEmpty() ? after : before);
        QCOMPARE(folderEntries(dir.path()), QStringList {"KEPT.CSV"});
    }

    // A save cut off by a kill leaves its temporary file; the next save of that file removes it,
    // but never the operator's own files beside it, whatever they look like.
    void aSaveRemovesTheLeftoversOfAnInterruptedOne()
    {
        QTemporaryDir dir;
        const auto state = makeTestState(dir.path());
        for (const char *name : {"kept.stf.dq480-saving-Xq3vZa", "kept.stf.Ab1234", "kept.stf.AB12CD",
                                 "kept.stf.backup", "other.stf.dq480-saving-Xq3vZa"})
            writeTestFile(dir.filePath(QLatin1String(name)), "PJNAME,half");
        QString error;
        QVERIFY(SaveProjectTo(*state, dir.filePath(QStringLiteral("kept.stf")), error));
        QCOMPARE(folderEntries(dir.path()),
                 (QStringList {"kept.stf", "kept.stf.AB12CD", "kept.stf.Ab1234", "kept.stf.backup",
                               "other.stf.dq480-saving-Xq3vZa"}));
    }

    // The file may be written, its folder not: the message sends the operator to the folder.
    void aFolderThatCannotBeWrittenIsNamed()
    {
        QTemporaryDir dir;
        const QString folder = dir.filePath(QStringLiteral("locked"));
        const QString path = folder + QStringLiteral("/kept.stf");
        QVERIFY(QDir().mkpath(folder));
        writeTestFile(path, "PJNAME,old,\r\n");
        const auto readable = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner
            | QFileDevice::ReadOther | QFileDevice::ExeOther;
        QVERIFY(QFile::setPermissions(dir.path(), readable) && QFile::setPermissions(folder, readable));
        QVERIFY(QFile::setPermissions(path,
                                      QFileDevice::ReadOwner | QFileDevice::WriteOwner
                                          | QFileDevice::ReadOther | QFileDevice::WriteOther));
        const auto state = makeTestState(dir.path());
        QString error;
        {
            AsUnprivilegedUser nobody;
            if (!nobody.active())
                QSKIP("a folder that cannot be written needs a user other than root, which needs root");
            QVERIFY(!SaveProjectTo(*state, path, error));
        }
        QCOMPARE(error,
                 QStringLiteral("Cannot write %1: its folder %2 cannot be written to, and the new "
                                "content is always written beside the file first.")
                     .arg(path, folder));
        QCOMPARE(readTestFile(path), QByteArray("PJNAME,old,\r\n"));
        QCOMPARE(folderEntries(folder), QStringList {"kept.stf"});
    }
};

QTEST_GUILESS_MAIN(tst_ProjectFile)
#include "tst_ProjectFile.moc"
