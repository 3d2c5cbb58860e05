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
    void projectNameRefusesForbiddenCharacters()
    {
        GuiFixture f;
        frmPjName dialog(f.context, nullptr);
        QCOMPARE(dialog.windowTitle(), QStringLiteral(" Project name setting"));
        auto *text = dialog.findChild<QLineEdit *>(QStringLiteral("txtPjName"));
        f.msgBox.script({MsgBox::Answer::Ok});
        QTest::keyClicks(text, QStringLiteral("Gate,"));
        QCOMPARE(f.msgBox.shown, QStringList {"Incorrect value has been entered."});
        QCOMPARE(text->text(), QStringLiteral("Gate"));
    }

    void projectNameRefusesWhatTheFileOrTheFolderCannotTake_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<bool>("byOk");
        QTest::newRow("character CP932 cannot hold") << QStringLiteral("Caf\u00E9") << "Caf" << false;
        QTest::newRow("the parent folder") << ".."
                                           << ".." << true;
        QTest::newRow("the program folder") << "."
                                            << "." << true;
    }
    void projectNameRefusesWhatTheFileOrTheFolderCannotTake()
    {
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        QFETCH(bool, byOk);
        GuiFixture f;
        frmPjName dialog(f.context, nullptr);
        auto *text = dialog.findChild<QLineEdit *>(QStringLiteral("txtPjName"));
        f.msgBox.script({MsgBox::Answer::Ok});
        typeText(text, typed);
        QCOMPARE(text->text(), shown);
        if (byOk)
            dialog.findChild<QPushButton *>(QStringLiteral("cmdOK"))->click();
        QCOMPARE(f.msgBox.shown, QStringList {"Incorrect value has been entered."});
        QVERIFY(f.state->Setting.ProjectName.isEmpty());
        QCOMPARE(dialog.result(), 0);
        QVERIFY(f.msgBox.unexpected.isEmpty());
    }

    void projectNameOkAndCancel()
    {
        GuiFixture f;
        QDir(f.home.path()).mkdir(QStringLiteral("Taken"));
        frmPjName dialog(f.context, nullptr);
        auto *text = dialog.findChild<QLineEdit *>(QStringLiteral("txtPjName"));
        auto *ok = dialog.findChild<QPushButton *>(QStringLiteral("cmdOK"));

        f.msgBox.script({MsgBox::Answer::Ok});
        ok->click();
        QCOMPARE(f.msgBox.shown.last(), QStringLiteral("Incorrect value has been entered."));

        text->setText(QStringLiteral("Taken"));
        f.msgBox.script({MsgBox::Answer::Cancel});
        ok->click();
        QCOMPARE(f.msgBox.shown.last(), QStringLiteral(" Set folder of Sentence file:Taken"));
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
        QVERIFY(f.state->Setting.ProjectName.isEmpty());

        f.msgBox.script({MsgBox::Answer::Ok});
        ok->click();
        QCOMPARE(f.state->Setting.ProjectName, QStringLiteral("Taken"));
        QCOMPARE(dialog.result(), int(QDialog::Accepted));

        dialog.findChild<QPushButton *>(QStringLiteral("cmdCancel"))->click();
        QVERIFY(f.state->Setting.ProjectName.isEmpty());
        QVERIFY(f.msgBox.unexpected.isEmpty());
    }

    void errorListCountsMissingFiles()
    {
        GuiFixture f;
        f.state->Setting.ProjectName = QStringLiteral("Station");
        QDir(f.home.path()).mkpath(QStringLiteral("Station"));
        QFile present(f.home.filePath(QStringLiteral("Station/HELLO.MP2")));
        QVERIFY(present.open(QIODevice::WriteOnly));
        f.state->Setting.SentenceFileName[0] = QStringLiteral("HELLO.MP2");
        dlgErrLog none(*f.state, nullptr);
        QCOMPARE(none.findChild<QLabel *>(QStringLiteral("lblErrCount"))->text(),
                 QStringLiteral(" Not find file count:  0"));

        f.state->Setting.SentenceFileName[300] = QStringLiteral("GONE.MP2");
        dlgErrLog one(*f.state, nullptr);
        QCOMPARE(one.windowTitle(), QStringLiteral(" Not find file list"));
        QCOMPARE(one.findChild<QListWidget *>(QStringLiteral("listErr"))->item(0)->text(),
                 QStringLiteral("GONE.MP2"));
        QCOMPARE(one.findChild<QLabel *>(QStringLiteral("lblErrCount"))->text(),
                 QStringLiteral(" Not find file count:  1"));
        QCOMPARE(one.findChild<QPushButton *>(QStringLiteral("OKButton"))->text(), QStringLiteral("Ok"));
    }

    void aboutBoxOffersSystemInformationOnlyWhereThereIsSome_data()
    {
        QTest::addColumn<QString>("program"); // what the search found, "" for nothing
        QTest::addColumn<bool>("offered");
        QTest::addColumn<bool>("runs");
        QTest::newRow("none on this system") << "" << false << false;
        QTest::newRow("found") << "sysinfo" << true << true;
        QTest::newRow("found, removed since") << "gone" << true << false;
    }
    void aboutBoxOffersSystemInformationOnlyWhereThereIsSome()
    {
        QFETCH(QString, program);
        QFETCH(bool, offered);
        QFETCH(bool, runs);
        GuiFixture f;
        const QString ran = f.home.filePath(QStringLiteral("ran"));
        if (program == QLatin1String("sysinfo")) {
            program = f.home.filePath(program);
            QFile script(program);
            QVERIFY(script.open(QIODevice::WriteOnly));
            script.write("#!/bin/sh\ntouch '" + ran.toUtf8() + "'\n");
            script.close();
            script.setPermissions(script.permissions() | QFile::ExeOwner);
        } else if (!program.isEmpty()) {
            program = f.home.filePath(program);
        }
        frmAbout about(f.msgBox, nullptr, program);
        about.show();
        QCOMPARE(about.windowTitle(), QStringLiteral("Version Information(Dq480pcsoft)"));
        QCOMPARE(about.findChild<QLabel *>(QStringLiteral("lblVersion"))->text(),
                 QStringLiteral("Dq480pcsoft Version 1.01"));
        auto *sysInfo = about.findChild<QPushButton *>(QStringLiteral("cmdSysInfo"));
        QCOMPARE(sysInfo->isVisible(), offered);

        f.msgBox.answerOkBoxes = true;
        about.StartSysInfo();
        if (runs) {
            QTRY_VERIFY(QFile::exists(ran));
            QVERIFY(f.msgBox.shown.isEmpty());
        } else {
            QCOMPARE(f.msgBox.shown, QStringList {QStringLiteral("現時点ではｼｽﾃﾑ情報を使用できません")});
        }
    }

    void systemInformationProgramIsLookedUp_data()
    {
        QTest::addColumn<QStringList>("installed");
        QTest::addColumn<QString>("found");
        QTest::newRow("nothing installed") << QStringList {} << "";
        QTest::newRow("other programs only") << QStringList {"top", "htop"} << "";
        QTest::newRow("hardinfo") << QStringList {"hardinfo"} << "hardinfo";
        QTest::newRow("hardinfo2 before hardinfo") << QStringList {"hardinfo", "hardinfo2"} << "hardinfo2";
        QTest::newRow("system monitor") << QStringList {"gnome-system-monitor"} << "gnome-system-monitor";
    }
    void systemInformationProgramIsLookedUp()
    {
#ifdef Q_OS_WIN
        QSKIP("Windows finds its system information program in the registry");
#endif
        QFETCH(QStringList, installed);
        QFETCH(QString, found);
        QTemporaryDir bin;
        for (const QString &name : installed) {
            QFile program(bin.filePath(name));
            QVERIFY(program.open(QIODevice::WriteOnly));
            program.close();
            program.setPermissions(program.permissions() | QFile::ExeOwner);
        }
        QCOMPARE(findSystemInformationProgram({bin.path()}),
                 found.isEmpty() ? QString() : bin.filePath(found));
    }

    void folderDialogOkAndCancel()
    {
        QTemporaryDir dir;
        QDir(dir.path()).mkpath(QStringLiteral("voice/rain"));
        QFile(dir.filePath(QStringLiteral("voice/A.MP2"))).open(QIODevice::WriteOnly);
        const QString start = dir.filePath(QStringLiteral("voice")) + QLatin1Char('/');

        frmSetPath dialog(start, nullptr);
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Path Setting"));
        QCOMPARE(dialog.chosenFolder(), dir.filePath(QStringLiteral("voice")));
        QCOMPARE(dialog.findChild<QListWidget *>(QStringLiteral("File1"))->item(0)->text(),
                 QStringLiteral("A.MP2"));
        auto *dirs = dialog.findChild<QListWidget *>(QStringLiteral("Dir1"));
        emit dirs->itemActivated(dirs->findItems(QStringLiteral("rain"), Qt::MatchExactly).first());
        QCOMPARE(dialog.chosenFolder(), dir.filePath(QStringLiteral("voice/rain")));
        dialog.findChild<QPushButton *>(QStringLiteral("cmdCancel"))->click();
        QCOMPARE(dialog.chosenFolder(), dir.filePath(QStringLiteral("voice")));
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
