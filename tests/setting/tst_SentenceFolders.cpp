#include "setting/FileAttributes.h"
#include "setting/SentenceFolders.h"
#include "support/ScriptedMsgBox.h"
#include "support/TestProjects.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "support/TestFiles.h"
#include "support/TestMounts.h"

#include <sys/stat.h>

class tst_SentenceFolders : public QObject
{
    Q_OBJECT

    QTemporaryDir m_home;
    QTemporaryDir m_source;
    std::unique_ptr<SharedState> m_state;
    ScriptedMsgBox m_msgBox;

    QString source(const QString &name, const QByteArray &bytes)
    {
        const QString path = m_source.filePath(name);
        writeTestFile(path, bytes);
        return path;
    }

private slots:
    void init()
    {
        QDir(m_home.path()).removeRecursively();
        QDir().mkpath(m_home.path());
        m_state = makeTestState(m_home.path());
        m_msgBox = ScriptedMsgBox();
    }

    void workFolderCopiesAreWritable()
    {
        const QString file = source(QStringLiteral("hello.mp2"), "new");
        setReadOnly(file, true);
        QString error;
        QVERIFY(StoreSentenceFile(*m_state, m_msgBox, StoreMode::WorkFolder, file, error));
        const QString copy = m_home.filePath(QStringLiteral("SoundTmp/hello.mp2"));
        QCOMPARE(readTestFile(copy), QByteArray("new"));
        QVERIFY(!isReadOnly(copy));
        QVERIFY(m_msgBox.shown.isEmpty());
    }

    // A pipe named like a sentence would hold the copy for ever, waiting for a writer.
    void aPipeIsRefusedAtOnce()
    {
        const QString pipe = m_source.filePath(QStringLiteral("PIPE.MP2"));
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        QString error;
        QVERIFY(!StoreSentenceFile(*m_state, m_msgBox, StoreMode::WorkFolder, pipe, error));
        QCOMPARE(error,
                 QStringLiteral("Cannot read %1: it is a pipe or a device, not a file: only files are read.")
                     .arg(pipe));
        QVERIFY(!QFileInfo::exists(m_home.filePath(QStringLiteral("SoundTmp/PIPE.MP2"))));
    }

    // Storing into the project folder on a full disk: the good copy already there stays whole and
    // the failure names the file and the reason, for a file larger than the copy's buffer.
    void aFullDiskKeepsTheStoredCopy()
    {
        const int size = 261'000;
        const int spare = 131'072; // what the disk still takes
        QString skip;
        const auto disk = TestMount::tmpfs("1m", skip);
        if (!disk)
            QSKIP(qPrintable(skip));
        m_state = makeTestState(disk->path());
        m_state->Setting.ProjectName = QStringLiteral("Station");
        QDir(disk->path()).mkpath(QStringLiteral("Station"));
        const QString stored = disk->filePath(QStringLiteral("Station/HELLO.MP2"));
        const QByteArray good(size, 'g');
        writeTestFile(stored, good);
        disk->fill();
        const QString filler = disk->filePath(QStringLiteral("filler"));
        QFile::resize(filler, QFileInfo(filler).size() - spare);

        const QString file = source(QStringLiteral("HELLO.MP2"), QByteArray(size, 'n'));
        QString error;
        QVERIFY(!StoreSentenceFile(*m_state, m_msgBox, StoreMode::ProjectFolder, file, error));
        QCOMPARE(error, QStringLiteral("Cannot write %1: No space left on device").arg(stored));
        QCOMPARE(readTestFile(stored), good);
        QCOMPARE(QDir(disk->filePath(QStringLiteral("Station")))
                     .entryList(QDir::Files | QDir::Hidden | QDir::System),
                 QStringList {"HELLO.MP2"});
    }

    void sentenceFilesAreFoundInAnyCase()
    {
        m_state->Setting.ProjectName = QStringLiteral("Station");
        QDir().mkpath(m_home.filePath(QStringLiteral("Station")));
        writeTestFile(m_home.filePath(QStringLiteral("Station/hello.mp2")), "x");
        fillSentences(m_state->Setting, 512, 0);
        m_state->Setting.SentenceFileName[0] = QStringLiteral("HELLO.MP2");
        QVERIFY(SentenceFilesPresent(*m_state));

        m_state->Setting.SentenceFileName[511] = QStringLiteral("RAIN2.MP2");
        m_state->Setting.SentenceFileName[7] = QStringLiteral("GONE.MP2");
        QVERIFY(!SentenceFilesPresent(*m_state));
        QCOMPARE(missingSentenceFiles(*m_state), (QStringList {"GONE.MP2", "RAIN2.MP2"}));
    }

    void clearingTheWorkFolderTakesOnlyMp2Files()
    {
        const QDir work(m_home.filePath(QStringLiteral("SoundTmp")));
        QDir().mkpath(work.path());
        for (const char *name : {"a.mp2", "b.Mp2", "c.mP2", "d.MP2", "e.wav", "f.mp3", "keep.mp2"})
            writeTestFile(work.filePath(QLatin1String(name)), "x");
        setReadOnly(work.filePath(QStringLiteral("keep.mp2")), true);
        ClearWorkFolder(*m_state);
        QCOMPARE(work.entryList(QDir::Files, QDir::Name), (QStringList {"e.wav", "f.mp3", "keep.mp2"}));
    }
};

QTEST_GUILESS_MAIN(tst_SentenceFolders)
#include "tst_SentenceFolders.moc"
