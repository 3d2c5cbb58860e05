#include "TestProjects.h"

#include <QTest>

#include <functional>

using Change = std::function<void(SettingData &)>;
Q_DECLARE_METATYPE(Change)

class tst_SettingSections : public QObject
{
    Q_OBJECT

private slots:
    void sectionOfEachField_data()
    {
        QTest::addColumn<Change>("change");
        QTest::addColumn<int>("section");
        QTest::newRow("project name")
            << Change([](SettingData &d) { d.ProjectName = QStringLiteral("x"); }) << 0;
        QTest::newRow("state byte only") << Change([](SettingData &d) { d.SentenceState[300] = 1; }) << 1;
        QTest::newRow("file name in slot 511")
            << Change([](SettingData &d) { d.SentenceFileName[511] = QStringLiteral("A.MP2"); }) << 1;
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
};

QTEST_GUILESS_MAIN(tst_SettingSections)
#include "tst_SettingSections.moc"
