#include "program/ProgramFieldRules.h"
#include "program/ProgramWindowTable.h"
#include "program/StepText.h"
#include "setting/StoredStep.h"

#include <QTest>
#include <QWidget>

#include <memory>
#include <vector>

namespace Rules = ProgramFieldRules;

class tst_ProgramRules : public QObject
{
    Q_OBJECT

private slots:
    void stepCheck_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("limit");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("stored");
        QTest::newRow("a128 on 128") << "a128" << 128 << true << "A128"
                                     << "0128";
        QTest::newRow("A129 on 128") << "A129" << 128 << false << ""
                                     << "";
        QTest::newRow("A513 on 512") << "A513" << 512 << false << ""
                                     << "";
        QTest::newRow("A0") << "A0" << 512 << false << ""
                            << "";
        QTest::newRow("M128") << "M128" << 128 << false << ""
                              << "";
        QTest::newRow("M5.3") << "M5.3" << 128 << true << "M5.3"
                              << "2253";
        QTest::newRow("M5.") << "M5." << 128 << false << ""
                             << "";
        QTest::newRow("digits alone are a sentence") << "12" << 128 << true << "A012"
                                                     << "0012";
        QTest::newRow("empty clears") << "" << 128 << true << ""
                                      << "";
    }
    void stepCheck()
    {
        QFETCH(QString, typed);
        QFETCH(int, limit);
        QFETCH(bool, accepted);
        QFETCH(QString, shown);
        QFETCH(QString, stored);
        const StepText::Entry entry = StepText::check(typed, limit);
        QCOMPARE(entry.accepted, accepted);
        if (accepted) {
            QCOMPARE(entry.shown, shown);
            QCOMPARE(entry.stored, stored);
        }
    }

    void stepDecode_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("shown");
        QTest::newRow("wait with tenths") << "2253"
                                          << "M5.3";
        QTest::newRow("small whole wait shows .0") << "2005"
                                                   << "M5.0";
        QTest::newRow("whole wait of 10 or more") << "2127"
                                                  << "M127";
        QTest::newRow("1000 is no form") << "1000"
                                         << "";
    }
    void stepDecode()
    {
        QFETCH(QString, stored);
        QFETCH(QString, shown);
        QCOMPARE(decodeStep(stored).shown, shown);
    }

    void intervalCheck_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("minutes");
        QTest::addColumn<bool>("endless");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("stored");
        QTest::addColumn<bool>("refused");
        QTest::newRow("seconds round down") << "45" << false << false << "40" << 4 << false;
        QTest::newRow("seconds below ten") << "9" << false << false << "OFF" << 0 << false;
        QTest::newRow("seconds above sixty") << "500" << false << false << "60" << 6 << false;
        QTest::newRow("minutes 99") << "99" << true << false << "99" << 104 << false;
        QTest::newRow("minutes 1") << "1" << true << false << "2" << 7 << true;
        QTest::newRow("minutes 100") << "100" << true << false << "2" << 7 << true;
        QTest::newRow("endless 5") << "5" << false << true << "5" << 5 << false;
        QTest::newRow("endless 6") << "6" << false << true << "OFF" << 0 << false;
        QTest::newRow("endless minus") << "-1" << false << true << "OFF" << 0 << true;
    }
    void intervalCheck()
    {
        QFETCH(QString, typed);
        QFETCH(bool, minutes);
        QFETCH(bool, endless);
        QFETCH(QString, text);
        QFETCH(int, stored);
        QFETCH(bool, refused);
        const Rules::Interval shown = Rules::checkInterval(typed, minutes, endless);
        QCOMPARE(shown.text, text);
        QCOMPARE(shown.refused, refused);
        QCOMPARE(endless ? shown.endlessSeconds.value_or(-1) : int(shown.repeatInterval), stored);
    }

    // A stored interval shows in the unit and text the operator set, and opening keeps 7 in seconds.
    void intervalShown_data()
    {
        QTest::addColumn<int>("stored");
        QTest::addColumn<int>("minutesFrom");
        QTest::addColumn<bool>("minutes");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("bar");
        QTest::newRow("off") << 0 << Rules::OpensInMinutesFrom << false << "0" << 7;
        QTest::newRow("60 s") << 6 << Rules::OpensInMinutesFrom << false << "60" << 1;
        QTest::newRow("7 opens as 70 s") << 7 << Rules::OpensInMinutesFrom << false << "70" << 0;
        QTest::newRow("8 opens as 3 min") << 8 << Rules::OpensInMinutesFrom << true << "3" << 97;
        QTest::newRow("99 min") << 104 << Rules::OpensInMinutesFrom << true << "99" << 1;
        QTest::newRow("7 redisplays as 2 min") << 7 << Rules::ShowsInMinutesFrom << true << "2" << 98;
        QTest::newRow("6 redisplays as 60 s") << 6 << Rules::ShowsInMinutesFrom << false << "60" << 1;
    }
    void intervalShown()
    {
        QFETCH(int, stored);
        QFETCH(int, minutesFrom);
        const Rules::ShownInterval shown = Rules::shownInterval(stored, minutesFrom);
        QTEST(shown.minutes, "minutes");
        QTEST(shown.text, "text");
        QTEST(shown.barValue, "bar");
    }

    // At most eight windows, never two on one program; a closed window frees its place.
    void programWindowLimit_data()
    {
        QTest::addColumn<int>("opened");
        QTest::addColumn<int>("closed");
        QTest::addColumn<int>("number");
        QTest::addColumn<int>("refusal");
        using R = ProgramWindowTable::Refusal;
        QTest::newRow("seventh of eight") << 7 << 0 << 64 << int(R::None);
        QTest::newRow("ninth") << 8 << 0 << 64 << int(R::EightOpen);
        QTest::newRow("ninth after one closed") << 8 << 3 << 64 << int(R::None);
        QTest::newRow("one already open") << 2 << 0 << 2 << int(R::AlreadyOpen);
        QTest::newRow("the closed one again") << 8 << 3 << 3 << int(R::None);
    }
    void programWindowLimit()
    {
        QFETCH(int, opened);
        QFETCH(int, closed);
        QFETCH(int, number);
        ProgramWindowTable table;
        std::vector<std::unique_ptr<QWidget>> windows;
        for (int n = 1; n <= opened; ++n) {
            windows.push_back(std::make_unique<QWidget>());
            table.occupy(table.firstFreeSlot(), windows.back().get(), n);
        }
        if (closed)
            table.release(table.slotShowing(closed));
        QCOMPARE(table.ProgramWindowCount(), opened - (closed ? 1 : 0));
        QTEST(int(table.refusalFor(number)), "refusal");
        if (closed)
            QCOMPARE(table.firstFreeSlot(), closed);
    }

    void repeatCount_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("count");
        QTest::addColumn<bool>("refused");
        QTest::newRow("128") << "128"
                             << "128" << 128 << false;
        QTest::newRow("129 becomes 1 silently") << "129"
                                                << "1" << 1 << false;
        QTest::newRow("0 is Endless") << "0"
                                      << "Endless" << 0 << false;
        QTest::newRow("letters") << "1a"
                                 << "1" << 1 << true;
    }
    void repeatCount()
    {
        QFETCH(QString, typed);
        QFETCH(QString, text);
        QFETCH(int, count);
        QFETCH(bool, refused);
        const Rules::RepeatCount shown = Rules::checkRepeatCount(typed);
        QCOMPARE(shown.text, text);
        QCOMPARE(shown.count, qint16(count));
        QCOMPARE(shown.refused, refused);
        QCOMPARE(Rules::countBarMoved(shown.barValue).count, shown.count);
    }
};

QTEST_MAIN(tst_ProgramRules)
#include "tst_ProgramRules.moc"
