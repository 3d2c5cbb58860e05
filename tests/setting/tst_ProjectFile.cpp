#include "FileAttributes.h"
#include "ProjectFile.h"
#include "TestProjects.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "TestFiles.h"
#include "TestMounts.h"

namespace {

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
