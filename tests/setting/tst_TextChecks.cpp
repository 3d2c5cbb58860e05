#include "setting/NumberText.h"
#include "setting/TextChecks.h"
#include "setting/TextEncoding.h"

#include <QTest>

class tst_TextChecks : public QObject
{
    Q_OBJECT

private slots:
    void hexToLong_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("hasValue");
        QTest::addColumn<int>("value");
        QTest::newRow("bad character drops what was summed") << "1x2" << true << 0x100;
        QTest::newRow("seven characters") << "FFFFFFF" << true << 0x0FFFFFFF;
        QTest::newRow("eight characters overflow") << "00000001" << false << 0;
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

    void characterTheCodePageCannotHold_data()
    {
        QTest::addColumn<QString>("encoding");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("first");
        QTest::newRow("accent in CP932") << "CP932" << QStringLiteral("Café") << QStringLiteral("é");
        QTest::newRow("lone surrogate in UTF-8")
            << "UTF-8" << QString(QChar(0xD800)) << QString(QChar(0xD800));
        // A named built-in code page is taken as valid without a look-up: it must hold Japanese.
        if (const QString builtIn = TextEncoding::platformDefault().name();
            builtIn != QLatin1String("System"))
            QTest::newRow("Japanese in the built-in code page")
                << builtIn << QStringLiteral("駅の案内") << QString();
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
        QTest::newRow("half rounds up") << "1.5"
                                        << "0002";
        QTest::newRow("negative") << "-3"
                                  << "-0003";
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
