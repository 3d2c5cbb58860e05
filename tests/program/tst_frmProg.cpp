#include "print/PrintOut.h"
#include "program/ProgramWindowTable.h"
#include "program/frmProg.h"
#include "program/frmStep.h"
#include "setting/ProgramOptionWord.h"
#include "support/GuiFixture.h"
#include "support/RealBoxes.h"
#include "support/TypeText.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTest>

namespace Word = ProgramOptionWord;

namespace {

const QString Incorrect = QStringLiteral("Incorrect value has been entered.");

} // namespace

class tst_frmProg : public QObject
{
    Q_OBJECT

    std::unique_ptr<GuiFixture> f;
    std::unique_ptr<QMdiArea> area;
    std::unique_ptr<ProgramWindowTable> table;
    QPointer<frmProg> window;
    QPointer<QMdiSubWindow> frame;
    std::unique_ptr<RealBoxes> boxes;
    std::unique_ptr<AppContext> real; // the fixture's context with the real message boxes

    SharedState &state() const { return *f->state; }

    template<typename T>
    T *control(const char *name) const
    {
        return findControl<T>(window, QLatin1String(name));
    }

    void open(int number, bool realBoxes = false)
    {
        if (realBoxes) {
            boxes = std::make_unique<RealBoxes>();
            real = std::make_unique<AppContext>(withRealBoxes(f->context, *boxes));
        }
        window = new frmProg(realBoxes ? *real : f->context, *table, 1, number, area.get());
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
        VERIFY_NO_UNEXPECTED_BOX(f->msgBox);
        f->msgBox.answers.clear();
        area.reset();
        table.reset();
        real.reset();
        boxes.reset();
        f.reset();
    }

