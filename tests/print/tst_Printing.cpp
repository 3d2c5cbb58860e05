#include "GuiFixture.h"
#include "PrintValues.h"
#include "SettingFileWriter.h"
#include "TestFiles.h"
#include "frmPrintPage.h"

#include <QBuffer>
#include <QComboBox>
#include <QLineEdit>
#include <QPdfWriter>
#include <QProcess>
#include <QRadioButton>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTest>
#include <QXmlStreamReader>

namespace V = PrintValues;

class tst_Printing : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QString m_project;

    // Runs the command-line tool's print command on `project`; its exit code.
    int printToPdf(const QString &project, const QStringList &printArgs, QString *errors = nullptr)
    {
        QFile::remove(pdfPath());
        QProcess cli;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("DQ480_HOME"), m_dir.path());
        cli.setProcessEnvironment(env);
        cli.start(QStringLiteral(DQ480_CLI),
                  QStringList {QStringLiteral("print"), project} << printArgs << QStringLiteral("--pdf")
                                                                 << pdfPath());
        cli.waitForFinished(60000);
        const QString stderrText = QString::fromLocal8Bit(cli.readAllStandardError());
        if (errors)
            *errors = stderrText;
        else if (cli.exitCode() != 0)
            qWarning() << stderrText;
        return cli.exitCode();
    }
    QString pdfPath() const { return m_dir.filePath(QStringLiteral("out.pdf")); }
    static QString pdfToText(const QStringList &options, const QString &pdf)
    {
        QProcess text;
        text.start(QStringLiteral("pdftotext"), QStringList(options) << pdf << QStringLiteral("-"));
        text.waitForFinished(60000);
        return QString::fromUtf8(text.readAllStandardOutput());
    }

    // The text of a PDF made by the command-line tool, or a skip when poppler-utils is missing.
    QString pdfText(const QStringList &printArgs, int *pages = nullptr, const QString &project = QString())
    {
        printToPdf(project.isEmpty() ? m_project : project, printArgs);
        const QString out = pdfToText({QStringLiteral("-layout")}, pdfPath());
        if (pages)
            *pages = static_cast<int>(out.count(QLatin1Char('\f')));
        return out;
    }

    // A project of its own for one test, saved as a setting file.
    QString saveProject(const SettingData &setting)
    {
        GuiFixture f;
        f.state->Setting = setting;
        const QString path = m_dir.filePath(QStringLiteral("own.stf"));
        writeTestFile(path, WriteSettingFile(*f.state));
        return path;
    }
    static SettingData newProject()
    {
        SettingData data;
        data.resetToNewProject();
        return data;
    }
    static bool hasLine(const QString &text, const QString &label, const QString &value)
    {
        const QRegularExpression line(
            QStringLiteral("^%1 +%2$")
                .arg(QRegularExpression::escape(label), QRegularExpression::escape(value)),
            QRegularExpression::MultilineOption);
        return line.match(text).hasMatch();
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

    void printedValues_data()
    {
        QTest::addColumn<qint32>("option");
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("interval");
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QStringList>("lines"); // label, value, label, value...
        QTest::addColumn<QString>("stepLine");
        QTest::newRow("new program") << qint32(0x2D01) << 1 << 0 << QStringList {"0001"}
                                     << QStringList {"Playback method", "Continuous",
                                                     "Output Level",    "6",
                                                     "Repeat count",    "1",
                                                     "Repeat interval", "OFF"}
                                     << "001: A001";
        QTest::newRow("single, busy on")
            << qint32(0x4001) << 0 << 3 << QStringList {"0512", "2005"}
            << QStringList {"Playback method", "Single", "Output Level",         "1",
                            "Repeat interval", "30Sec",  "Interval busy output", "ON"}
            << "001: A512 M005";
        QTest::newRow("repeat endless count")
            << qint32(0x6700) << 0 << 7 << QStringList {"2200", "2215", "0010"}
            << QStringList {"Playback method",      "Repeat",  "Output Level",    "8",
                            "Repeat count",         "Endless", "Repeat interval", "2Minute",
                            "Interval busy output", "OFF"}
            << "001: M200 M1.5 A010";
        QTest::newRow("endless plays every 3 s")
            << qint32(0xC018) << 0 << 9 << QStringList {"2001"}
            << QStringList {"Playback method", "Endless", "Output Level", "1", "Repeat interval", "3Sec"}
            << "001: M001";
        QTest::newRow("endless interval off the scale")
            << qint32(0xC330) << 0 << 0 << QStringList {"0002"}
            << QStringList {"Playback method", "Endless", "Output Level", "4", "Repeat interval", "OFF"}
            << "001: A002";
        QTest::newRow("unknown method") << qint32(0x8500) << 2 << 1 << QStringList {"0003"}
                                        << QStringList {"Playback method", "Setting Data Error",
                                                        "Output Level",    "6",
                                                        "Repeat count",    "2",
                                                        "Repeat interval", "10Sec"}
                                        << "001: A003";
    }
    void printedValues()
    {
        QFETCH(qint32, option);
        QFETCH(int, count);
        QFETCH(int, interval);
        QFETCH(QStringList, steps);
        QFETCH(QStringList, lines);
        QFETCH(QString, stepLine);
        if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
            QSKIP("pdftotext (poppler-utils) is not installed");
        SettingData project = newProject();
        project.ProgramOption[6] = option;
        project.RepeatCount[6] = static_cast<qint16>(count);
        project.RepeatInterval[6] = static_cast<qint16>(interval);
        project.ProgramData[6].fill(QString());
        std::copy(steps.begin(), steps.end(), project.ProgramData[6].begin());
        const QString text
            = pdfText({QStringLiteral("--kind"), QStringLiteral("program=7")}, nullptr, saveProject(project));
        QVERIFY2(text.contains(QStringLiteral("Print out program number:P007")), qPrintable(text));
        for (int i = 0; i + 1 < lines.size(); i += 2)
            QVERIFY2(hasLine(text, lines[i], lines[i + 1]),
                     qPrintable(lines[i] + " " + lines[i + 1] + "\n" + text));
        if (!lines.contains(QStringLiteral("Interval busy output")))
            QVERIFY(!text.contains(QStringLiteral("Interval busy output")));
        QVERIFY2(text.contains(QRegularExpression(QStringLiteral("^%1$").arg(stepLine),
                                                  QRegularExpression::MultilineOption)),
                 qPrintable(text));
    }

    void printedCardValues_data()
    {
        QTest::addColumn<int>("attribute");
        QTest::addColumn<QString>("protect");
        QTest::addColumn<QString>("sentences");
        QTest::newRow("new card") << 0xA6 << "OFF"
                                  << "128";
        QTest::newRow("write protect bit") << 0xB6 << "ON"
                                           << "128";
        QTest::newRow("only the protect bit") << 0x10 << "ON"
                                              << "128";
        QTest::newRow("every other bit") << 0xEF << "OFF"
                                         << "512";
    }
    void printedCardValues()
    {
        QFETCH(int, attribute);
        QFETCH(QString, protect);
        QFETCH(QString, sentences);
        if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
            QSKIP("pdftotext (poppler-utils) is not installed");
        SettingData project = newProject();
        project.CardAttribute = static_cast<qint16>(attribute);
        project.CardName = QStringLiteral("FRONT");
        const QString text
            = pdfText({QStringLiteral("--kind"), QStringLiteral("info")}, nullptr, saveProject(project));
        QVERIFY2(hasLine(text, QStringLiteral("Write protect"), protect), qPrintable(text));
        QVERIFY2(hasLine(text, QStringLiteral("Sentences"), sentences), qPrintable(text));
        QVERIFY2(hasLine(text, QStringLiteral("Card name"), QStringLiteral("FRONT")), qPrintable(text));
    }

    void aRowTallerThanAPageContinuesOnTheNext()
    {
        if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
            QSKIP("pdftotext (poppler-utils) is not installed");
        SettingData project = newProject();
        // As long as a setting file carries it: twelve lines, here of sixty words each.
        QStringList explanation;
        QStringList lines;
        for (int line = 0; line < 12; ++line) {
            QStringList words;
            for (int word = 1; word <= 60; ++word)
                words << QStringLiteral("remark%1").arg(line * 60 + word, 3, 10, QLatin1Char('0'));
            explanation << words;
            lines << words.join(QLatin1Char(' '));
        }
        project.Explanation = lines.join(QStringLiteral("\r\n"));
        QCOMPARE(printToPdf(saveProject(project), {QStringLiteral("--kind"), QStringLiteral("info")}), 0);

        // Every word of every page with its place; the footer "page n / m" is the lowest text.
        QXmlStreamReader xml(pdfToText({QStringLiteral("-bbox")}, pdfPath()));
        QList<QList<std::pair<QString, QRectF>>> pages;
        while (!xml.atEnd()) {
            if (xml.readNext() != QXmlStreamReader::StartElement)
                continue;
            if (xml.name() == QLatin1String("page")) {
                pages.append(QList<std::pair<QString, QRectF>>());
            } else if (xml.name() == QLatin1String("word")) {
                const QXmlStreamAttributes a = xml.attributes();
                const QRectF box(QPointF(a.value("xMin").toDouble(), a.value("yMin").toDouble()),
                                 QPointF(a.value("xMax").toDouble(), a.value("yMax").toDouble()));
                pages.last().append({xml.readElementText(), box});
            }
        }
        QCOMPARE(pages.size(), 2);
        QStringList remarks;
        for (int p = 0; p < pages.size(); ++p) {
            const auto &words = pages[p];
            qsizetype footer = -1;
            for (qsizetype w = 0; w + 3 < words.size(); ++w) {
                if (words[w].first == QLatin1String("page") && words[w + 1].first == QString::number(p + 1)
                    && words[w + 2].first == QLatin1String("/"))
                    footer = w;
            }
            QVERIFY2(footer >= 0, qPrintable(QStringLiteral("no footer on page %1").arg(p + 1)));
            const qreal footerTop = words[footer].second.top();
            for (qsizetype w = 0; w < words.size(); ++w) {
                if (w >= footer && w <= footer + 3)
                    continue;
                QVERIFY2(
                    words[w].second.bottom() < footerTop,
                    qPrintable(words[w].first + QStringLiteral(" reaches the footer of page %1").arg(p + 1)));
                if (words[w].first.startsWith(QLatin1String("remark")))
                    remarks << words[w].first;
            }
        }
        QCOMPARE(remarks, explanation);
    }

    void aRangeBeyondTheLastPageIsRefused_data()
    {
        QTest::addColumn<QString>("pages");
        QTest::newRow("one page past") << "2";
        QTest::newRow("ends past") << "1-2";
        QTest::newRow("starts past") << "3-4";
    }
    void aRangeBeyondTheLastPageIsRefused()
    {
        QFETCH(QString, pages);
        QString errors;
        QCOMPARE(
            printToPdf(m_project,
                       {QStringLiteral("--kind"), QStringLiteral("info"), QStringLiteral("--pages"), pages},
                       &errors),
            2);
        QVERIFY2(errors.endsWith(QStringLiteral("\nIncorrect value has been entered.\n"))
                     || errors == QStringLiteral("Incorrect value has been entered.\n"),
                 qPrintable(errors));
        QVERIFY(!QFile::exists(pdfPath()));
        QCOMPARE(printToPdf(m_project,
                            {QStringLiteral("--kind"), QStringLiteral("info"), QStringLiteral("--pages"),
                             QStringLiteral("1")}),
                 0);
        QVERIFY(QFile::exists(pdfPath()));
    }

    void theDialogRefusesPagesBeyondTheLast()
    {
        GuiFixture f;
        fillFullProject(f.state->Setting);
        QBuffer scratch;
        QPdfWriter sizing(&scratch);
        sizing.setResolution(300);
        const int count
            = renderPrintOut(sizing, buildPrintOut(*f.state, PrintKind::AllPrograms), printHeader(*f.state));
        QVERIFY(count > 2);
        frmPrintPage dialog(f.context, PrintKind::AllPrograms, 1, nullptr);
        auto *printers = findControl<QComboBox>(&dialog, QStringLiteral("cmbPrinter"));
        printers->setCurrentIndex(printers->findText(frmPrintPage::pdfChoice()));
        findControl<QRadioButton>(&dialog, QStringLiteral("optPageRange"))->setChecked(true);
        auto *from = findControl<QLineEdit>(&dialog, QStringLiteral("txtFromPage"));
        auto *to = findControl<QLineEdit>(&dialog, QStringLiteral("txtToPage"));
        from->setText(QString::number(count));
        to->setText(QString::number(count + 1));
        f.msgBox.script({MsgBox::Answer::Ok});
        QVERIFY(!dialog.cmdPrint_Click());
        QCOMPARE(f.msgBox.shown, QStringList {"Incorrect value has been entered."});
        QCOMPARE(f.fileDialogs.unexpected, 0); // refused before a file is asked for

        to->setText(QString::number(count));
        const QString pdf = f.home.filePath(QStringLiteral("last.pdf"));
        f.fileDialogs.answers << pdf;
        QVERIFY(dialog.cmdPrint_Click());
        QCOMPARE(f.msgBox.shown.size(), 1);
        if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
            QSKIP("pdftotext (poppler-utils) is not installed");
        const QString text = pdfToText({QStringLiteral("-layout")}, pdf);
        QCOMPARE(text.count(QLatin1Char('\f')), 1);
        QVERIFY(text.contains(QStringLiteral("page %1 / %1").arg(count)));
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
