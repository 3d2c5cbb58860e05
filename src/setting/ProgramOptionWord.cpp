#include "setting/ProgramOptionWord.h"

#include <QCoreApplication>

namespace ProgramOptionWord {

namespace {

// The method bits as the normalisations compare them: the 32-bit word under 0xFFFFE000, so that a
// sign-extended Endless word (0xFFFFC000) and one chosen in the window (0xC000) differ.
constexpr quint32 WideMethodMask = 0xFFFFE000u;

quint32 wideMethod(qint32 option)
{
    return static_cast<quint32>(option) & WideMethodMask;
}

void continuousDefaults(SettingData &data, int p)
{
    data.RepeatInterval[p] = 0;
    data.RepeatCount[p] = 1;
    data.ProgramOption[p] |= BusyBit;
}

} // namespace

QString methodName(int method)
{
    static const char *const names[] = {QT_TRANSLATE_NOOP("ProgramOptionWord", "Continuous"),
                                        QT_TRANSLATE_NOOP("ProgramOptionWord", "Single-Program"),
                                        QT_TRANSLATE_NOOP("ProgramOptionWord", "Repeat"),
                                        QT_TRANSLATE_NOOP("ProgramOptionWord", "Endless")};
    return QCoreApplication::translate("ProgramOptionWord", names[method]);
}

int methodOf(qint32 option)
{
    switch (option & MethodMask) {
    case 0x4000:
        return SingleProgram;
    case 0x6000:
        return Repeat;
    case 0xC000:
        return Endless;
    default:
        return Continuous;
    }
}

qint32 withMethod(qint32 option, int method)
{
    return (option & BelowMethod) | MethodBits[method];
}

int outputLevel(qint32 option)
{
    return ((option & LevelMask) / 256) + 1;
}

qint32 withOutputLevel(qint32 option, int level)
{
    return (option & ~LevelMask) | ((level - 1) * 256);
}

std::optional<int> endlessSeconds(qint32 option)
{
    const int field = option & EndlessIntervalMask;
    // The field holds 0-7; only 0-5 are on the scale.
    return field <= 40 ? std::optional<int>(field / 8) : std::nullopt;
}

qint32 withEndlessSeconds(qint32 option, int seconds)
{
    return (option & ~EndlessIntervalMask) | (seconds * 8);
}

void normaliseForApply(SettingData &data)
{
    for (int p = 0; p < SettingData::Programs; ++p) {
        const quint32 method = wideMethod(data.ProgramOption[p]);
        if (method == 0xFFFFC000u) {
            data.RepeatInterval[p] = 0;
            data.RepeatCount[p] = 0;
            data.ProgramOption[p] |= BusyBit;
        } else if (method == 0x2000u) {
            continuousDefaults(data, p);
        }
    }
}

void normaliseForOk(SettingData &data)
{
    for (int p = 0; p < SettingData::Programs; ++p) {
        const quint32 method = wideMethod(data.ProgramOption[p]);
        if (method == 0x2000u)
            continuousDefaults(data, p);
        else if (method == 0x4000u)
            data.RepeatCount[p] = 0;
        else if (method == 0xC000u)
            data.RepeatInterval[p] = 0;
    }
}

} // namespace ProgramOptionWord
