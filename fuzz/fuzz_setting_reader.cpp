// Feeds arbitrary bytes to the setting-file reader: it must answer true or false, never crash,
// hang or grow without bound. What it accepts is written out and read again, which must not crash
// either (an accepted file can break the sentence invariants, so it need not be accepted again).
// The looks an open takes before reading (the file's shape, bytes the code page would change) and
// their messages meet the same bytes.

#include "setting/CodePageCheck.h"
#include "setting/SettingFileReader.h"
#include "setting/SettingFileWriter.h"
#include "setting/SharedState.h"
#include "setting/TextShape.h"

#include <cstdint>
#include <memory>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const auto state = std::make_unique<SharedState>(QStringLiteral("/nonexistent-dq480-home"),
                                                            TextEncoding(QStringLiteral("CP932")));
    state->NewSetting();
    const QByteArrayView bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QString path = QStringLiteral("fuzz.stf");
    textShapeMessage(textShape(bytes), path, state->Encoding.name());
    if (const std::optional<ChangedLine> changed
        = findChangedLine(bytes, state->Encoding.decode(bytes), state->Encoding))
        changedLineMessage(*changed, path, state->Encoding.name());
    if (!ReadSettingFile(*state, bytes))
        return 0;
    state->CopyBufferToSetting(SettingSection::All);
    const QByteArray written = WriteSettingFile(*state);
    state->NewSetting();
    ReadSettingFile(*state, written);
    return 0;
}
