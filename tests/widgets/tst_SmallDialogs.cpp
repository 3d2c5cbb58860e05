#include "support/GuiFixture.h"
#include "support/TypeText.h"
#include "widgets/frmPjName.h"
#include "widgets/frmSetPath.h"

#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

class tst_SmallDialogs : public QObject
{
    Q_OBJECT

private slots:
    void projectNameRefusesTheParentFolder()
    {
        const QString typed = QStringLiteral(".."); // the parent folder
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
        VERIFY_NO_UNEXPECTED_BOX(f.msgBox);
    }

    void folderListOpensAFolderWithEnter()
    {
        const auto key = Qt::Key_Return;
        QTemporaryDir dir;
        QDir(dir.path()).mkpath(QStringLiteral("voice/rain"));
        frmSetPath dialog(dir.filePath(QStringLiteral("voice")), nullptr);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        auto *dirs = dialog.findChild<QListWidget *>(QStringLiteral("Dir1"));
        dirs->setFocus();
        dirs->setCurrentItem(dirs->findItems(QStringLiteral("rain"), Qt::MatchExactly).first());
        QTest::keyClick(dirs, Qt::Key(key));
        QCOMPARE(dialog.chosenFolder(), QDir::toNativeSeparators(dir.filePath(QStringLiteral("voice/rain"))));
        QVERIFY(dialog.isVisible()); // Enter opened the folder; it did not end the dialog

        // The opened folder's list starts at its first entry, "..", so Enter again goes back up.
        QCOMPARE(dirs->currentItem()->text(), QStringLiteral(".."));
        QTest::keyClick(dirs, Qt::Key(key));
        QCOMPARE(dialog.chosenFolder(), QDir::toNativeSeparators(dir.filePath(QStringLiteral("voice"))));
        QVERIFY(dialog.isVisible());
    }
};

QTEST_MAIN(tst_SmallDialogs)
#include "tst_SmallDialogs.moc"
