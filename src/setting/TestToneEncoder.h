#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

/// Encodes the test tone: a 1 kHz sine, MPEG-1 Layer II, mono, 32 kHz, 64 kbit/s, three seconds.
/// Empty with `error` when it cannot. The desktop program loads the encoder when a card write
/// first needs the tone; the command-line tool has it built in.
QByteArray encodeTestTone(QString &error);

/// What the test-tone plugin offers.
class TestToneEncoderInterface
{
public:
    virtual ~TestToneEncoderInterface() = default;
    virtual QByteArray encode(QString &error) = 0;
};

#define DQ480_TEST_TONE_ENCODER_IID "com.arvon.dq480.TestToneEncoder/1"
Q_DECLARE_INTERFACE(TestToneEncoderInterface, DQ480_TEST_TONE_ENCODER_IID)
