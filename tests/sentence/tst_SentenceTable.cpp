#include "sentence/SentenceTableEdit.h"
#include "setting/SentenceTable.h"
#include "setting/SharedState.h"

#include <QDir>
#include <QSignalSpy>
#include <QTest>

namespace Table = SentenceTableEdit;

namespace {

// "127=LAST.MP2": a named entry, as the table holds it.
SettingData tableOf(bool is512, const QStringList &entries)
{
    SettingData data;
    data.resetToNewProject();
    data.CardAttribute = is512 ? SettingData::Attribute512Sentences : 0;
    for (const QString &entry : entries)
        Table::setEntry(data, entry.section(QLatin1Char('='), 0, 0).toInt(),
                        entry.section(QLatin1Char('='), 1));
    return data;
}

// Every named entry with its control text and sort number: "128=LAST.MP2 A129 129".
QStringList namedEntries(const SettingData &data)
{
    QStringList named;
    for (int slot = 0; slot < SentenceTableSize::Largest; ++slot) {
        if (!data.SentenceFileName[slot].isEmpty() || data.ProgramSort[slot] != 0)
            named << QStringLiteral("%1=%2 %3 %4")
                         .arg(slot)
                         .arg(data.SentenceFileName[slot], data.SentenceControl[slot])
                         .arg(data.ProgramSort[slot]);
    }
    return named;
}

} // namespace

class tst_SentenceTable : public QObject
{
    Q_OBJECT

private slots:
    // Insert, Delete and Move forward at the ends of both tables, and the hidden entry 128.
    void edits_data()
    {
        QTest::addColumn<bool>("is512");
        QTest::addColumn<QStringList>("entries");
        QTest::addColumn<QString>("edit");
        QTest::addColumn<int>("current");
        QTest::addColumn<bool>("done");
        QTest::addColumn<QStringList>("after");
        QTest::newRow("insert, 128 table full") << false << QStringList {"127=LAST.MP2"} << "insert" << 0
                                                << false << QStringList {"127=LAST.MP2 A128 128"};
        QTest::newRow("insert into the 128 table's last")
            << false << QStringList {"126=A.MP2"} << "insert" << 126 << true
            << QStringList {"127=A.MP2 A128 128"};
        QTest::newRow("insert past 128 in the 512 table")
            << true << QStringList {"127=A.MP2"} << "insert" << 127 << true
            << QStringList {"128=A.MP2 A129 129"};
        QTest::newRow("insert, 512 table full") << true << QStringList {"511=LAST.MP2"} << "insert" << 0
                                                << false << QStringList {"511=LAST.MP2 A512 512"};
        QTest::newRow("delete takes the hidden entry 128")
            << false << QStringList {"0=A.MP2", "128=HID.MP2"} << "delete" << 0 << true
            << QStringList {"127=HID.MP2 A128 128", "128=HID.MP2 A129 129"};
        QTest::newRow("delete before 512's last") << true << QStringList {"511=LAST.MP2"} << "delete" << 510
                                                  << true << QStringList {"510=LAST.MP2 A511 511"};
        QTest::newRow("delete 512's last")
            << true << QStringList {"511=LAST.MP2"} << "delete" << 511 << true << QStringList {};
        QTest::newRow("move forward 512's last") << true << QStringList {"511=LAST.MP2"} << "move" << 0
                                                 << true << QStringList {"0=LAST.MP2 A001 1"};
        QTest::newRow("move forward 128's last")
            << false << QStringList {"3=A.MP2", "127=B.MP2"} << "move" << 0 << true
            << QStringList {"0=A.MP2 A001 1", "1=B.MP2 A002 2"};
        QTest::newRow("move forward leaves the hidden entry")
            << false << QStringList {"128=HID.MP2"} << "move" << 0 << true
            << QStringList {"128=HID.MP2 A129 129"};
    }
    void edits()
    {
        QFETCH(bool, is512);
        QFETCH(QStringList, entries);
        QFETCH(QString, edit);
        QFETCH(int, current);
        SettingData data = tableOf(is512, entries);
        bool done = true;
        if (edit == QLatin1String("insert")) {
            done = Table::insertAt(data, current);
        } else if (edit == QLatin1String("delete")) {
            Table::removeAt(data, current);
        } else {
            QStringList names(data.SentenceFileName.begin(),
                              data.SentenceFileName.begin() + data.sentenceTable().limit() + 1);
            for (const int i : Table::moveForward(names, data.sentenceTable()))
                Table::setEntry(data, i, names[i]);
        }
        QTEST(done, "done");
        QTEST(namedEntries(data), "after");
    }

    // The table's size changes in both copies; the 128 table loses sentences 129 on in both.
    void tableSize_data()
    {
        QTest::addColumn<bool>("to512");
        QTest::addColumn<bool>("above128");
        QTest::addColumn<QStringList>("after");
        QTest::newRow("to 512") << true << true << QStringList {"3=A.MP2 A004 4", "200=B.MP2 A201 201"};
        QTest::newRow("to 128") << false << true << QStringList {"3=A.MP2 A004 4"};
    }
    void tableSize()
    {
        QFETCH(bool, to512);
        SharedState state(QDir::tempPath());
        state.Setting = tableOf(true, {"3=A.MP2", "200=B.MP2"});
        state.Setting.CardAttribute |= SettingData::AttributeWriteProtect;
        state.SettingBuffer = state.Setting;
        QTEST(sentencesAbove128(state), "above128");
        setSentenceTableSize(state, to512);
        QTEST(namedEntries(state.Setting), "after");
        QTEST(namedEntries(state.SettingBuffer), "after");
        QCOMPARE(state.Setting.CardAttribute, state.SettingBuffer.CardAttribute);
        QCOMPARE(state.Setting.sentenceTable().is512(), to512);
        QVERIFY(state.Setting.CardAttribute & SettingData::AttributeWriteProtect);
    }

    // A program copy lands in both copies at once, and the windows hear of it.
    void programCopy()
    {
        SharedState state(QDir::tempPath());
        state.SettingBuffer.ProgramName[2] = QStringLiteral("EVENING");
        state.SettingBuffer.ProgramData[2][0] = QStringLiteral("0005");
        state.SettingBuffer.RepeatInterval[2] = 9;
        state.CopyBufferToSetting(SettingSection::All);
        state.SettingBuffer.ProgramName[63] = QStringLiteral("PENDING");
        QSignalSpy replaced(&state, &SharedState::programReplaced);
        copyProgramInBothCopies(state, 3, 64);
        for (const SettingData *copy : {&state.Setting, &state.SettingBuffer}) {
            QCOMPARE(copy->ProgramName[63], QStringLiteral("EVENING"));
            QCOMPARE(copy->ProgramData[63][0], QStringLiteral("0005"));
            QCOMPARE(copy->RepeatInterval[63], qint16(9));
        }
        QVERIFY(state.SettingEqualsBuffer(SettingSection::All));
        QCOMPARE(replaced.size(), 1);
        QCOMPARE(replaced.first().first().toInt(), 64);
    }
};

QTEST_GUILESS_MAIN(tst_SentenceTable)
#include "tst_SentenceTable.moc"
