#include "SettingFileReader.h"
#include "SettingFileWriter.h"
#include "TestProjects.h"
#include "TextChecks.h"

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
    QByteArray out;
    for (int i = 0; i < times; ++i)
        out += line + "\r\n";
    return out;
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
    void readsTheTwoSentenceExample()
    {
        const auto state = freshState();
        QVERIFY(ReadSettingFile(*state, exampleFile()));
        const SettingData &b = state->SettingBuffer;
        QCOMPARE(b.ProjectName, QStringLiteral("Station"));
        QCOMPARE(b.Creator, QStringLiteral("Ann"));
        QCOMPARE(b.Explanation, QStringLiteral("Platform messages"));
        QCOMPARE(b.SentenceFileName[0], QStringLiteral("HELLO.MP2"));
        QCOMPARE(b.SentenceFileName[1], QStringLiteral("RAIN2.MP2"));
        QVERIFY(b.SentenceFileName[2].isEmpty());
        QCOMPARE(b.SentenceControl[0], QStringLiteral("A001"));
        QCOMPARE(b.SentenceControl[1], QStringLiteral("A002"));
        QCOMPARE(b.ProgramSort[1], qint16(2));
        QCOMPARE(b.ProgramData[63][0], QStringLiteral("0064"));
        QVERIFY(b.ProgramData[63][1].isEmpty());
        QCOMPARE(b.ProgramName[63], QStringLiteral("P064"));
        QVERIFY(state->SurveillanceFile);
        // C:\Voice\ is not on this PC: the program's folder, without the separator.
        QCOMPARE(state->SentencePath, m_home.path());
    }

    void keepsAnExistingSentenceFolder()
    {
        const auto state = freshState();
        QByteArray file = exampleFile();
        file.replace("SNTPATH,C:\\Voice\\,", "SNTPATH," + m_home.path().toUtf8() + "/,");
        QVERIFY(ReadSettingFile(*state, file));
        QCOMPARE(state->SentencePath, m_home.path() + QLatin1Char('/'));
    }

    void roundTripIsByteExact_data()
    {
        QTest::addColumn<int>("capacity");
        QTest::addColumn<int>("used");
        QTest::addColumn<int>("steps");
        QTest::addColumn<bool>("tone");
        for (bool tone : {true, false}) {
            const char *t = tone ? "tone" : "no tone";
            QTest::addRow("128 card, empty, %s", t) << 128 << 0 << 1 << tone;
            QTest::addRow("128 card, 5 sentences, %s", t) << 128 << 5 << 7 << tone;
            QTest::addRow("128 card, full, %s", t) << 128 << 128 << 128 << tone;
            QTest::addRow("512 card, 300 sentences, %s", t) << 512 << 300 << 40 << tone;
            QTest::addRow("512 card, full, %s", t) << 512 << 512 << 128 << tone;
        }
    }
    void roundTripIsByteExact()
    {
        QFETCH(int, capacity);
        QFETCH(int, used);
        QFETCH(int, steps);
        QFETCH(bool, tone);
        const auto state = freshState();
        fillSentences(state->Setting, capacity, used);
        fillSteps(state->Setting, steps);
        state->Setting.ProgramOption[9] = 0xC028;
        state->Setting.RepeatCount[10] = 0;
        state->Setting.RepeatInterval[11] = 9;
        state->SurveillanceFile = tone;
        const QByteArray written = WriteSettingFile(*state);

        state->NewSetting();
        QVERIFY(ReadSettingFile(*state, written));
        state->CopyBufferToSetting(SettingSection::All);
        QCOMPARE(WriteSettingFile(*state), written);
    }

    void toneOffGivesSlotZeroItsRawFields()
    {
        const auto state = freshState();
        QByteArray file = exampleFile();
        file.replace("SVFILE,NOMAL,", "SVFILE,NONE,");
        file.replace("SNTCTTL,SIN1KHZ ,\r\n", "");
        file.replace("FILENAME,SIN1KHZ ,\r\n", "");
        file.replace("PRGSORT,0000,\r\n", "");
        QVERIFY(ReadSettingFile(*state, file));
        const SettingData &b = state->SettingBuffer;
        QVERIFY(!state->SurveillanceFile);
        QCOMPARE(b.SentenceFileName[0], QStringLiteral("HELLO   "));
        QCOMPARE(b.SentenceControl[0], QStringLiteral("A001    "));
        QCOMPARE(b.SentenceFileName[1], QStringLiteral("RAIN2.MP2"));
        QCOMPARE(b.SentenceControl[1], QStringLiteral("A002"));

        // Written again, the raw name loses its last four characters: names of up to four
        // characters survive (their padding goes), longer ones are cut.
        state->CopyBufferToSetting(SettingSection::All);
        QVERIFY(WriteSettingBody(*state).contains("FILENAME,HELL    ,\r\nFILENAME,RAIN2   ,"));
    }

    void sortNumbersPlaceTheSentences()
    {
        const auto state = freshState();
        QByteArray file = exampleFile();
        file.replace("PRGSORT,0001,\r\nPRGSORT,0002,", "PRGSORT,0300,\r\nPRGSORT,0001,");
        QVERIFY(ReadSettingFile(*state, file));
        const SettingData &b = state->SettingBuffer;
        QCOMPARE(b.SentenceFileName[299], QStringLiteral("HELLO.MP2"));
        QCOMPARE(b.ProgramSort[299], qint16(300));
        QCOMPARE(b.SentenceFileName[0], QStringLiteral("RAIN2.MP2"));
        QCOMPARE(b.SentenceControl[0], QStringLiteral("A002"));
        QVERIFY(b.SentenceFileName[1].isEmpty());
        QCOMPARE(b.ProgramSort[1], qint16(0));

        // A number listed twice keeps the later sentence; the earlier one is gone.
        file = exampleFile();
        file.replace("PRGSORT,0001,\r\nPRGSORT,0002,", "PRGSORT,0002,\r\nPRGSORT,0002,");
        QVERIFY(ReadSettingFile(*state, file));
        QCOMPARE(state->SettingBuffer.SentenceFileName[1], QStringLiteral("RAIN2.MP2"));
        QVERIFY(state->SettingBuffer.SentenceFileName[0].isEmpty());
    }

    void acceptedVariants_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("explanation");
        QTest::addColumn<QString>("cardName");
        QTest::addColumn<int>("attribute");
        QTest::newRow("comment with a comma") << crlf({"EXPLE,one, two,"}) << "one, two"
                                              << "" << 0xA6;
        QTest::newRow("comment over lines") << crlf({"EXPLE,one", "two", "three,"}) << "one\r\ntwo\r\nthree"
                                            << "" << 0xA6;
        QTest::newRow("comment over 11 further lines")
            << crlf({"EXPLE,0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11,"})
            << "0\r\n1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n10\r\n11"
            << "" << 0xA6;
        QTest::newRow("empty comment line is ignored") << crlf({"EXPLE,"}) << ""
                                                       << "" << 0xA6;
        QTest::newRow("card name without final comma") << crlf({"CARDNAME,abc"}) << ""
                                                       << "abc" << 0xA6;
        QTest::newRow("card name bare key") << crlf({"CARDNAME,"}) << ""
                                            << "" << 0xA6;
        QTest::newRow("lower-case attribute reads as 0") << crlf({"CARDATB,a6,"}) << ""
                                                         << "" << 0;
        QTest::newRow("attribute 040") << crlf({"CARDATB,040,"}) << ""
                                       << "" << 0x40;
        QTest::newRow("top bit") << crlf({"CARDATB,FFFF,"}) << ""
                                 << "" << -1;
        QTest::newRow("LF line ends") << QByteArray("CARDNAME,x,\nEXPLE,e,\n") << "e"
                                      << "x" << 0xA6;
        QTest::newRow("last line without line end") << QByteArray("CARDNAME,x,") << ""
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
        QTest::newRow("empty file") << QByteArray();
        QTest::newRow("empty line") << QByteArray("\r\n");
        QTest::newRow("key of 11 characters") << crlf({"ABCDEFGHIJK,x,"});
        QTest::newRow("unknown key") << crlf({"PJNAME,a,", "VOLUME,3,"});
        QTest::newRow("lower-case key") << crlf({"pjname,a,"});
        QTest::newRow("attribute not hexadecimal") << crlf({"CARDATB,XY,"});
        QTest::newRow("attribute of 8 characters") << crlf({"CARDATB,000000A6,"});
        QTest::newRow("attribute wider than 16 bits") << crlf({"CARDATB,10000,"});
        QTest::newRow("comment never ends")
            << crlf({"EXPLE,0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12,"});
        QTest::newRow("comment cut by the end of file") << crlf({"EXPLE,open"});
        QTest::newRow("comment line ending in a comma cut early") << crlf({"EXPLE,a", "b,", "c,"});
        QTest::newRow("controls then garbage")
            << head + crlf({"SNTCTTL,SIN1KHZ ,", "SNTCTTL,A001    ,", "AUTOLVL,000,"});
        QTest::newRow("controls end the file") << head + crlf({"SNTCTTL,SIN1KHZ ,", "SNTCTTL,A001    ,"});
        QTest::newRow("fewer names than controls") << head
                + crlf({"SNTCTTL,SIN1KHZ ,", "SNTCTTL,A001    ,", "SNTCTTL,A002    ,", "FILENAME,SIN1KHZ ,",
                        "FILENAME,A       ,", "AUTOLVL,000,"});
        QTest::newRow("one step line only") << head + crlf({"PRGDATA,0001,3000,", "PRGOPT,2D01,"});
        QTest::newRow("129 steps") << head + "PRGDATA," + repeated("0001,", 129).replace("\r\n", "")
                + "3000,\r\n" + repeated("PRGDATA,3000,", 63);
        QTest::newRow("missing option lines") << head + repeated("PRGOPT,2D01,", 63);
        QTest::newRow("repeat count too large")
            << head + crlf({"RPTCNT,99999,"}) + repeated("RPTCNT,001,", 63);
        QTest::newRow("repeat interval line missing")
            << head + repeated("RPTITV,000,", 63) + crlf({"PRGNAME,P,"});
        QTest::newRow("names cut short") << head + repeated("PRGNAME,P,", 10);
        QTest::newRow("sort number 0") << crlf({"SVFILE,NONE,", "CARDATB,A6,", "SNTCTTL,A001    ,",
                                                "FILENAME,HELLO   ,", "AUTOLVL,000,"})
                + programGroups() + crlf({"PRGSORT,0000,"});
        QTest::newRow("sort number 513") << head
                + crlf({"SNTCTTL,SIN1KHZ ,", "SNTCTTL,A001    ,", "FILENAME,SIN1KHZ ,", "FILENAME,HELLO   ,",
                        "AUTOLVL,000,", "AUTOLVL,000,"})
                + programGroups() + crlf({"PRGSORT,0000,", "PRGSORT,0513,"});
        QTest::newRow("binary garbage") << QByteArray(4096, '\xFF');
        QTest::newRow("huge line without comma") << QByteArray(4 << 20, 'A');
        QTest::newRow("huge step line") << head + "PRGDATA," + repeated("0001,", 1 << 18).replace("\r\n", "");
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
        QTest::newRow("project in the parent folder")
            << false << project << QByteArray("PJNAME,../outside,") << "PJNAME \"../outside\"";
        QTest::newRow("project is the parent")
            << false << project << QByteArray("PJNAME,..,") << "PJNAME \"..\"";
        QTest::newRow("project is the program folder")
            << false << project << QByteArray("PJNAME,.,") << "PJNAME \".\"";
        QTest::newRow("project of dots Windows trims")
            << false << project << QByteArray("PJNAME,.. .,") << "PJNAME \".. .\"";
        QTest::newRow("project with a Windows separator")
            << false << project << QByteArray("PJNAME,..\\outside,") << "PJNAME \"..\\outside\"";
        QTest::newRow("project as an absolute path")
            << false << project << QByteArray("PJNAME,/tmp,") << "PJNAME \"/tmp\"";
        QTest::newRow("project on a drive")
            << false << project << QByteArray("PJNAME,C:x,") << "PJNAME \"C:x\"";
        QTest::newRow("project with a control character")
            << false << project << QByteArray("PJNAME,a\tb,") << "PJNAME \"a\tb\"";
        QTest::newRow("sentence two folders up")
            << false << hello << QByteArray("FILENAME,../../ab,") << "FILENAME \"../../ab.MP2\"";
        QTest::newRow("sentence with Windows separators")
            << false << hello << QByteArray("FILENAME,..\\..\\ab,") << "FILENAME \"..\\..\\ab.MP2\"";
        QTest::newRow("first sentence, tone off, two folders up")
            << true << hello << QByteArray("FILENAME,../../ab,") << "FILENAME \"../../ab\"";
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

    void whatCameBeforeARejectionStays()
    {
        const auto state = freshState();
        QVERIFY(!ReadSettingFile(*state, crlf({"PJNAME,kept,", "BROKEN"})));
        QCOMPARE(state->SettingBuffer.ProjectName, QStringLiteral("kept"));
        QCOMPARE(state->SentencePath, m_home.path());
    }

    void cardControlFileKeepsTheToneSwitch()
    {
        const auto state = freshState();
        fillSentences(state->Setting, 128, 3);
        state->SurveillanceFile = false;
        const QByteArray body = WriteSettingBody(*state);

        state->NewSetting();
        state->SurveillanceFile = false;
        QVERIFY(ReadSettingFile(*state, body));
        QVERIFY(!state->SurveillanceFile);
        QCOMPARE(state->SentencePath, m_home.path());
        QCOMPARE(state->SettingBuffer.SentenceFileName[2], QStringLiteral("S003.MP2"));

        // A card written with the tone, read while the switch is off, takes the tone's "0000" sort
        // line for a sentence's and is rejected.
        state->NewSetting();
        state->SurveillanceFile = false;
        QVERIFY(!ReadSettingFile(*state, exampleFile().mid(exampleFile().indexOf("CARDNAME,"))));
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
        QTest::newRow("Windows-1252") << "windows-1252" << QByteArray("Caf\xE9") << "Café";
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
