#include "GuiFixture.h"
#include "PrintOut.h"
#include "ProgramWindowTable.h"
#include "TypeText.h"
#include "frmProg.h"
#include "frmStep.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTest>

class tst_frmProg : public QObject
{
    Q_OBJECT

    std::unique_ptr<GuiFixture> f;
    std::unique_ptr<QMdiArea> area;
    std::unique_ptr<ProgramWindowTable> table;
    QPointer<frmProg> window;
    QPointer<QMdiSubWindow> frame;

    SharedState &state() const { return *f->state; }

    template<typename T>
    T *control(const char *name) const
    {
        return findControl<T>(window, QLatin1String(name));
    }

    void open(int number)
    {
        table->ProgramWindowCount = 1;
        window = new frmProg(f->context, *table, 1, number, area.get());
        table->occupy(1, window, number);
        frame = area->addSubWindow(window);
        area->show();
        frame->show();
    }

    void chooseMethod(int index)
    {
        control<QComboBox>("cmbPrgMethod")->setCurrentIndex(index);
        window->cmbPrgMethod_Click();
    }

    frmStep *openSteps()
    {
        control<QPushButton>("cmdProgStep")->click();
        return window->stepWindow();
    }

    // The "Output Level" of program `number` in its print-out.
    QString printedLevel(int number) const
    {
        for (const PrintRow &row : buildPrintOut(state(), PrintKind::OneProgram, number))
            if (row.cells.size() == 2 && row.cells[0] == QLatin1String("Output Level"))
                return row.cells[1];
        return QString();
    }

    void typeStep(frmStep *steps, int index, const QString &text)
    {
        steps->box(index)->setText(text);
        steps->txtStpIdx_LostFocus(index);
    }

private slots:
    void init()
    {
        f = std::make_unique<GuiFixture>();
        area = std::make_unique<QMdiArea>();
        table = std::make_unique<ProgramWindowTable>();
    }
    void cleanup()
    {
        QVERIFY2(f->msgBox.unexpected.isEmpty(), qPrintable(f->msgBox.unexpected.join(QLatin1Char('|'))));
        f->msgBox.answers.clear();
        area.reset();
        table.reset();
        f.reset();
    }

    void endlessKeepsItsPlayIntervalThroughOk_data()
    {
        QTest::addColumn<qint32>("option");
        QTest::addColumn<qint16>("interval");
        QTest::newRow("1 s, interval in minutes") << 0xC508 << qint16(8);
        QTest::newRow("5 s and busy, interval in minutes") << 0xC529 << qint16(10);
    }
    void endlessKeepsItsPlayIntervalThroughOk()
    {
        QFETCH(qint32, option);
        QFETCH(qint16, interval);
        for (SettingData *data : {&state().Setting, &state().SettingBuffer}) {
            data->ProgramOption[4] = option;
            data->RepeatInterval[4] = interval;
        }
        open(5);
        QCOMPARE(state().SettingBuffer.ProgramOption[4], option);
        control<QPushButton>("cmdProgOk")->click();
        QCOMPARE(state().Setting.ProgramOption[4], option);
        QCOMPARE(state().Setting.RepeatInterval[4], qint16(0));
        QVERIFY(f->msgBox.shown.isEmpty());
    }

    void stepCaptionNamesItsOwnProgram()
    {
        state().ProjectFileName = QStringLiteral("station.stf");
        open(1);
        frmProg *first = window;
        frmStep *firstSteps = openSteps();
        auto *second = new frmProg(f->context, *table, 2, 2, area.get());
        table->occupy(2, second, 2);
        area->addSubWindow(second)->show();
        second->cmdProgStep_Click();
        QCOMPARE(second->stepWindow()->windowTitle(),
                 QStringLiteral("Continuous - Step Input :  station.stf - P002"));

        chooseMethod(2); // program 1's window
        QCOMPARE(firstSteps->windowTitle(), QStringLiteral("Repeat - Step Input :  station.stf - P001"));
        QCOMPARE(second->stepWindow()->windowTitle(),
                 QStringLiteral("Continuous - Step Input :  station.stf - P002"));
        QCOMPARE(first->programNumber(), 1);
    }

    void discardingInTheStepWindowRevertsTheProgramWindow()
    {
        open(1);
        chooseMethod(2);
        control<QLineEdit>("txtProgName")->setText(QStringLiteral("Evening"));
        window->txtProgName_LostFocus();
        frmStep *steps = openSteps();
        typeStep(steps, 0, QStringLiteral("A005"));
        f->msgBox.script({MsgBox::Answer::Ok});
        findControl<QPushButton>(steps, QStringLiteral("cmdStpClose"))->click();
        QCOMPARE(f->msgBox.shown, QStringList {ContentsQuestion});
        QVERIFY(state().SettingEqualsBuffer(SettingSection::All));

        QCOMPARE(control<QComboBox>("cmbPrgMethod")->currentText(), QStringLiteral("1.Continuous"));
        QVERIFY(control<QGroupBox>("fraPrg1")->isHidden());
        QCOMPARE(control<QLineEdit>("txtProgName")->text(), QStringLiteral("P001"));
        QVERIFY(!control<QPushButton>("cmdProgSave")->isEnabled());
        QCOMPARE(window->methodName(), QStringLiteral("Continuous"));

        control<QPushButton>("cmdProgOk")->click();
        QCOMPARE(state().Setting.ProgramOption[0], 0x2D01);
        QCOMPARE(state().Setting.ProgramName[0], QStringLiteral("P001"));
        QCOMPARE(f->msgBox.shown.size(), 1);
    }

    // Each output level of a stored option word shows as stored, in its box, on its bar and in the
    // print-out; a level typed over it is what OK and Apply store, with the word's other bits kept.
    void outputLevelShownIsStored_data()
    {
        QTest::addColumn<int>("level");
        QTest::addColumn<QString>("button");
        for (int level = 1; level <= 8; ++level) {
            QTest::addRow("%d, OK", level) << level << "cmdProgOk";
            QTest::addRow("%d, Apply", level) << level << "cmdProgSave";
        }
    }
    void outputLevelShownIsStored()
    {
        QFETCH(int, level);
        QFETCH(QString, button);
        constexpr qint32 Others = 0x6801; // Repeat, a bit of no field, busy output on
        for (SettingData *data : {&state().Setting, &state().SettingBuffer}) {
            data->ProgramOption[2] = Others | (level - 1) << 8;
            data->RepeatCount[2] = 3;
        }
        open(3);
        auto *box = control<QLineEdit>("txtAutoVol");
        QCOMPARE(box->text(), QString::number(level));
        QCOMPARE(control<QScrollBar>("vsAutoVol")->value(), 9 - level);
        QCOMPARE(printedLevel(3), QString::number(level));

        const int typed = 9 - level;
        box->selectAll();
        typeText(box, QString::number(typed));
        QVERIFY(window->txtAutoVol_LostFocus());
        QCOMPARE(control<QScrollBar>("vsAutoVol")->value(), level);
        findControl<QPushButton>(window, button)->click();
        QCOMPARE(state().Setting.ProgramOption[2], Others | (typed - 1) << 8);
        QCOMPARE(printedLevel(3), QString::number(typed));
        QVERIFY(f->msgBox.shown.isEmpty());
    }
};

QTEST_MAIN(tst_frmProg)
#include "tst_frmProg.moc"
