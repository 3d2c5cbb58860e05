#include "print/frmPrintPage.h"
#include "setting/SettingFileWriter.h"
#include "support/GuiFixture.h"
#include "support/TestFiles.h"

#include <QBuffer>
#include <QComboBox>
#include <QLineEdit>
#include <QPdfWriter>
#include <QProcess>
#include <QRadioButton>
#include <QStandardPaths>
#include <QTest>
#include <QXmlStreamReader>

class tst_Printing : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    // Runs the command-line tool's print command on `project`; its exit code.
    int printToPdf(const QString &project, const QStringList &printArgs)
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
        if (cli.exitCode() != 0)
            qWarning() << cli.readAllStandardError();
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

private slots:
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
};

QTEST_MAIN(tst_Printing)
#include "tst_Printing.moc"
