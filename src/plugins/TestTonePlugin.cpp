// The test tone's MP2 encoder as a plugin, loaded when a card write first needs the tone.

#include "setting/TestToneEncoder.h"

class TestTonePlugin : public QObject, public TestToneEncoderInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID DQ480_TEST_TONE_ENCODER_IID)
    Q_INTERFACES(TestToneEncoderInterface)

public:
    QByteArray encode(QString &error) override { return encodeTestTone(error); }
};

#include "TestTonePlugin.moc"