    // Operators move through the window by Tab: the play buttons, added later, come after every
    // control the window had, so the keys they know still reach the same controls.
    void playingComesLastInTheTabOrder()
    {
        open(1);
        chooseMethod(2);
        QStringList chain;
        QWidget *start = control<QLineEdit>("txtProgName");
        for (QWidget *w = start->nextInFocusChain(); w != start; w = w->nextInFocusChain()) {
            if (w->isVisibleTo(window) && (w->focusPolicy() & Qt::TabFocus) && !w->objectName().isEmpty()
                && window->isAncestorOf(w))
                chain << w->objectName();
        }
        const QStringList expected {"cmbPrgMethod", "txtAutoVol",  "txtPrgInt",    "optPrgInt_0",
                                    "optPrgInt_1",  "txtPrgNo",    "optPrgBusy_0", "optPrgBusy_1",
                                    "cmdProgStep",  "cmdPrint",    "cmdProgOk",    "cmdProgClose",
                                    "cmdProgSave",  "cmdProgPlay", "cmdProgStop"};
        QCOMPARE(chain, expected);
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

    // The operator's keys and the real message box: a refused entry, its message answered with
    // Enter, then a value typed into the field the focus went to, left with Tab, and OK.
    void refusedEntryLeavesTheNextFieldChecked_data()
    {
        QTest::addColumn<bool>("inSteps");
        QTest::addColumn<QStringList>("refused"); // field, text, the key that leaves it
        QTest::addColumn<QStringList>("next"); // field, text, what it shows once checked
        QTest::addColumn<int>("messages");
        QTest::addColumn<QString>("stored"); // step 2, or the repeat interval
        const auto row = [](const char *name, bool inSteps, const QStringList &refused,
                            const QStringList &next, int messages, const char *stored) {
            QTest::newRow(name) << inSteps << refused << next << messages << QString::fromLatin1(stored);
        };
        row("step, then a sentence", true, {"txtStpIdx_0", "A999", "Return"}, {"txtStpIdx_1", "A7", "A007"},
            1, "0007");
        row("level, then the interval", false, {"txtAutoVol", "9", "Tab"}, {"txtPrgInt", "30", "30"}, 1, "3");
        row("level, then a refused interval", false, {"txtAutoVol", "0", "Tab"}, {"txtPrgInt", "abc", "OFF"},
            2, "0");
    }
    void refusedEntryLeavesTheNextFieldChecked()
    {
        QFETCH(bool, inSteps);
        QFETCH(QStringList, refused);
        QFETCH(QStringList, next);
        QFETCH(int, messages);
        QFETCH(QString, stored);
        for (SettingData *data : {&state().Setting, &state().SettingBuffer})
            data->ProgramOption[0] = 0x6000; // Repeat, so that the interval shows
        open(1, true);
        QWidget *form = inSteps ? static_cast<QWidget *>(openSteps()) : window.data();
        QVERIFY(QTest::qWaitForWindowActive(area.get()));
        auto *first = findControl<QLineEdit>(form, refused[0]);
        auto *second = findControl<QLineEdit>(form, next[0]);
        first->setFocus();
        QTest::keyClick(first, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(first, refused[1]);
        QTest::keyClick(first, refused[2] == "Tab" ? Qt::Key_Tab : Qt::Key_Return);
        QTRY_COMPARE(boxes->shown.size(), 1);
        QTRY_COMPARE(QApplication::focusWidget(), second);
        QTest::keyClick(second, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(second, next[1]);
        QTest::keyClick(second, Qt::Key_Tab);
        QTRY_COMPARE(second->text(), next[2]);
        QTest::mouseClick(findControl<QPushButton>(form, inSteps ? "cmdStepOk" : "cmdProgOk"),
                          Qt::LeftButton);

        const SettingData &saved = state().Setting;
        QCOMPARE(boxes->shown, QStringList(messages, Incorrect));
        QCOMPARE(inSteps ? saved.ProgramData[0][1] : QString::number(saved.RepeatInterval[0]), stored);
        QCOMPARE(Word::outputLevel(saved.ProgramOption[0]), 1);
    }

    // A value typed while the window had lost the focus is never left by the focus; the buttons
    // that use it check it first, and a refused one stops them.
    void buttonsCheckWhatWasTypedLast_data()
    {
        QTest::addColumn<bool>("inSteps");
        QTest::addColumn<QString>("typed"); // in step 3, or the repeat count
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("stored");
        QTest::addColumn<bool>("refused");
        QTest::addColumn<bool>("closes");
        const auto row = [](const char *name, bool inSteps, const char *typed, const char *button,
                            const char *stored, bool refused, bool closes) {
            QTest::newRow(name) << inSteps << QString::fromLatin1(typed) << QString::fromLatin1(button)
                                << QString::fromLatin1(stored) << refused << closes;
        };
        row("step OK", true, "M5", "cmdStepOk", "2005", false, true);
        row("step Apply", true, "M5", "cmdStpSave", "2005", false, false);
        row("refused step, OK", true, "B1", "cmdStepOk", "", true, false);
        row("program OK", false, "12", "cmdProgOk", "12", false, true);
        row("program Apply", false, "12", "cmdProgSave", "12", false, false);
        row("refused count, OK", false, "x", "cmdProgOk", "3", true, false);
    }
    void buttonsCheckWhatWasTypedLast()
    {
        QFETCH(bool, inSteps);
        QFETCH(QString, typed);
        QFETCH(QString, button);
        QFETCH(QString, stored);
        QFETCH(bool, refused);
        QFETCH(bool, closes);
        for (SettingData *data : {&state().Setting, &state().SettingBuffer}) {
            data->ProgramOption[0] = 0x6000;
            data->RepeatCount[0] = 3;
        }
        open(1, true);
        QWidget *form = inSteps ? static_cast<QWidget *>(openSteps()) : window.data();
        QPointer<QWidget> watched = form;
        QWidget elsewhere;
        elsewhere.show();
        QVERIFY(QTest::qWaitForWindowActive(&elsewhere));
        auto *box = findControl<QLineEdit>(form, inSteps ? "txtStpIdx_2" : "txtPrgNo");
        QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(box, typed);
        QTest::mouseClick(findControl<QPushButton>(form, button), Qt::LeftButton);

        const SettingData &saved = state().Setting;
        QCOMPARE(boxes->shown, refused ? QStringList {Incorrect} : QStringList());
        QCOMPARE(inSteps ? saved.ProgramData[0][2] : QString::number(saved.RepeatCount[0]), stored);
        QCOMPARE(watched.isNull() || !watched->isVisible(), closes);
    }

    // Kept on purpose: Single-Program in minutes, then Endless, leaves the hidden minutes unit
    // chosen; what is typed is taken as minutes and OK clears it, leaving the play interval as it was.
    void endlessAfterMinutesKeepsTheMinutes_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<qint32>("intervalBits");
        QTest::addColumn<int>("messages");
        const auto row = [](const char *typed, const char *shown, qint32 bits, int messages) {
            QTest::newRow(typed) << QString::fromLatin1(typed) << QString::fromLatin1(shown) << bits
                                 << messages;
        };
        row("3", "3", 0, 0);
        row("7", "7", 0, 0);
        row("0", "2", 0, 1);
        row("abc", "2", 0, 1);
    }
    void endlessAfterMinutesKeepsTheMinutes()
    {
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        QFETCH(qint32, intervalBits);
        QFETCH(int, messages);
        for (SettingData *data : {&state().Setting, &state().SettingBuffer})
            data->ProgramOption[0] = 0x4000;
        open(1, true);
        QVERIFY(QTest::qWaitForWindowActive(area.get()));
        QTest::mouseClick(control<QRadioButton>("optPrgInt_1"), Qt::LeftButton);
        QCOMPARE(control<QLineEdit>("txtPrgInt")->text(), QStringLiteral("2"));
        auto *method = control<QComboBox>("cmbPrgMethod");
        method->setFocus();
        QTest::keyClick(method, Qt::Key_End); // the last method, Endless, chosen from the keyboard
        QCOMPARE(method->currentText(), QStringLiteral("4.Endless"));
        QCOMPARE(control<QLineEdit>("txtPrgInt")->text(), QStringLiteral("2"));
        QVERIFY(control<QRadioButton>("optPrgInt_1")->isChecked());
        QVERIFY(control<QRadioButton>("optPrgInt_1")->isHidden());

        auto *interval = control<QLineEdit>("txtPrgInt");
        interval->setFocus();
        QTest::keyClick(interval, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(interval, typed);
        QTest::keyClick(interval, Qt::Key_Tab);
        QTRY_COMPARE(interval->text(), shown);
        QTest::mouseClick(control<QPushButton>("cmdProgOk"), Qt::LeftButton);
        QCOMPARE(boxes->shown.size(), messages);
        QCOMPARE(state().Setting.ProgramOption[0] & (Word::MethodMask | Word::EndlessIntervalMask),
                 0xC000 | intervalBits);
        QCOMPARE(state().Setting.RepeatInterval[0], qint16(0));
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

    // Looking at a program's steps and pressing OK changes nothing: no question, and the project is
    // still as saved.
    void lookingAtTheStepsChangesNothing()
    {
        open(1);
        frmStep *steps = openSteps();
        findControl<QPushButton>(steps, QStringLiteral("cmdStpClose"))->click();
        control<QPushButton>("cmdProgOk")->click();
        QCOMPARE(f->msgBox.shown, QStringList());
        QVERIFY(state().SettingEqualsBuffer(SettingSection::All));
        QVERIFY(state().SettingEqualsSaved());
    }

    // Edits discarded elsewhere (another program window's OK or Cancel) leave an open step window
    // showing what Apply would commit, not the discarded steps.
    void discardingElsewhereRevertsAnOpenStepWindow()
    {
        open(1);
        frmStep *steps = openSteps();
        const QString stored = steps->box(0)->text();
        typeStep(steps, 0, QStringLiteral("A005"));
        state().CopySettingToBuffer(SettingSection::All);
        QCOMPARE(steps->box(0)->text(), stored);
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
