#include "GuiFixture.h"
#include "PrintValues.h"
#include "SettingFileWriter.h"
#include "TestFiles.h"
#include "frmPrintPage.h"

#include <QComboBox>
#include <QLineEdit>
#include <QProcess>
#include <QRadioButton>
#include <QStandardPaths>
#include <QTest>

namespace V = PrintValues;

class tst_Printing : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QString m_project;

    // The text of a PDF made by the command-line tool, or a skip when poppler-utils is missing.
    QString pdfText(const QStringList &printArgs, int *pages = nullptr)
    {
        const QString pdf = m_dir.filePath(QStringLiteral("out.pdf"));
        QFile::remove(pdf);
        QProcess cli;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("DQ480_HOME"), m_dir.path());
        cli.setProcessEnvironment(env);
        cli.start(QStringLiteral(DQ480_CLI),
                  QStringList {QStringLiteral("print"), m_project} << printArgs << QStringLiteral("--pdf")
                                                                   << pdf);
        cli.waitForFinished(60000);
        if (cli.exitCode() != 0)
            qWarning() << cli.readAllStandardError();
        QProcess text;
        text.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
        text.waitForFinished(60000);
        const QString out = QString::fromUtf8(text.readAllStandardOutput());
        if (pages)
            *pages = static_cast<int>(out.count(QLatin1Char('\f')));
        return out;
    }

