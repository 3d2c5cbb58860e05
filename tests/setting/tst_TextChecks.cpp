#include "NumberText.h"
#include "TextChecks.h"
#include "TextEncoding.h"

#include <QTest>

class tst_TextChecks : public QObject
{
    Q_OBJECT

private slots:
    void hexText_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("empty") << 0 << "" << true;
        QTest::newRow("upper") << 0 << "A6" << true;
        QTest::newRow("lower passes the check") << 0 << "a6" << true;
        QTest::newRow("all digits") << 0 << "0123456789ABCDEF" << true;
        QTest::newRow("G") << 0 << "1G" << false;
        QTest::newRow("blank") << 0 << "A 6" << false;
        QTest::newRow("minus") << 0 << "-1" << false;
        QTest::newRow("other mode looks at nothing") << 1 << "xyz" << true;
    }
    void hexText()
    {
        QFETCH(int, mode);
        QFETCH(QString, text);
        QFETCH(bool, accepted);
        QCOMPARE(IsHexText(mode, text), accepted);
    }

    void hexToLong_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("hasValue");
        QTest::addColumn<int>("value");
        QTest::newRow("empty") << "" << true << 0;
        QTest::newRow("A6") << "A6" << true << 0xA6;
        QTest::newRow("2D01") << "2D01" << true << 0x2D01;
        QTest::newRow("lower case reads as 0") << "a6" << true << 0;
        QTest::newRow("bad character drops what was summed") << "1x2" << true << 0x100;
        QTest::newRow("bad last character keeps the rest") << "12x" << true << 0x120;
        QTest::newRow("seven characters") << "FFFFFFF" << true << 0x0FFFFFFF;
        QTest::newRow("eight characters overflow") << "00000001" << false << 0;
        QTest::newRow("long text overflows") << "123456789ABC" << false << 0;
    }
    void hexToLong()
    {
        QFETCH(QString, text);
        QFETCH(bool, hasValue);
        QFETCH(int, value);
        const std::optional<qint32> result = HexTextToLong(text);
        QCOMPARE(result.has_value(), hasValue);
        if (hasValue)
            QCOMPARE(*result, value);
    }

    void decimalText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("empty") << "" << true;
        QTest::newRow("digits") << "0123456789" << true;
        QTest::newRow("minus") << "-1" << false;
        QTest::newRow("point") << "1.5" << false;
        QTest::newRow("blank") << "1 " << false;
        QTest::newRow("full-width digit") << QStringLiteral("\uFF11") << false;
    }
    void decimalText()
    {
        QFETCH(QString, text);
        QFETCH(bool, accepted);
        QCOMPARE(IsDecimalText(text), accepted);
    }

    void fileNameText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("empty") << "" << true;
        QTest::newRow("blanks and full stops") << "My project 1.0" << true;
        QTest::newRow("japanese") << QStringLiteral("駅の案内") << true;
        for (const char *bad : {"\\", "/", ":", "*", "?", "<", ">", "|", ",", "\"", ";"})
            QTest::newRow(qPrintable(QStringLiteral("contains %1").arg(QLatin1String(bad))))
                << QStringLiteral("a%1b").arg(QLatin1String(bad)) << false;
    }
    void fileNameText()
    {
        QFETCH(QString, text);
        QFETCH(bool, accepted);
        QCOMPARE(IsValidFileNameText(text), accepted);
    }

    void usableNameText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("empty") << "" << true;
        QTest::newRow("blanks and full stops") << "My project 1.0" << true;
        QTest::newRow("leading full stop") << ".north" << true;
        QTest::newRow("only blanks") << "   " << true;
        QTest::newRow("the folder itself") << "." << false;
        QTest::newRow("the parent") << ".." << false;
        QTest::newRow("three full stops") << "..." << false;
        QTest::newRow("parent with a trailing blank") << ".. " << false;
        QTest::newRow("parent and a folder") << "../outside" << false;
        QTest::newRow("Windows parent") << "..\\outside" << false;
        QTest::newRow("tab") << "a\tb" << false;
        QTest::newRow("line break") << "a\nb" << false;
        QTest::newRow("NUL") << QString(QChar(0)) << false;
        QTest::newRow("semicolon") << "a;b" << false;
    }
    void usableNameText()
    {
        QFETCH(QString, text);
        QFETCH(bool, accepted);
        QCOMPARE(IsUsableNameText(text), accepted);
    }

    void characterTheCodePageCannotHold_data()
    {
        QTest::addColumn<QString>("encoding");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("first");
        QTest::newRow("ASCII in CP932") << "CP932"
                                        << "Station 1"
                                        << "";
        QTest::newRow("accent in CP932") << "CP932" << QStringLiteral("Café") << QStringLiteral("é");
        QTest::newRow("kanji in CP932") << "CP932" << QStringLiteral("駅の案内") << "";
        QTest::newRow("half-width kana in CP932") << "CP932" << QStringLiteral("ｱﾅｳﾝｽ") << "";
        QTest::newRow("umlaut after kanji in CP932")
            << "CP932" << QStringLiteral("駅ü駅ö") << QStringLiteral("ü");
        QTest::newRow("emoji in CP932")
            << "CP932" << QStringLiteral("a\U0001F600b") << QStringLiteral("\U0001F600");
        QTest::newRow("accent in Windows-1252") << "windows-1252" << QStringLiteral("Café") << "";
        QTest::newRow("kanji in Windows-1252")
            << "windows-1252" << QStringLiteral("Caf駅") << QStringLiteral("駅");
        QTest::newRow("emoji in UTF-8") << "UTF-8" << QStringLiteral("\U0001F600") << "";
        QTest::newRow("lone surrogate in UTF-8")
            << "UTF-8" << QString(QChar(0xD800)) << QString(QChar(0xD800));
    }
    void characterTheCodePageCannotHold()
    {
        QFETCH(QString, encoding);
        QFETCH(QString, text);
        QFETCH(QString, first);
        const TextEncoding codePage(encoding);
        QVERIFY(codePage.isValid());
        QCOMPARE(codePage.firstUnencodable(text), first);
        // What is refused is exactly what would not come back from the file.
        QCOMPARE(codePage.decode(codePage.encode(text)) == text, first.isEmpty());
    }

    void zeroPattern_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("formatted");
        QTest::newRow("short number") << "12"
                                      << "0012";
        QTest::newRow("four digits") << "2005"
                                     << "2005";
        QTest::newRow("blanks around") << " 7 "
                                       << "0007";
        QTest::newRow("half rounds up") << "1.5"
                                        << "0002";
        QTest::newRow("negative") << "-3"
                                  << "-0003";
        QTest::newRow("exponent") << "3e3"
                                  << "3000";
        QTest::newRow("letters stay") << "AB"
                                      << "AB";
        QTest::newRow("empty stays") << ""
                                     << "";
        QTest::newRow("lone point stays") << "."
                                          << ".";
    }
    void zeroPattern()
    {
        QFETCH(QString, text);
        QFETCH(QString, formatted);
        QCOMPARE(applyZeroPattern(text, 4), formatted);
    }
};

QTEST_GUILESS_MAIN(tst_TextChecks)
#include "tst_TextChecks.moc"
