#include "FileAttributes.h"
#include "ProjectFile.h"
#include "TestProjects.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "TestFiles.h"

class tst_ProjectFile : public QObject
{
    Q_OBJECT

private slots:
    void folderDisplay_data()
    {
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("shown");
        const QString thirty = QStringLiteral("/home/operator/projects/a/b/c/");
        QTest::newRow("new project") << "New File"
                                     << "/home/op/"
                                     << "";
        QTest::newRow("no name") << ""
                                 << "/home/op/"
                                 << "";
        QTest::newRow("30 characters whole") << "a.stf" << thirty << thirty;
        QTest::newRow("31 characters shortened")
            << "a.stf" << thirty + QLatin1Char('d') << QStringLiteral("/home/operator/...jects/a/b/c/d");
    }
    void folderDisplay()
    {
        QFETCH(QString, fileName);
        QFETCH(QString, folder);
        QFETCH(QString, shown);
        QCOMPARE(folderDisplayText(fileName, folder), shown);
        QVERIFY(shown.size() <= 31);
    }

    void saveAsksForANameUnlessStf_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("asks");
        QTest::newRow("new project") << "New File" << true;
        QTest::newRow("empty") << "" << true;
        QTest::newRow("card control file") << "/media/card/CONTENTS/DQ480.CSV" << true;
        QTest::newRow("upper-case extension") << "/home/op/A.STF" << true;
        QTest::newRow("setting file") << "/home/op/a.stf" << false;
    }
    void saveAsksForANameUnlessStf()
    {
        QFETCH(QString, path);
        QFETCH(bool, asks);
        const auto state = makeTestState(QStringLiteral("/tmp"));
        state->ProjectFilePath = path;
        QCOMPARE(saveNeedsNewName(*state), asks);
    }

    void aFailedSaveKeepsTheOldFileAndTheUnsavedState()
    {
        QTemporaryDir dir;
        const auto state = makeTestState(dir.path());
        const QString path = dir.filePath(QStringLiteral("kept.stf"));
        QString error;
        QVERIFY(SaveProjectTo(*state, path, error));
        QCOMPARE(state->ProjectFileName, QStringLiteral("kept.stf"));
        QCOMPARE(state->ProjectFolder, dir.path() + QLatin1Char('/'));
        const QByteArray before = readTestFile(path);

        setReadOnly(path, true);
        state->Setting.ProjectName = QStringLiteral("changed");
        QVERIFY(!SaveProjectTo(*state, path, error));
        QVERIFY(error.contains(path));
        QVERIFY(!state->SettingEqualsSaved());
        QCOMPARE(readTestFile(path), before);
    }
};

QTEST_GUILESS_MAIN(tst_ProjectFile)
#include "tst_ProjectFile.moc"
