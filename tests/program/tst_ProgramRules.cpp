#include "ProgramFieldRules.h"
#include "ProgramOptionWord.h"
#include "StepText.h"

#include <QTest>

namespace Rules = ProgramFieldRules;
namespace Word = ProgramOptionWord;

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
        QTest::newRow("A1") << "A1" << 128 << true << "A001"
                            << "0001";
        QTest::newRow("a128 on 128") << "a128" << 128 << true << "A128"
                                     << "0128";
        QTest::newRow("A129 on 128") << "A129" << 128 << false << ""
                                     << "";
        QTest::newRow("A512 on 512") << "A512" << 512 << true << "A512"
                                     << "0512";
        QTest::newRow("A513 on 512") << "A513" << 512 << false << ""
                                     << "";
        QTest::newRow("A0") << "A0" << 512 << false << ""
                            << "";
        QTest::newRow("A000") << "A000" << 512 << false << ""
                              << "";
        QTest::newRow("A alone") << "A" << 128 << false << ""
                                 << "";
        QTest::newRow("M5") << "M5" << 128 << true << "M005"
                            << "2005";
        QTest::newRow("m127") << "m127" << 128 << true << "M127"
                              << "2127";
        QTest::newRow("M128") << "M128" << 128 << false << ""
                              << "";
        QTest::newRow("M5.0") << "M5.0" << 128 << true << "M5.0"
                              << "2005";
        QTest::newRow("M5.3") << "M5.3" << 128 << true << "M5.3"
                              << "2253";
        QTest::newRow("M9.9") << "M9.9" << 128 << true << "M9.9"
                              << "2299";
        QTest::newRow("M5.") << "M5." << 128 << false << ""
                             << "";
        QTest::newRow("M.5") << "M.5" << 128 << false << ""
                             << "";
        QTest::newRow("A1.5") << "A1.5" << 128 << false << ""
                              << "";
        QTest::newRow("X1") << "X1" << 128 << false << ""
                            << "";
        QTest::newRow("12345") << "12345" << 512 << false << ""
                               << "";
        QTest::newRow("digits alone are a sentence") << "12" << 128 << true << "A012"
                                                     << "0012";
        QTest::newRow("letter in the middle") << "1A2" << 128 << false << ""
                                              << "";
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
        QTest::newRow("sentence") << "0012"
                                  << "A012";
        QTest::newRow("default step") << "0000"
                                      << "A000";
        QTest::newRow("wait with tenths") << "2253"
                                          << "M5.3";
        QTest::newRow("small whole wait shows .0") << "2005"
                                                   << "M5.0";
        QTest::newRow("whole wait of 10 or more") << "2127"
                                                  << "M127";
        QTest::newRow("2099") << "2099"
                              << "M099";
        QTest::newRow("1000 is no form") << "1000"
                                         << "";
        QTest::newRow("3000 is no step") << "3000"
                                         << "";
        QTest::newRow("short") << "012"
                               << "";
        QTest::newRow("letters") << "AB12"
                                 << "";
        QTest::newRow("empty") << ""
                               << "";
    }
    void stepDecode()
    {
        QFETCH(QString, stored);
        QFETCH(QString, shown);
        QCOMPARE(StepText::decode(stored), shown);
    }

    void secondsBar_data()
    {
        QTest::addColumn<int>("value");
        QTest::addColumn<bool>("endless");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("bar");
        QTest::addColumn<int>("stored");
        QTest::newRow("OFF") << 7 << false << "OFF" << 7 << 0;
        QTest::newRow("60 s") << 1 << false << "60" << 1 << 6;
        QTest::newRow("above 60 s wraps to OFF") << 0 << false << "OFF" << 7 << 0;
        QTest::newRow("below OFF wraps to 60 s") << 8 << false << "60" << 1 << 6;
        QTest::newRow("endless 3 s") << 4 << true << "3" << 4 << 3;
        QTest::newRow("endless below OFF wraps to 5 s") << 8 << true << "5" << 2 << 5;
        QTest::newRow("endless 6 s is OFF, stored later") << 1 << true << "OFF" << 7 << -1;
        QTest::newRow("endless OFF, stored later") << 7 << true << "OFF" << 7 << -1;
    }
    void secondsBar()
    {
        QFETCH(int, value);
        QFETCH(bool, endless);
        QFETCH(QString, text);
        QFETCH(int, bar);
        QFETCH(int, stored);
        const Rules::Interval shown = Rules::secondsBarMoved(value, endless);
        QCOMPARE(shown.text, text);
        QCOMPARE(shown.barValue, bar);
        if (endless) {
            QCOMPARE(shown.endlessSeconds.value_or(-1), stored);
            QCOMPARE(shown.stores, stored >= 0);
        } else {
            QCOMPARE(shown.repeatInterval, qint16(stored));
        }
    }

    void minutesBar_data()
    {
        QTest::addColumn<int>("value");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("stored");
        QTest::newRow("2 minutes") << 98 << "2" << 7;
        QTest::newRow("below 2 minutes wraps to 99") << 99 << "99" << 104;
        QTest::newRow("above 99 wraps to 2") << 0 << "2" << 7;
        QTest::newRow("30 minutes") << 70 << "30" << 35;
    }
    void minutesBar()
    {
        QFETCH(int, value);
        QFETCH(QString, text);
        QFETCH(int, stored);
        const Rules::Interval shown = Rules::minutesBarMoved(value);
        QCOMPARE(shown.text, text);
        QCOMPARE(shown.repeatInterval, qint16(stored));
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
        QTest::newRow("seconds OFF") << "OFF" << false << false << "OFF" << 0 << false;
        QTest::newRow("seconds letter") << "4x" << false << false << "OFF" << 0 << true;
        QTest::newRow("seconds empty") << "" << false << false << "OFF" << 0 << true;
        QTest::newRow("minutes 2") << "2" << true << false << "2" << 7 << false;
        QTest::newRow("minutes 99") << "99" << true << false << "99" << 104 << false;
        QTest::newRow("minutes 1") << "1" << true << false << "2" << 7 << true;
        QTest::newRow("minutes 100") << "100" << true << false << "2" << 7 << true;
        QTest::newRow("minutes huge") << "99999999999" << true << false << "2" << 7 << true;
        QTest::newRow("endless 5") << "5" << false << true << "5" << 5 << false;
        QTest::newRow("endless 6") << "6" << false << true << "OFF" << 0 << false;
        QTest::newRow("endless 0") << "0" << false << true << "OFF" << 0 << false;
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

    void repeatCount_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("count");
        QTest::addColumn<bool>("refused");
        QTest::newRow("5") << "5"
                           << "5" << 5 << false;
        QTest::newRow("128") << "128"
                             << "128" << 128 << false;
        QTest::newRow("129 becomes 1 silently") << "129"
                                                << "1" << 1 << false;
        QTest::newRow("0 is Endless") << "0"
                                      << "Endless" << 0 << false;
        QTest::newRow("Endless stays") << "Endless"
                                       << "Endless" << 0 << false;
        QTest::newRow("empty") << ""
                               << "1" << 1 << true;
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

    void repeatCountBarWraps()
    {
        QCOMPARE(Rules::countBarMoved(0).text, QStringLiteral("Endless")); // above 128
        QCOMPARE(Rules::countBarMoved(Rules::CountBarMax).count, qint16(128)); // below Endless
        QCOMPARE(Rules::levelFromBar(0), 1);
        QCOMPARE(Rules::levelFromBar(9), 8);
        QCOMPARE(Rules::levelFromBar(1), 8);
    }

    void applyAndOkNormaliseDifferently_data()
    {
        QTest::addColumn<qint32>("option");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<qint32>("optionAfter");
        QTest::addColumn<int>("countAfter");
        QTest::addColumn<int>("intervalAfter");
        const qint32 fileEndless = qint32(0xFFFFC010);
        QTest::newRow("file Endless, Apply") << fileEndless << false << qint32(0xFFFFC011) << 0 << 0;
        QTest::newRow("file Endless, OK") << fileEndless << true << fileEndless << 3 << 9;
        QTest::newRow("window Endless, Apply") << qint32(0xC010) << false << qint32(0xC010) << 3 << 9;
        QTest::newRow("window Endless, OK") << qint32(0xC010) << true << qint32(0xC010) << 3 << 0;
        QTest::newRow("Continuous, Apply") << qint32(0x2D00) << false << qint32(0x2D01) << 1 << 0;
        QTest::newRow("Continuous, OK") << qint32(0x2D00) << true << qint32(0x2D01) << 1 << 0;
        QTest::newRow("Single, Apply") << qint32(0x4D00) << false << qint32(0x4D00) << 3 << 9;
        QTest::newRow("Single, OK") << qint32(0x4D00) << true << qint32(0x4D00) << 0 << 9;
        QTest::newRow("Repeat, OK") << qint32(0x6D00) << true << qint32(0x6D00) << 3 << 9;
    }
    void applyAndOkNormaliseDifferently()
    {
        QFETCH(qint32, option);
        QFETCH(bool, ok);
        QFETCH(qint32, optionAfter);
        QFETCH(int, countAfter);
        QFETCH(int, intervalAfter);
        SettingData data;
        data.resetToNewProject();
        data.ProgramOption[40] = option;
        data.RepeatCount[40] = 3;
        data.RepeatInterval[40] = 9;
        ok ? Word::normaliseForOk(data) : Word::normaliseForApply(data);
        QCOMPARE(data.ProgramOption[40], optionAfter);
        QCOMPARE(data.RepeatCount[40], qint16(countAfter));
        QCOMPARE(data.RepeatInterval[40], qint16(intervalAfter));
    }
};

QTEST_GUILESS_MAIN(tst_ProgramRules)
#include "tst_ProgramRules.moc"
