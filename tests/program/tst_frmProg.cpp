#include "GuiFixture.h"
#include "ProgramWindowTable.h"
#include "ProjectFile.h"
#include "SettingFileWriter.h"
#include "TestFiles.h"
#include "TypeText.h"
#include "frmProg.h"
#include "frmStep.h"

#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
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

    void loadShowsTheProgram()
    {
        state().ProjectFileName = QStringLiteral("station.stf");
        state().Setting.ProgramName[6] = state().SettingBuffer.ProgramName[6] = QStringLiteral("Morning");
        open(7);
        QCOMPARE(window->windowTitle(), QStringLiteral("Program : station.stf"));
        QCOMPARE(control<QLabel>("lblProgNo")->text(), QStringLiteral("Program No:P007"));
        QCOMPARE(control<QLineEdit>("txtProgName")->text(), QStringLiteral("Morning"));
        auto *methods = control<QComboBox>("cmbPrgMethod");
        QCOMPARE(methods->count(), 4);
        QCOMPARE(methods->itemText(1), QStringLiteral("2.Single-Program"));
        QCOMPARE(methods->currentIndex(), 0);
        QCOMPARE(control<QLineEdit>("txtAutoVol")->text(), QStringLiteral("6"));
        QVERIFY(control<QRadioButton>("optPrgBusy_0")->isChecked());
        QVERIFY(!control<QPushButton>("cmdProgSave")->isEnabled());
        QVERIFY(state().SettingEqualsBuffer(SettingSection::All));
    }

    void programNameRefusesCharactersTheCodePageCannotHold()
    {
        open(3);
        auto *name = control<QLineEdit>("txtProgName");
        name->clear();
        f->msgBox.script({MsgBox::Answer::Ok});
        typeText(name, QStringLiteral("Caf\u00E9"));
        QCOMPARE(f->msgBox.shown, QStringList {QStringLiteral("Incorrect value has been entered.")});
        QCOMPARE(name->text(), QStringLiteral("Caf"));
        control<QPushButton>("cmdProgSave")->click();
        QCOMPARE(state().Setting.ProgramName[2], QStringLiteral("Caf"));
    }

    void methodChangeTable_data()
    {
        QTest::addColumn<int>("method");
        QTest::addColumn<bool>("repeatShown");
        QTest::addColumn<bool>("intervalShown");
        QTest::addColumn<bool>("busyShown");
        QTest::addColumn<bool>("stepEnabled");
        QTest::addColumn<bool>("minutesShown");
        QTest::addColumn<QString>("intervalCaption");
        QTest::addColumn<qint32>("methodBits");
        QTest::newRow("Continuous") << 0 << false << false << false << true << true
                                    << "Interval timer:" << 0x2000;
        QTest::newRow("Single-Program")
            << 1 << false << true << true << true << true << "Interval timer:" << 0x4000;
        QTest::newRow("Repeat") << 2 << true << true << true << true << true << "Repeat Interval:" << 0x6000;
        QTest::newRow("Endless") << 3 << false << true << false << false << false
                                 << "Play Interval(sec):" << 0xC000;
    }
    void methodChangeTable()
    {
        QFETCH(int, method);
        QFETCH(bool, repeatShown);
        QFETCH(bool, intervalShown);
        QFETCH(bool, busyShown);
        QFETCH(bool, stepEnabled);
        QFETCH(bool, minutesShown);
        QFETCH(QString, intervalCaption);
        QFETCH(qint32, methodBits);
        open(1);
        chooseMethod(method);
        QCOMPARE(control<QGroupBox>("fraPrg1")->isVisible(), repeatShown);
        QCOMPARE(control<QGroupBox>("fraPrg2")->isVisible(), intervalShown);
        QCOMPARE(control<QGroupBox>("fraPrg3")->isVisible(), busyShown);
        QCOMPARE(control<QPushButton>("cmdProgStep")->isEnabled(), stepEnabled);
        QCOMPARE(!control<QRadioButton>("optPrgInt_1")->isHidden(), minutesShown);
        QCOMPARE(control<QLabel>("lblPrgInt")->text(), intervalCaption);
        QCOMPARE(state().SettingBuffer.ProgramOption[0] & 0xE000, methodBits);
        QCOMPARE(state().SettingBuffer.ProgramOption[0] & 0x1FFF, 0x0D01);
        QVERIFY(control<QPushButton>("cmdProgSave")->isEnabled());

        // Another method afterwards shows the minutes option again.
        chooseMethod(2);
        QVERIFY(!control<QRadioButton>("optPrgInt_1")->isHidden());
    }

    void storedSevenLoadsAsSecondsButRedisplaysAsMinutes()
    {
        state().Setting.RepeatInterval[0] = state().SettingBuffer.RepeatInterval[0] = 7;
        open(1);
        QCOMPARE(control<QLineEdit>("txtPrgInt")->text(), QStringLiteral("70"));
        QVERIFY(control<QRadioButton>("optPrgInt_0")->isChecked());
        chooseMethod(2);
        QCOMPARE(control<QLineEdit>("txtPrgInt")->text(), QStringLiteral("2"));
        QVERIFY(control<QRadioButton>("optPrgInt_1")->isChecked());
        QCOMPARE(state().SettingBuffer.RepeatInterval[0], qint16(7));
    }

    void endlessShowsTheCommittedPlayInterval()
    {
        state().Setting.ProgramOption[0] = 0xC018; // 3 seconds committed
        state().SettingBuffer.ProgramOption[0] = qint32(0xFFFFC000); // as a file can give it
        open(1);
        QCOMPARE(control<QLineEdit>("txtPrgInt")->text(), QStringLiteral("3"));
        QCOMPARE(state().SettingBuffer.ProgramOption[0], 0xC018);

        state().SettingBuffer.ProgramOption[0] = qint32(0xFFFFC018);
        window->cmbPrgMethod_LostFocus();
        QCOMPARE(state().SettingBuffer.ProgramOption[0], 0xC018);
    }

    void intervalBarAndUnit()
    {
        open(1);
        chooseMethod(1);
        auto *bar = control<QScrollBar>("vscInt");
        bar->setValue(1);
        QCOMPARE(control<QLineEdit>("txtPrgInt")->text(), QStringLiteral("60"));
        bar->triggerAction(QAbstractSlider::SliderSingleStepSub);
        QCOMPARE(control<QLineEdit>("txtPrgInt")->text(), QStringLiteral("OFF"));
        QCOMPARE(state().SettingBuffer.RepeatInterval[0], qint16(0));

        control<QRadioButton>("optPrgInt_1")->click();
        QCOMPARE(control<QLineEdit>("txtPrgInt")->text(), QStringLiteral("2"));
        QCOMPARE(state().SettingBuffer.RepeatInterval[0], qint16(7));
        bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
        QCOMPARE(control<QLineEdit>("txtPrgInt")->text(), QStringLiteral("99"));
        QCOMPARE(state().SettingBuffer.RepeatInterval[0], qint16(104));

        f->msgBox.script({MsgBox::Answer::Ok});
        control<QLineEdit>("txtPrgInt")->setText(QStringLiteral("150"));
        QVERIFY(!window->txtPrgInt_LostFocus());
        QCOMPARE(f->msgBox.shown, QStringList {"Incorrect value has been entered."});
        QCOMPARE(control<QLineEdit>("txtPrgInt")->text(), QStringLiteral("2"));
    }

    void repeatCountAndLevelBoxes()
    {
        open(1);
        chooseMethod(2);
        auto *count = control<QLineEdit>("txtPrgNo");
        count->setText(QStringLiteral("0"));
        window->txtPrgNo_LostFocus();
        QCOMPARE(count->text(), QStringLiteral("Endless"));
        QCOMPARE(state().SettingBuffer.RepeatCount[0], qint16(0));

        auto *level = control<QLineEdit>("txtAutoVol");
        level->setText(QStringLiteral("3"));
        QVERIFY(window->txtAutoVol_LostFocus());
        QCOMPARE(state().SettingBuffer.ProgramOption[0] & 0x700, 0x200);
        f->msgBox.script({MsgBox::Answer::Ok});
        level->setText(QStringLiteral("9"));
        QVERIFY(!window->txtAutoVol_LostFocus());
        QCOMPARE(level->text(), QStringLiteral("3"));
        QVERIFY(f->msgBox.unexpected.isEmpty());

        control<QRadioButton>("optPrgBusy_1")->click();
        QCOMPARE(state().SettingBuffer.ProgramOption[0] & 1, 0);
    }

    void applyAndOkOnAFileReadEndlessWord_data()
    {
        QTest::addColumn<bool>("ok");
        QTest::newRow("Apply sets busy, count 0") << false;
        QTest::newRow("OK leaves it") << true;
    }
    void applyAndOkOnAFileReadEndlessWord()
    {
        QFETCH(bool, ok);
        for (SettingData *data : {&state().Setting, &state().SettingBuffer}) {
            data->ProgramOption[20] = qint32(0xFFFFC010);
            data->RepeatCount[20] = 5;
        }
        open(1);
        control<QRadioButton>("optPrgBusy_1")->click(); // a change, so Apply is enabled
        control<QPushButton>(ok ? "cmdProgOk" : "cmdProgSave")->click();
        const SettingData &committed = state().Setting;
        QCOMPARE(committed.ProgramOption[20], ok ? qint32(0xFFFFC010) : qint32(0xFFFFC011));
        QCOMPARE(committed.RepeatCount[20], qint16(ok ? 5 : 0));
        // Continuous gets its busy bit back from either normalisation.
        QCOMPARE(committed.ProgramOption[0], 0x2D01);
        QCOMPARE(table->ProgramWindowCount, ok ? 0 : 1);
    }

    void cancelAsksOnlyAboutUncommittedChanges()
    {
        open(1);
        chooseMethod(1);
        control<QPushButton>("cmdProgSave")->click();
        QVERIFY(!control<QPushButton>("cmdProgSave")->isEnabled());
        control<QPushButton>("cmdProgClose")->click();
        QVERIFY(f->msgBox.shown.isEmpty());
        QCOMPARE(table->ProgramWindowCount, 0);

        open(2);
        chooseMethod(2);
        f->msgBox.script({MsgBox::Answer::Cancel});
        control<QPushButton>("cmdProgClose")->click();
        QCOMPARE(f->msgBox.shown, QStringList {ContentsQuestion});
        QVERIFY(window);
        f->msgBox.script({MsgBox::Answer::Ok});
        control<QPushButton>("cmdProgClose")->click();
        QCOMPARE(state().SettingBuffer.ProgramOption[1], 0x2D01);
        QCOMPARE(table->ProgramWindowCount, 0);
    }

    void endlessKeepsItsPlayIntervalThroughOk_data()
    {
        QTest::addColumn<qint32>("option");
        QTest::addColumn<qint16>("interval");
        QTest::newRow("1 s, interval in minutes") << 0xC508 << qint16(8);
        QTest::newRow("5 s and busy, interval in minutes") << 0xC529 << qint16(10);
        QTest::newRow("2 s, no interval") << 0xC510 << qint16(0);
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

    void discardingInTheStepWindowRevertsTheProgramWindow_data()
    {
        QTest::addColumn<bool>("editStep");
        QTest::newRow("program edits only") << false;
        QTest::newRow("program and step edits") << true;
    }
    void discardingInTheStepWindowRevertsTheProgramWindow()
    {
        QFETCH(bool, editStep);
        open(1);
        chooseMethod(2);
        control<QLineEdit>("txtProgName")->setText(QStringLiteral("Evening"));
        window->txtProgName_LostFocus();
        frmStep *steps = openSteps();
        if (editStep)
            typeStep(steps, 0, QStringLiteral("A005"));
        f->msgBox.script({MsgBox::Answer::Ok});
        findControl<QPushButton>(steps, QStringLiteral("cmdStpClose"))->click();
        QCOMPARE(f->msgBox.shown, QStringList {ContentsQuestion});
        QVERIFY(state().SettingEqualsBuffer(SettingSection::All));

        // The program window shows what the working copy now holds, with nothing to apply.
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

    void stepWindowLoadsAndDropsUnknownForms()
    {
        state().SettingBuffer.ProgramData[2] = {};
        state().SettingBuffer.ProgramData[2][0] = QStringLiteral("0012");
        state().SettingBuffer.ProgramData[2][1] = QStringLiteral("1234");
        state().SettingBuffer.ProgramData[2][2] = QStringLiteral("2005");
        state().CopyBufferToSetting(SettingSection::Steps);
        state().ProjectFileName = QStringLiteral("station.stf");
        open(3);
        chooseMethod(1);
        frmStep *steps = openSteps();
        QCOMPARE(steps->windowTitle(), QStringLiteral("Single-Program - Step Input :  station.stf - P003"));
        QCOMPARE(steps->box(0)->text(), QStringLiteral("A012"));
        QCOMPARE(steps->box(1)->text(), QString());
        QCOMPARE(steps->box(2)->text(), QStringLiteral("M5.0"));
        QCOMPARE(steps->findChild<QLabel *>(QStringLiteral("lblStpIdx_127"))->text(), QStringLiteral("128:"));
        QVERIFY(state().SettingBuffer.ProgramData[2][1].isEmpty());
        QVERIFY(!state().SettingEqualsBuffer(SettingSection::Steps));
        // The program window owns one step window.
        QCOMPARE(openSteps(), steps);
    }

    void stepBoxesCheckWhatIsTyped()
    {
        open(1);
        frmStep *steps = openSteps();
        typeStep(steps, 1, QStringLiteral("m5"));
        QCOMPARE(steps->box(1)->text(), QStringLiteral("M005"));
        QCOMPARE(state().SettingBuffer.ProgramData[0][1], QStringLiteral("2005"));
        f->msgBox.script({MsgBox::Answer::Ok});
        typeStep(steps, 2, QStringLiteral("A129"));
        QCOMPARE(f->msgBox.shown, QStringList {"Incorrect value has been entered."});
        QCOMPARE(steps->box(2)->text(), QString());
        QVERIFY(state().SettingBuffer.ProgramData[0][2].isEmpty());

        steps->box(3)->setFocus();
        QTest::keyClick(steps->box(3), Qt::Key_Return);
        QCOMPARE(steps->currentSlot(), 4);
    }

    void insertDeleteAndCloseGaps()
    {
        open(1);
        frmStep *steps = openSteps();
        typeStep(steps, 2, QStringLiteral("A7"));
        steps->box(0)->setFocus();
        QApplication::processEvents();
        QCOMPARE(steps->currentSlot(), 0);
        steps->cmdStpIns_Click();
        auto &list = state().SettingBuffer.ProgramData[0];
        QVERIFY(list[0].isEmpty());
        QCOMPARE(list[1], QStringLiteral("0001"));
        QCOMPARE(list[3], QStringLiteral("0007"));

        steps->cmdStpMov_Click();
        QCOMPARE(list[0], QStringLiteral("0001"));
        QCOMPARE(list[1], QStringLiteral("0007"));
        QCOMPARE(steps->box(1)->text(), QStringLiteral("A007"));
        QVERIFY(list[2].isEmpty());

        // Deleting the last steps leaves the default step, sentence 000.
        steps->cmdStpDelte_Click();
        f->msgBox.script({MsgBox::Answer::Ok});
        steps->cmdStpDelte_Click();
        QCOMPARE(f->msgBox.shown, QStringList {"All steps deleted. Will set default steps."});
        QCOMPARE(list[0], QStringLiteral("0000"));
        QCOMPARE(steps->box(0)->text(), QStringLiteral("A000"));
    }

    void closingTheStepWindowReturnsToItsProgram_data()
    {
        QTest::addColumn<QString>("button");
        QTest::newRow("OK") << "cmdStepOk";
        QTest::newRow("Close") << "cmdStpClose";
    }
    void closingTheStepWindowReturnsToItsProgram()
    {
        QFETCH(QString, button);
        // The card edit window stands behind, as it does in the main window.
        auto *cardEdit = new QWidget;
        auto *cardEditInput = new QLineEdit(cardEdit);
        QMdiSubWindow *cardEditFrame = area->addSubWindow(cardEdit);
        cardEditFrame->show();
        open(1);
        area->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(area.get()));
        frmStep *steps = openSteps();
        steps->box(0)->setFocus();
        steps->box(0)->clear();
        QTest::keyClicks(steps->box(0), QStringLiteral("A1"));
        QTest::keyClick(steps->box(0), Qt::Key_Return);
        control<QPushButton>("cmdProgSave")->click(); // nothing left to ask about on closing
        findControl<QPushButton>(steps, button)->click();
        QTRY_VERIFY(!window->stepWindow());

        // The operator carries on in the program window; it is not hidden behind the card edit one.
        QCOMPARE(area->activeSubWindow(), frame.data());
        QVERIFY(!cardEditInput->hasFocus());
    }

    void insertIntoAFullProgramIsRefused()
    {
        for (int i = 0; i < 128; ++i)
            state().SettingBuffer.ProgramData[0][i] = i == 5 ? QString() : QStringLiteral("0001");
        open(1);
        frmStep *steps = openSteps();
        f->msgBox.script({MsgBox::Answer::Ok});
        steps->cmdStpIns_Click();
        QCOMPARE(f->msgBox.shown, QStringList {"128 step is programmed. Can not insert"});
        QVERIFY(state().SettingBuffer.ProgramData[0][5].isEmpty());
    }

    void scrollingMovesByColumnsOfEight()
    {
        open(1);
        frmStep *steps = openSteps();
        frame = qobject_cast<QMdiSubWindow *>(steps->parentWidget());
        frame->show();
        auto *bar = steps->findChild<QScrollBar *>(QStringLiteral("hscStep"));
        QCOMPARE(bar->maximum(), 12);
        const int columnX = steps->box(8)->x() - steps->box(0)->x();
        bar->setValue(2);
        QCOMPARE(steps->currentSlot(), 16);
        QCOMPARE(steps->findChild<QWidget *>(QStringLiteral("fraStep"))->x(), -2 * columnX);
    }

    void aWholeEditEndsInTheSavedFile()
    {
        open(4);
        chooseMethod(2);
        control<QLineEdit>("txtProgName")->setText(QStringLiteral("Rain"));
        window->txtProgName_LostFocus();
        control<QLineEdit>("txtPrgNo")->setText(QStringLiteral("3"));
        window->txtPrgNo_LostFocus();
        // The step window's OK asks about program changes not yet applied: apply them first.
        control<QPushButton>("cmdProgSave")->click();
        frmStep *steps = openSteps();
        typeStep(steps, 1, QStringLiteral("A12"));
        typeStep(steps, 2, QStringLiteral("M1.5"));
        typeStep(steps, 3, QStringLiteral("M5.0"));
        steps->findChild<QPushButton *>(QStringLiteral("cmdStepOk"))->click();
        control<QPushButton>("cmdProgOk")->click();
        QVERIFY(f->msgBox.shown.isEmpty());
        QVERIFY(state().SettingEqualsBuffer(SettingSection::All));

        const QString path = f->home.filePath(QStringLiteral("rain.stf"));
        QString error;
        QVERIFY(SaveProjectTo(state(), path, error));
        const QByteArray file = readTestFile(path);
        QVERIFY(file.contains("\r\nPRGDATA,0004,0012,2215,2005,3000,\r\n"));
        QVERIFY(file.contains("\r\nPRGNAME,Rain,\r\n"));
        QVERIFY(file.contains("PRGOPT,6D01,\r\n"));
    }
};

QTEST_MAIN(tst_frmProg)
#include "tst_frmProg.moc"
