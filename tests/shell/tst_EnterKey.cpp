#include "GuiFixture.h"
#include "dlgCaPc.h"
#include "dlgErrLog.h"
#include "dlgPcCa.h"
#include "frmPjName.h"
#include "frmPrintPage.h"

#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <memory>
#include <utility>
#include <vector>

// Enter in a dialog's input belongs to that input (the sentence table moves to the next box); it
// must never press a button of the dialog, least of all the one that stores and closes.
class tst_EnterKey : public QObject
{
    Q_OBJECT

    std::unique_ptr<GuiFixture> f;

    std::unique_ptr<QDialog> makeDialog(const QString &name)
    {
        if (name == QLatin1String("dlgPcCa"))
            return std::make_unique<dlgPcCa>(f->context, nullptr);
        if (name == QLatin1String("dlgCaPc"))
            return std::make_unique<dlgCaPc>(f->context, nullptr);
        if (name == QLatin1String("frmPjName"))
            return std::make_unique<frmPjName>(f->context, nullptr);
        if (name == QLatin1String("frmPrintPage"))
            return std::make_unique<frmPrintPage>(f->context, PrintKind::AllSettingData, 1, nullptr);
        if (name == QLatin1String("dlgErrLog"))
            return std::make_unique<dlgErrLog>(*f->state, nullptr);
        qFatal("no dialog %s", qPrintable(name));
    }

private slots:
    void init()
    {
        f = std::make_unique<GuiFixture>();
        // A sentence named by the project but missing gives the error list a line to stand on.
        f->state->Setting.SentenceFileName[0] = f->state->SettingBuffer.SentenceFileName[0]
            = QStringLiteral("GONE.MP2");
        f->state->SentencePath = f->home.path() + QLatin1Char('/');
    }
    void cleanup() { f.reset(); }

    void enterStaysInTheInput_data()
    {
        QTest::addColumn<QString>("dialogName");
        QTest::addColumn<QString>("input");
        QTest::addColumn<QString>("typed");
        QTest::newRow("sentence table box") << "dlgPcCa"
                                            << "TxtPcCa_1"
                                            << "";
        QTest::newRow("card to PC folder name") << "dlgCaPc"
                                                << "txtCaPcAllInp"
                                                << "Backup";
        QTest::newRow("project name") << "frmPjName"
                                      << "txtPjName"
                                      << "Gate";
        QTest::newRow("first page") << "frmPrintPage"
                                    << "txtFromPage"
                                    << "1";
        QTest::newRow("missing file list") << "dlgErrLog"
                                           << "listErr"
                                           << "";
    }
    void enterStaysInTheInput()
    {
        QFETCH(QString, dialogName);
        QFETCH(QString, input);
        QFETCH(QString, typed);
        const SettingData before = f->state->Setting;
        std::unique_ptr<QDialog> dialog = makeDialog(dialogName);
        std::vector<std::pair<QString, std::unique_ptr<QSignalSpy>>> presses;
        for (QPushButton *button : dialog->findChildren<QPushButton *>())
            presses.emplace_back(button->objectName(),
                                 std::make_unique<QSignalSpy>(button, &QPushButton::clicked));
        dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
        auto *control = findControl<QWidget>(dialog.get(), input);
        control->setFocus();
        if (!typed.isEmpty())
            QTest::keyClicks(control, typed);

        QTest::keyClick(control, Qt::Key_Return);
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Enter);

        QVERIFY2(dialog->isVisible(), "Enter closed the dialog");
        for (const auto &[button, spy] : presses)
            QVERIFY2(spy->isEmpty(), qPrintable(button + QStringLiteral(" was pressed")));
        QVERIFY(settingSectionEquals(f->state->Setting, before, SettingSection::All));
        QVERIFY(f->msgBox.shown.isEmpty());
        QCOMPARE(f->fileDialogs.unexpected, 0);
        dialog->hide();
    }

    // Enter on a button that has the focus presses it, as Space does.
    void enterPressesTheFocusedButton()
    {
        dlgPcCa dialog(f->context, nullptr);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        auto *cancel = findControl<QPushButton>(&dialog, QStringLiteral("cmdPcCaClose"));
        cancel->setFocus();
        QTest::keyClick(cancel, Qt::Key_Return);
        QVERIFY(!dialog.isVisible());
    }

    // The sentence table opens in its first box; Tab goes from the path to the boxes, then to the
    // commands under them.
    void tabGoesThroughTheSentenceTableAsDrawn()
    {
        dlgPcCa dialog(f->context, nullptr);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        QCOMPARE(dialog.focusWidget(), dialog.box(0));
        QTest::keyClick(dialog.box(0), Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(dialog.focusWidget()->objectName(), QStringLiteral("cmdsentPath"));
        dialog.box(127)->setFocus();
        QTest::keyClick(dialog.box(127), Qt::Key_Tab);
        QCOMPARE(dialog.focusWidget()->objectName(), QStringLiteral("cmdPcCaAll"));
    }

    void enterMovesThroughTheSentenceTable()
    {
        dlgPcCa dialog(f->context, nullptr);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        dialog.box(1)->setFocus();
        QTest::keyClick(dialog.box(1), Qt::Key_Return);
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
        QCOMPARE(dialog.focusWidget(), dialog.box(3));
        QVERIFY(dialog.isVisible());
        // Past the last column in view, the table scrolls to the box Enter went to.
        dialog.box(63)->setFocus();
        QTest::keyClick(dialog.box(63), Qt::Key_Return);
        QCOMPARE(dialog.focusWidget(), dialog.box(64));
        const int first = findControl<QScrollBar>(&dialog, QStringLiteral("hscCaPc"))->value();
        QVERIFY2(first <= 64 / dlgPcCa::Rows && 64 / dlgPcCa::Rows < first + dlgPcCa::VisibleColumns,
                 qPrintable(QString::number(first)));
        dialog.box(127)->setFocus();
        QTest::keyClick(dialog.box(127), Qt::Key_Return);
        QCOMPARE(dialog.focusWidget(), dialog.box(127));
    }
};

QTEST_MAIN(tst_EnterKey)
#include "tst_EnterKey.moc"