private slots:
    void initTestCase()
    {
        // 512 sentences and 64 programs of varied settings and steps.
        GuiFixture f;
        fillFullProject(f.state->Setting);
        m_project = m_dir.filePath(QStringLiteral("full.stf"));
        writeTestFile(m_project, WriteSettingFile(*f.state));
    }

    void values_data()
    {
        QTest::addColumn<qint32>("option");
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("interval");
        QTest::addColumn<QString>("method");
        QTest::addColumn<QString>("countText");
        QTest::addColumn<QString>("intervalText");
        QTest::addColumn<QString>("busy");
        QTest::addColumn<QString>("level");
        QTest::newRow("new program") << qint32(0x2D01) << 1 << 0 << "Continuous"
                                     << "1"
                                     << "OFF"
                                     << ""
                                     << "6";
        QTest::newRow("single, 30 s") << qint32(0x4001) << 0 << 3 << "Single"
                                      << "0"
                                      << "30Sec"
                                      << "ON"
                                      << "1";
        QTest::newRow("repeat endless, 50 s") << qint32(0x6700) << 0 << 5 << "Repeat"
                                              << "Endless"
                                              << "50Sec"
                                              << "OFF"
                                              << "8";
        QTest::newRow("repeat, 1 minute") << qint32(0x6100) << 3 << 6 << "Repeat"
                                          << "3"
                                          << "1Minute"
                                          << "OFF"
                                          << "2";
        QTest::newRow("repeat, 99 minutes") << qint32(0x6100) << 3 << 104 << "Repeat"
                                            << "3"
                                            << "99Minute"
                                            << "OFF"
                                            << "2";
        QTest::newRow("endless, 3 s play") << qint32(0xC018) << 0 << 0 << "Endless"
                                           << "0"
                                           << "3Sec"
                                           << ""
                                           << "1";
        QTest::newRow("endless as a file gives it") << qint32(0xFFFFC028) << 0 << 9 << "Endless"
                                                    << "0"
                                                    << "5Sec"
                                                    << ""
                                                    << "1";
        QTest::newRow("unknown method") << qint32(0xA000) << 1 << 0 << "Setting Data Error"
                                        << "1"
                                        << "OFF"
                                        << ""
                                        << "1";
    }
    void values()
    {
        QFETCH(qint32, option);
        QFETCH(int, count);
        QFETCH(int, interval);
        QFETCH(QString, method);
        QFETCH(QString, countText);
        QFETCH(QString, intervalText);
        QFETCH(QString, busy);
        QFETCH(QString, level);
        QCOMPARE(V::methodText(option), method);
        QCOMPARE(V::repeatCountText(static_cast<qint16>(count), option), countText);
        QCOMPARE(V::repeatIntervalText(static_cast<qint16>(interval), option), intervalText);
        QCOMPARE(V::busyText(option), busy);
        QCOMPARE(V::outputLevelText(option), level);
    }

    void steps_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("shown");
        QTest::newRow("sentence") << "0001"
                                  << "A001";
        QTest::newRow("sentence 512") << "0512"
                                      << "A512";
        QTest::newRow("whole wait") << "2005"
                                    << "M005";
        QTest::newRow("2200 is still whole") << "2200"
                                             << "M200";
        QTest::newRow("tenths") << "2215"
                                << "M1.5";
        QTest::newRow("empty") << ""
                               << "";
    }
    void steps()
    {
        QFETCH(QString, stored);
        QFETCH(QString, shown);
        QCOMPARE(V::stepText(stored), shown);
    }

    void printOuts_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QStringList>("expected");
        QTest::addColumn<QStringList>("absent");
        QTest::newRow("info") << QStringList {"--kind", "info"}
                              << QStringList {"File information copy",
                                              "Project name",
                                              "Full",
                                              "Explanation",
                                              "second line",
                                              "Sentences",
                                              "512",
                                              "Test tone",
                                              "page 1 / 1"}
                              << QStringList {"Sentence table", "P001"};
        QTest::newRow("all") << QStringList {"--kind", "all"} << QStringList {"All setting data copy",
                                                                              "Sentence table",
                                                                              "S001.MP2",
                                                                              "S512.MP2",
                                                                              "A512",
                                                                              "P064",
                                                                              "Playback method",
                                                                              "Output Level",
                                                                              "Repeat interval",
                                                                              "M1.5"}
                             << QStringList {};
        QTest::newRow("programs") << QStringList {"--kind", "programs"}
                                  << QStringList {"All program copy", "P001", "P064", "Endless",
                                                  "Interval busy output"}
                                  << QStringList {"Sentence table", "S001.MP2"};
        QTest::newRow("one program") << QStringList {"--kind", "program=5"}
                                     << QStringList {"Print out program number:P005", "P005", "page 1 / 1"}
                                     << QStringList {"P006", "P004"};
    }
    void printOuts()
    {
        QFETCH(QStringList, args);
        QFETCH(QStringList, expected);
        QFETCH(QStringList, absent);
        if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
            QSKIP("pdftotext (poppler-utils) is not installed");
        const QString text = pdfText(args);
        for (const QString &line : expected)
            QVERIFY2(text.contains(line), qPrintable(line));
        for (const QString &line : absent)
            QVERIFY2(!text.contains(line), qPrintable(line));
    }

    void aPageRange()
    {
        if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
            QSKIP("pdftotext (poppler-utils) is not installed");
        int all = 0;
        const QString whole = pdfText({QStringLiteral("--kind"), QStringLiteral("all")}, &all);
        QVERIFY(all > 5);
        int some = 0;
        const QString part = pdfText({QStringLiteral("--kind"), QStringLiteral("all"),
                                      QStringLiteral("--pages"), QStringLiteral("2-3")},
                                     &some);
        QCOMPARE(some, 2);
        QVERIFY(part.contains(QStringLiteral("page 2 / %1").arg(all)));
        QVERIFY(part.contains(QStringLiteral("page 3 / %1").arg(all)));
        QVERIFY(!part.contains(QStringLiteral("page 1 / ")));
    }

    void theDialogChecksTheRangeAndSavesAPdf()
    {
        GuiFixture f;
        fillFullProject(f.state->Setting);
        frmPrintPage dialog(f.context, PrintKind::AllPrograms, 1, nullptr);
        auto *printers = findControl<QComboBox>(&dialog, QStringLiteral("cmbPrinter"));
        printers->setCurrentIndex(printers->findText(frmPrintPage::pdfChoice()));
        findControl<QRadioButton>(&dialog, QStringLiteral("optPageRange"))->setChecked(true);
        findControl<QLineEdit>(&dialog, QStringLiteral("txtFromPage"))->setText(QStringLiteral("1-"));
        f.msgBox.script({MsgBox::Answer::Ok});
        QVERIFY(!dialog.cmdPrint_Click());
        QCOMPARE(f.msgBox.shown, QStringList {"Incorrect value has been entered."});

        findControl<QLineEdit>(&dialog, QStringLiteral("txtFromPage"))->setText(QStringLiteral("2"));
        findControl<QLineEdit>(&dialog, QStringLiteral("txtToPage"))->setText(QStringLiteral("2"));
        const QString pdf = f.home.filePath(QStringLiteral("programs.pdf"));
        f.fileDialogs.answers << pdf;
        QVERIFY(dialog.cmdPrint_Click());
        QVERIFY(readTestFile(pdf).startsWith("%PDF"));
    }
};

QTEST_MAIN(tst_Printing)
#include "tst_Printing.moc"
