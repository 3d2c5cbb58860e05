#include "cli/SettingJson.h"

#include "setting/SharedState.h"

#include <QJsonArray>

namespace {

template<typename Container>
QJsonArray numbers(const Container &values)
{
    QJsonArray array;
    for (const auto value : values)
        array.append(static_cast<qint64>(value));
    return array;
}

template<typename Container>
QJsonArray texts(const Container &values)
{
    QJsonArray array;
    for (const QString &value : values)
        array.append(value);
    return array;
}

} // namespace

QJsonObject settingToJson(const SharedState &state)
{
    const SettingData &s = state.Setting;
    QJsonArray steps;
    for (const auto &program : s.ProgramData)
        steps.append(texts(program));
    return QJsonObject {
        {QStringLiteral("ProjectName"), s.ProjectName},
        {QStringLiteral("Creator"), s.Creator},
        {QStringLiteral("Explanation"), s.Explanation},
        {QStringLiteral("ControlFileName"), s.ControlFileName},
        {QStringLiteral("CardName"), s.CardName},
        {QStringLiteral("CardAttribute"), s.CardAttribute},
        {QStringLiteral("SentenceControl"), texts(s.SentenceControl)},
        {QStringLiteral("SentenceFileName"), texts(s.SentenceFileName)},
        {QStringLiteral("SentenceState"), numbers(s.SentenceState)},
        {QStringLiteral("ProgramOption"), numbers(s.ProgramOption)},
        {QStringLiteral("RepeatCount"), numbers(s.RepeatCount)},
        {QStringLiteral("RepeatInterval"), numbers(s.RepeatInterval)},
        {QStringLiteral("ProgramName"), texts(s.ProgramName)},
        {QStringLiteral("ProgramSort"), numbers(s.ProgramSort)},
        {QStringLiteral("ProgramData"), steps},
        {QStringLiteral("SentencePath"), state.SentencePath},
        {QStringLiteral("SurveillanceFile"), state.SurveillanceFile},
    };
}
