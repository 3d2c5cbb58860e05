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
    // but not the operator's own copies beside it.
    void aSaveRemovesTheLeftoversOfAnInterruptedOne()
    {
        QTemporaryDir dir;
        const auto state = makeTestState(dir.path());
        for (const char *name : {"kept.stf.Xq3vZa", "kept.stf.AB12CD", "kept.stf.backup", "other.stf.Xq3vZa"})
            writeTestFile(dir.filePath(QLatin1String(name)), "PJNAME,half");
        QString error;
        QVERIFY(SaveProjectTo(*state, dir.filePath(QStringLiteral("kept.stf")), error));
        QCOMPARE(folderEntries(dir.path()),
                 (QStringList {"kept.stf", "kept.stf.backup", "other.stf.Xq3vZa"}));
    }
};

QTEST_GUILESS_MAIN(tst_ProjectFile)
#include "tst_ProjectFile.moc"
