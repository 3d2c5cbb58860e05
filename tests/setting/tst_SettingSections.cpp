#include "TestProjects.h"

#include <QTest>

#include <functional>

using Change = std::function<void(SettingData &)>;
Q_DECLARE_METATYPE(Change)

class tst_SettingSections : public QObject
{
    Q_OBJECT

private slots:
    void newSettingGivesTheNewProject()
    {
        const auto state = makeTestState(QStringLiteral("/home/op/dq480"));
        state->SurveillanceFile = false;
        state->EditWindowLoaded = true;
        state->SettingBuffer.ProgramName[3] = QStringLiteral("changed");
        state->NewSetting();

        const SettingData &s = state->Setting;
        QCOMPARE(s.ControlFileName, QStringLiteral("DQ480.CSV"));
        QCOMPARE(s.CardAttribute, qint16(0xA6));
        QCOMPARE(s.sentenceCapacity(), 128);
        QCOMPARE(s.ProgramOption[63], 0x2D01);
        QCOMPARE(s.RepeatCount[0], qint16(1));
        QCOMPARE(s.RepeatInterval[0], qint16(0));
        QCOMPARE(s.ProgramName[0], QStringLiteral("P001"));
        QCOMPARE(s.ProgramName[63], QStringLiteral("P064"));
        QCOMPARE(s.ProgramData[0][0], QStringLiteral("0001"));
        QCOMPARE(s.ProgramData[63][0], QStringLiteral("0064"));
        QVERIFY(s.ProgramData[63][1].isEmpty());
        QVERIFY(s.SentenceFileName[511].isEmpty());
        QCOMPARE(state->SentencePath, QStringLiteral("/home/op/dq480/"));
        QCOMPARE(state->ProjectFileName, QStringLiteral("New File"));
        QCOMPARE(state->ProjectFilePath, QStringLiteral("/home/op/dq480"));
        QCOMPARE(state->ProjectFolder, QStringLiteral("/home/op/dq480"));
        QVERIFY(state->SurveillanceFile);
        QVERIFY(!state->EditWindowLoaded);
        QVERIFY(state->SettingEqualsBuffer(SettingSection::All));
        QVERIFY(state->SettingEqualsSaved());
    }

    void sectionOfEachField_data()
    {
        QTest::addColumn<Change>("change");
        QTest::addColumn<int>("section");
        QTest::newRow("project name")
            << Change([](SettingData &d) { d.ProjectName = QStringLiteral("x"); }) << 0;
        QTest::newRow("creator") << Change([](SettingData &d) { d.Creator = QStringLiteral("x"); }) << 0;
        QTest::newRow("explanation case")
            << Change([](SettingData &d) { d.Explanation = QStringLiteral("A"); }) << 0;
        QTest::newRow("card name") << Change([](SettingData &d) { d.CardName = QStringLiteral("x"); }) << 1;
        QTest::newRow("attribute") << Change([](SettingData &d) { d.CardAttribute = 0xE6; }) << 1;
        QTest::newRow("control file")
            << Change([](SettingData &d) { d.ControlFileName = QStringLiteral("X"); }) << 1;
        QTest::newRow("state byte only") << Change([](SettingData &d) { d.SentenceState[300] = 1; }) << 1;
        QTest::newRow("file name in slot 511")
            << Change([](SettingData &d) { d.SentenceFileName[511] = QStringLiteral("A.MP2"); }) << 1;
        QTest::newRow("control text")
            << Change([](SettingData &d) { d.SentenceControl[0] = QStringLiteral("A001"); }) << 1;
        QTest::newRow("sort number") << Change([](SettingData &d) { d.ProgramSort[9] = 10; }) << 1;
        QTest::newRow("option word") << Change([](SettingData &d) { d.ProgramOption[63] = 0x4D01; }) << 1;
        QTest::newRow("program name")
            << Change([](SettingData &d) { d.ProgramName[5] = QStringLiteral("p006"); }) << 1;
        QTest::newRow("repeat count") << Change([](SettingData &d) { d.RepeatCount[1] = 2; }) << 1;
        QTest::newRow("repeat interval") << Change([](SettingData &d) { d.RepeatInterval[2] = 7; }) << 1;
        QTest::newRow("last step") << Change([](SettingData &d) {
            d.ProgramData[63][127] = QStringLiteral("0001");
        }) << 2;
    }
    void sectionOfEachField()
    {
        QFETCH(Change, change);
        QFETCH(int, section);
        const auto state = makeTestState(QStringLiteral("/tmp"));
        change(state->SettingBuffer);

        for (int s : {0, 1, 2})
            QCOMPARE(state->SettingEqualsBuffer(s), s != section);
        QVERIFY(!state->SettingEqualsBuffer(SettingSection::All));

        // Copying another section leaves the difference; copying its own section commits it.
        state->CopyBufferToSetting((section + 1) % 3);
        QVERIFY(!state->SettingEqualsBuffer(section));
        QVERIFY(state->SettingEqualsSaved());
        state->CopyBufferToSetting(section);
        QVERIFY(state->SettingEqualsBuffer(SettingSection::All));
        QVERIFY(!state->SettingEqualsSaved());
        state->TakeSavedSnapshot();
        QVERIFY(state->SettingEqualsSaved());
    }

    void discardingRestoresTheBuffer()
    {
        const auto state = makeTestState(QStringLiteral("/tmp"));
        state->SettingBuffer.ProgramData[4][0] = QStringLiteral("2005");
        state->SettingBuffer.CardName = QStringLiteral("kept apart");
        state->CopySettingToBuffer(SettingSection::Steps);
        QCOMPARE(state->SettingBuffer.ProgramData[4][0], QStringLiteral("0005"));
        QCOMPARE(state->SettingBuffer.CardName, QStringLiteral("kept apart"));
    }

    void unknownSectionNumbers_data()
    {
        QTest::addColumn<int>("section");
        QTest::addColumn<bool>("equal");
        QTest::newRow("-1") << -1 << true;
        QTest::newRow("101") << 101 << true;
        QTest::newRow("3") << 3 << false;
        QTest::newRow("99") << 99 << false;
    }
    void unknownSectionNumbers()
    {
        QFETCH(int, section);
        QFETCH(bool, equal);
        const auto state = makeTestState(QStringLiteral("/tmp"));
        state->SettingBuffer.ProjectName = QStringLiteral("changed");
        state->SettingBuffer.ProgramData[0][0].clear();
        state->CopyBufferToSetting(section);
        QCOMPARE(state->Setting.ProjectName, QString());
        QCOMPARE(state->SettingEqualsBuffer(section), equal);
    }
};

QTEST_GUILESS_MAIN(tst_SettingSections)
#include "tst_SettingSections.moc"
