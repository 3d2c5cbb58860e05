#include "setting/SettingFileReader.h"
#include "setting/SettingFileWriter.h"
#include "setting/TextChecks.h"
#include "support/TestProjects.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {

QByteArray exampleFile()
{
    QFile file(QStringLiteral(DQ480_TEST_DATA "/example-two-sentences.stf"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("missing test data");
    return file.readAll();
}

// A file made of the given lines, each ended by CR LF.
QByteArray crlf(const QList<QByteArray> &lines)
{
    QByteArray out;
    for (const QByteArray &line : lines)
        out += line + "\r\n";
    return out;
}

QByteArray repeated(const QByteArray &line, int times)
{
    return crlf(QList<QByteArray>(times, line));
}

// The 64-line program groups of a new project, for building files around a part under test.
QByteArray programGroups()
{
    return repeated("PRGDATA,3000,", 64) + repeated("PRGOPT,2D01,", 64) + repeated("RPTCNT,001,", 64)
        + repeated("RPTITV,000,", 64) + repeated("PRGNAME,P,", 64);
}

} // namespace

class tst_SettingFileReader : public QObject
{
    Q_OBJECT

    QTemporaryDir m_home;

    std::unique_ptr<SharedState> freshState(const QString &encoding = QStringLiteral("CP932"))
    {
        return makeTestState(m_home.path(), encoding);
    }

private slots:
    void roundTripIsByteExact()
    {
        const auto state = freshState();
        fillSentences(state->Setting, 512, 512);
        fillSteps(state->Setting, 128);
        state->Setting.ProgramOption[9] = 0xC028;
        state->Setting.RepeatCount[10] = 0;
        state->Setting.RepeatInterval[11] = 9;
        state->SurveillanceFile = true;
        const QByteArray written = WriteSettingFile(*state);

        state->NewSetting();
        QVERIFY(ReadSettingFile(*state, written));
        state->CopyBufferToSetting(SettingSection::All);
        QCOMPARE(WriteSettingFile(*state), written);
    }

    void acceptedVariants_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("explanation");
        QTest::addColumn<QString>("cardName");
        QTest::addColumn<int>("attribute");
        QTest::newRow("comment with a comma") << crlf({"EXPLE,one, two,"}) << "one, two"
                                              << "" << 0xA6;
        QTest::newRow("comment over 11 further lines")
            << crlf({"EXPLE,0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11,"})
            << "0\r\n1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n10\r\n11"
            << "" << 0xA6;
        QTest::newRow("LF line ends") << QByteArray("CARDNAME,x,\nEXPLE,e,\n") << "e"
                                      << "x" << 0xA6;
    }
    void acceptedVariants()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, explanation);
        QFETCH(QString, cardName);
        QFETCH(int, attribute);
        const auto state = freshState();
        QVERIFY(ReadSettingFile(*state, file));
        QCOMPARE(state->SettingBuffer.Explanation, explanation);
        QCOMPARE(state->SettingBuffer.CardName, cardName);
        QCOMPARE(state->SettingBuffer.CardAttribute, qint16(attribute));
    }

    void rejected_data()
    {
        QTest::addColumn<QByteArray>("file");
        const QByteArray head = crlf({"CARDNAME,,", "CARDATB,A6,"});
        QTest::newRow("key of 11 characters") << crlf({"ABCDEFGHIJK,x,"});
        QTest::newRow("comment never ends")
            << crlf({"EXPLE,0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12,"});
        QTest::newRow("fewer names than controls") << head
                + crlf({"SNTCTTL,SIN1KHZ ,", "SNTCTTL,A001    ,", "SNTCTTL,A002    ,", "FILENAME,SIN1KHZ ,",
                        "FILENAME,A       ,", "AUTOLVL,000,"});
        QTest::newRow("129 steps") << head + "PRGDATA," + repeated("0001,", 129).replace("\r\n", "")
                + "3000,\r\n" + repeated("PRGDATA,3000,", 63);
        QTest::newRow("sort number 513") << head
                + crlf({"SNTCTTL,SIN1KHZ ,", "SNTCTTL,A001    ,", "FILENAME,SIN1KHZ ,", "FILENAME,HELLO   ,",
                        "AUTOLVL,000,", "AUTOLVL,000,"})
                + programGroups() + crlf({"PRGSORT,0000,", "PRGSORT,0513,"});
        QTest::newRow("huge line without comma") << QByteArray(4 << 20, 'A');
    }
    void rejected()
    {
        QFETCH(QByteArray, file);
        const auto state = freshState();
        QVERIFY(!ReadSettingFile(*state, file));
    }

    void namesThatWouldLeaveTheirFolderAreRefused_data()
    {
        QTest::addColumn<bool>("toneOff");
        QTest::addColumn<QByteArray>("from");
        QTest::addColumn<QByteArray>("to");
        QTest::addColumn<QString>("problem");
        const QByteArray project = "PJNAME,Station,";
        const QByteArray hello = "FILENAME,HELLO   ,";
        QTest::newRow("project with a Windows separator")
            << false << project << QByteArray("PJNAME,..\\outside,") << "PJNAME \"..\\outside\"";
        QTest::newRow("project as an absolute path")
            << false << project << QByteArray("PJNAME,/tmp,") << "PJNAME \"/tmp\"";
        QTest::newRow("first sentence, tone off, the parent")
            << true << hello << QByteArray("FILENAME,..      ,") << "FILENAME \"..      \"";
    }
    void namesThatWouldLeaveTheirFolderAreRefused()
    {
        QFETCH(bool, toneOff);
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        QFETCH(QString, problem);
        QByteArray file = exampleFile();
        if (toneOff) {
            file.replace("SVFILE,NOMAL,", "SVFILE,NONE,");
            file.replace("SNTCTTL,SIN1KHZ ,\r\n", "");
            file.replace("FILENAME,SIN1KHZ ,\r\n", "");
            file.replace("PRGSORT,0000,\r\n", "");
        }
        QVERIFY(file.contains(from));
        file.replace(from, to);
        const auto state = freshState();
        QString why;
        QVERIFY(!ReadSettingFile(*state, file, why));
        QVERIFY2(why.startsWith(problem), qPrintable(why + QLatin1String(" / ") + problem));
        for (const QString &name : state->SettingBuffer.SentenceFileName)
            QVERIFY2(IsUsableNameText(name), qPrintable(name));
        QVERIFY(IsUsableNameText(state->SettingBuffer.ProjectName));
    }

    void namesWithBlanksAndFullStopsAreKept()
    {
        QByteArray file = exampleFile();
        file.replace("PJNAME,Station,", "PJNAME,.North line v1.2 ,");
        file.replace("FILENAME,HELLO   ,", "FILENAME,A.B..C  ,");
        const auto state = freshState();
        QString why;
        QVERIFY2(ReadSettingFile(*state, file, why), qPrintable(why));
        QVERIFY(why.isEmpty());
        QCOMPARE(state->SettingBuffer.ProjectName, QStringLiteral(".North line v1.2 "));
        QCOMPARE(state->SettingBuffer.SentenceFileName[0], QStringLiteral("A.B..C.MP2"));
    }

    void japaneseTextsRoundTripByteForByte_data()
    {
        QTest::addColumn<QString>("encoding");
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QString>("expected");
        QTest::newRow("CP932 kanji") << "CP932" << QByteArray("\x89\x77\x82\xCC\x88\xC4\x93\xE0")
                                     << "駅の案内";
        QTest::newRow("CP932 half-width kana") << "CP932" << QByteArray("\xB1\xC5\xB3\xDD\xBD") << "ｱﾅｳﾝｽ";
        QTest::newRow("CP932 NEC circled digit") << "CP932" << QByteArray("\x87\x40") << "①";
    }
    void japaneseTextsRoundTripByteForByte()
    {
        QFETCH(QString, encoding);
        QFETCH(QByteArray, name);
        QFETCH(QString, expected);
        QByteArray file = exampleFile();
        file.replace("PJNAME,Station,", "PJNAME," + name + ",");
        file.replace("CREATOR,Ann,", "CREATOR," + name + name + ",");
        file.replace("EXPLE,Platform messages,", "EXPLE," + name + "\r\n" + name + ",");
        const auto state = freshState(encoding);
        state->SentencePath = QStringLiteral("C:\\Voice\\");
        QVERIFY(ReadSettingFile(*state, file));
        QCOMPARE(state->SettingBuffer.ProjectName, expected);
        QCOMPARE(state->SettingBuffer.Explanation, expected + QLatin1String("\r\n") + expected);
        state->CopyBufferToSetting(SettingSection::All);
        state->SentencePath = QStringLiteral("C:\\Voice\\");
        QCOMPARE(WriteSettingFile(*state), file);
    }
};

QTEST_GUILESS_MAIN(tst_SettingFileReader)
#include "tst_SettingFileReader.moc"
