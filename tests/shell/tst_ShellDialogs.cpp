#include "GuiFixture.h"
#include "SystemInfoProgram.h"
#include "TypeText.h"
#include "dlgErrLog.h"
#include "frmAbout.h"
#include "frmPjName.h"
#include "frmSetPath.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

class tst_ShellDialogs : public QObject
{
    Q_OBJECT

private slots:
    void projectNameRefusesWhatTheFileOrTheFolderCannotTake_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::newRow("the parent folder") << "..";
        QTest::newRow("the program folder") << ".";
    }
    void projectNameRefusesWhatTheFileOrTheFolderCannotTake()
    {
        QFETCH(QString, typed);
        GuiFixture f;
        frmPjName dialog(f.context, nullptr);
        auto *text = dialog.findChild<QLineEdit *>(QStringLiteral("txtPjName"));
        f.msgBox.script({MsgBox::Answer::Ok});
        typeText(text, typed);
        QCOMPARE(text->text(), typed);
        dialog.findChild<QPushButton *>(QStringLiteral("cmdOK"))->click();
        QCOMPARE(f.msgBox.shown, QStringList {"Incorrect value has been entered."});
        QVERIFY(f.state->Setting.ProjectName.isEmpty());
        QCOMPARE(dialog.result(), 0);
        QVERIFY(f.msgBox.unexpected.isEmpty());
    }

    void folderListOpensAFolderWithEnter_data()
    {
        QTest::addColumn<int>("key");
        QTest::newRow("Return") << int(Qt::Key_Return);
        QTest::newRow("Enter") << int(Qt::Key_Enter);
    }
    void folderListOpensAFolderWithEnter()
    {
        QFETCH(int, key);
        QTemporaryDir dir;
        QDir(dir.path()).mkpath(QStringLiteral("voice/rain"));
        frmSetPath dialog(dir.filePath(QStringLiteral("voice")), nullptr);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        auto *dirs = dialog.findChild<QListWidget *>(QStringLiteral("Dir1"));
        dirs->setFocus();
        dirs->setCurrentItem(dirs->findItems(QStringLiteral("rain"), Qt::MatchExactly).first());
        QTest::keyClick(dirs, Qt::Key(key));
        QCOMPARE(dialog.chosenFolder(), dir.filePath(QStringLiteral("voice/rain")));
        QVERIFY(dialog.isVisible()); // Enter opened the folder; it did not end the dialog

        // The opened folder's list starts at its first entry, "..", so Enter again goes back up.
        QCOMPARE(dirs->currentItem()->text(), QStringLiteral(".."));
        QTest::keyClick(dirs, Qt::Key(key));
        QCOMPARE(dialog.chosenFolder(), dir.filePath(QStringLiteral("voice")));
        QVERIFY(dialog.isVisible());
    }
};

QTEST_MAIN(tst_ShellDialogs)
#include "tst_ShellDialogs.moc"
