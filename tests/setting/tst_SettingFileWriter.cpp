#include "setting/SettingFileWriter.h"
#include "support/TestProjects.h"

#include <QFile>
#include <QTest>

namespace {

// The lines that start with `key`, each checked to end with CR LF and given without it.
QList<QByteArray> linesStartingWith(const QByteArray &bytes, const QByteArray &key)
{
    QList<QByteArray> found;
    for (const QByteArray &line : bytes.chopped(bytes.endsWith('\n') ? 1 : 0).split('\n')) {
        if (!line.endsWith('\r'))
            qFatal("line without CR LF: %s", line.constData());
        if (line.startsWith(key))
            found.append(line.chopped(1));
    }
    return found;
}

} // namespace

class tst_SettingFileWriter : public QObject
{
    Q_OBJECT

private slots:
    void writesTheTwoSentenceExample()
    {
        const auto state = makeTestState(QStringLiteral("/tmp"));
        SettingData &s = state->Setting;
        s.ProjectName = QStringLiteral("Station");
        s.Creator = QStringLiteral("Ann");
        s.Explanation = QStringLiteral("Platform messages");
        state->SentencePath = QStringLiteral("C:\\Voice\\");
        s.SentenceFileName[0] = QStringLiteral("hello.mp2");
        s.SentenceFileName[1] = QStringLiteral("rain2.mp2");
        s.SentenceControl[0] = QStringLiteral("A001");
        s.SentenceControl[1] = QStringLiteral("A002");
        s.ProgramSort[0] = 1;
        s.ProgramSort[1] = 2;

        QFile expected(QStringLiteral(DQ480_TEST_DATA "/example-two-sentences.stf"));
        QVERIFY(expected.open(QIODevice::ReadOnly));
        const QByteArray expectedBytes = expected.readAll();
        QCOMPARE(WriteSettingFile(*state), expectedBytes);
        // The card control file is the same from "CARDNAME," on.
        QCOMPARE(WriteSettingBody(*state), expectedBytes.mid(expectedBytes.indexOf("CARDNAME,")));
    }

    void optionWord_data()
    {
        QTest::addColumn<qint32>("option");
        QTest::addColumn<QByteArray>("line");
        QTest::newRow("sign-extended endless word") << qint32(0xFFFFC028) << QByteArray("PRGOPT,C028,");
        QTest::newRow("wider than 16 bits") << qint32(0x12345) << QByteArray("PRGOPT,2345,");
    }
    void optionWord()
    {
        QFETCH(qint32, option);
        QFETCH(QByteArray, line);
        const auto state = makeTestState(QStringLiteral("/tmp"));
        state->Setting.ProgramOption[0] = option;
        QCOMPARE(linesStartingWith(WriteSettingBody(*state), "PRGOPT,").first(), line);
    }

    void sentenceFields_data()
    {
        QTest::addColumn<QString>("control");
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<QByteArray>("controlLine");
        QTest::addColumn<QByteArray>("fileLine");
        QTest::newRow("nine overwrite the comma")
            << "ABCDEFGHI"
            << "longname1.mp2" << QByteArray("SNTCTTL,ABCDEFGHI") << QByteArray("FILENAME,LONGNAME,");
        QTest::newRow("name shorter than its extension")
            << "A001"
            << "ab" << QByteArray("SNTCTTL,A001    ,") << QByteArray("FILENAME,        ,");
    }
    void sentenceFields()
    {
        QFETCH(QString, control);
        QFETCH(QString, fileName);
        QFETCH(QByteArray, controlLine);
        QFETCH(QByteArray, fileLine);
        const auto state = makeTestState(QStringLiteral("/tmp"));
        state->SurveillanceFile = false;
        state->Setting.SentenceControl[0] = control;
        state->Setting.SentenceFileName[0] = fileName;
        state->Setting.ProgramSort[0] = 1;
        const QByteArray body = WriteSettingBody(*state);
        QCOMPARE(linesStartingWith(body, "SNTCTTL,"), QList<QByteArray> {controlLine});
        QCOMPARE(linesStartingWith(body, "FILENAME,"), QList<QByteArray> {fileLine});
        QCOMPARE(linesStartingWith(body, "AUTOLVL,"), QList<QByteArray> {"AUTOLVL,000,"});
        QCOMPARE(linesStartingWith(body, "PRGSORT,"), QList<QByteArray> {"PRGSORT,0001,"});
    }

    void onlySlotsBelowTheCapacityAreWritten()
    {
        const auto state = makeTestState(QStringLiteral("/tmp"));
        SettingData &s = state->Setting;
        fillSentences(s, 128, 1);
        s.SentenceFileName[200] = QStringLiteral("HIGH.MP2");
        s.SentenceControl[200] = QStringLiteral("A201");
        s.ProgramSort[200] = 201;
        QCOMPARE(linesStartingWith(WriteSettingBody(*state), "PRGSORT,").size(), 2);

        s.CardAttribute = static_cast<qint16>(s.CardAttribute | 0x40);
        const QByteArray body = WriteSettingBody(*state);
        QCOMPARE(linesStartingWith(body, "PRGSORT,").last(), QByteArray("PRGSORT,0201,"));
        QCOMPARE(linesStartingWith(body, "FILENAME,").last(), QByteArray("FILENAME,HIGH    ,"));
    }
};

QTEST_GUILESS_MAIN(tst_SettingFileWriter)
#include "tst_SettingFileWriter.moc"
