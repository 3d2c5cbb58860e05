// The desktop program's test-tone encoder: the plugin, loaded when a card write first needs it.

#include "capabilities/CapabilityPlugin.h"
#include "setting/TestToneEncoder.h"

QByteArray encodeTestTone(QString &error)
{
    auto *encoder = capability<TestToneEncoderInterface>(Capability::TestToneEncoder, error);
    return encoder ? encoder->encode(error) : QByteArray();
}
