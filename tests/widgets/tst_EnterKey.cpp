#include "sentence/dlgPcCa.h"
#include "support/GuiFixture.h"
#include "widgets/frmPjName.h"

#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <memory>
#include <utility>
#include <vector>

// Enter in a dialog's input belongs to that input; it must never press a button of the dialog, least of all
// the one that stores and closes.
class tst_EnterKey : public QObject
{
    Q_OBJECT

    std::unique_ptr<GuiFixture> f;

    std::unique_ptr<QDialog> makeDialog(const QString &name)
    {
        if (name == QLatin1String("dlgPcCa"))
            return std::make_unique<dlgPcCa>(f->context, nullptr);
        return std::make_unique<frmPjName>(f->context, nullptr);
    }

private slots:
    void init() { f = std::make_unique<GuiFixture>(); }
    void cleanup() { f.reset(); }

    void enterStaysInTheInput_data()
    {
        QTest::addColumn<QString>("dialogName");
        QTest::addColumn<QString>("input");
        QTest::addColumn<QString>("typed");
        QTest::newRow("sentence table box") << "dlgPcCa"
                                            << "TxtPcCa_1"
                                            << "";
        QTest::newRow("project name") << "frmPjName"
                                      << "txtPjName"
                                      << "Gate";
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
};

QTEST_MAIN(tst_EnterKey)
#include "tst_EnterKey.moc"
