// The plugins as the portable zip carries them. This test runs from inside the unpacked zip, as
// dq480.exe does, and is built as the program is: it looks for the plugins where the program
// looks, and each loads with the DLLs the zip brings. One taken away gives its one sentence.
#include "audio/AudioCodecs.h"
#include "audio/AudioImport.h"
#include "capabilities/CapabilityPlugin.h"
#include "setting/Mp2File.h"
#include "setting/TestToneEncoder.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class tst_PackagedPlugins : public QObject
{
    Q_OBJECT

private slots:
    // First, while nothing is loaded yet.
    void missingPluginIsNamed()
    {
        const QString folder = QCoreApplication::applicationDirPath();
        QFile plugin(folder + QStringLiteral("/dq480-testtone.dll"));
        QVERIFY2(plugin.exists(), "the package has no dq480-testtone.dll beside the programs");
        const QString away = folder + QStringLiteral("/dq480-testtone.away");
        QVERIFY(plugin.rename(away));
        QString error;
        const QByteArray tone = encodeTestTone(error);
        QVERIFY(QFile::rename(away, folder + QStringLiteral("/dq480-testtone.dll")));
        QVERIFY(tone.isEmpty());
        QCOMPARE(error,
                 QStringLiteral("The test-tone encoder is not installed: dq480-testtone is missing from %1.")
                     .arg(QDir::toNativeSeparators(folder)));
    }

    void pluginLoads_data()
    {
        QTest::addColumn<int>("which");
        QTest::addColumn<QByteArray>("interfaceId");
        QTest::newRow("dq480-playback")
            << int(Capability::SoundPlayback) << QByteArray(DQ480_SOUND_OUTPUT_IID);
        QTest::newRow("dq480-codecs") << int(Capability::AudioCodecs) << QByteArray(DQ480_AUDIO_CODECS_IID);
        QTest::newRow("dq480-testtone")
            << int(Capability::TestToneEncoder) << QByteArray(DQ480_TEST_TONE_ENCODER_IID);
    }
    void pluginLoads()
    {
        QFETCH(int, which);
        QFETCH(QByteArray, interfaceId);
        QString error;
        QObject *root = loadCapability(static_cast<Capability>(which), error);
        QVERIFY2(root, qPrintable(error));
        QVERIFY(root->qt_metacast(interfaceId.constData()));
    }

    // The libraries behind the plugins work too: the test tone is made and imported as a sentence.
    void toneIsMadeAndImported()
    {
        QTemporaryDir work;
        QString error;
        const QByteArray tone = encodeTestTone(error);
        QVERIFY2(!tone.isEmpty(), qPrintable(error));
        const QString tonePath = work.filePath(QStringLiteral("SIN1KHZ.MP2"));
        QFile file(tonePath);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(tone) == tone.size());
        file.close();
        QVERIFY(IsValidMp2File(tonePath));
        ImportResult result;
        const QString imported = work.filePath(QStringLiteral("TONE.MP2"));
        QVERIFY2(importRecording(tonePath, imported, ImportOptions(), result, error), qPrintable(error));
        QVERIFY(IsValidMp2File(imported));
    }
};

QTEST_GUILESS_MAIN(tst_PackagedPlugins)
#include "tst_PackagedPlugins.moc"
