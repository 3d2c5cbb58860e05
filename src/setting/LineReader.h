#pragma once

#include <QString>
#include <QStringView>

#include <optional>

/// Hands out the lines of a text one by one, as a text stream's line reading does: a line ends at
/// LF, and a CR in front of it belongs to the line end. The text must outlive the reader.
class LineReader
{
public:
    explicit LineReader(QStringView text)
        : m_text(text)
    { }

    std::optional<QStringView> next()
    {
        if (m_pos >= m_text.size())
            return std::nullopt;
        qsizetype end = m_text.indexOf(QLatin1Char('\n'), m_pos);
        if (end < 0)
            end = m_text.size();
        QStringView line = QStringView(m_text).mid(m_pos, end - m_pos);
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
        m_pos = end + 1;
        return line;
    }

private:
    QStringView m_text;
    qsizetype m_pos = 0;
};
