#include "sentence/LevelMeter.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr double YellowFromDb = -12.0;
constexpr double RedFromDb = -3.0;

} // namespace

LevelMeter::LevelMeter(QWidget *parent)
    : QWidget(parent)
{
    setAccessibleName(tr("Input level"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void LevelMeter::setLevel(double peakDb, bool clipped)
{
    m_db = peakDb;
    m_shown = true;
    m_clipped = clipped;
    setAccessibleDescription(text());
    update();
}

void LevelMeter::clear()
{
    m_shown = false;
    m_clipped = false;
    setAccessibleDescription(QString());
    update();
}

QString LevelMeter::levelText() const
{
    return m_db <= LowestDb ? tr("below %1 dBFS").arg(LowestDb, 0, 'f', 0)
                            : tr("%1 dBFS").arg(m_db, 0, 'f', 1);
}

QString LevelMeter::text() const
{
    if (!m_shown)
        return {};
    return m_clipped ? tr("%1, clipped").arg(levelText()) : levelText();
}

QSize LevelMeter::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    return {metrics.horizontalAdvance(QStringLiteral("-00.0 dBFS")) * 4, metrics.height() + 8};
}

void LevelMeter::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QString clippedText = tr("Clipped");
    const int clipWidth = fontMetrics().horizontalAdvance(clippedText) + 12;
    const QRect bar = rect().adjusted(0, 0, -clipWidth - 4, -1);
    const QRect clip = QRect(bar.right() + 4, 0, clipWidth, height() - 1);
    painter.fillRect(bar, palette().color(QPalette::Base));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(bar);
    if (m_shown) {
        const auto xOf = [&](double db) {
            return bar.left() + int((std::clamp(db, LowestDb, 0.0) - LowestDb) / -LowestDb * bar.width());
        };
        const int level = xOf(m_db);
        const struct
        {
            double from, to;
            QColor color;
        } bands[] = {{LowestDb, YellowFromDb, QColor(60, 170, 60)},
                     {YellowFromDb, RedFromDb, QColor(220, 190, 40)},
                     {RedFromDb, 0.0, QColor(210, 40, 40)}};
        for (const auto &band : bands) {
            const int left = xOf(band.from);
            const int right = std::min(level, xOf(band.to));
            if (right > left)
                painter.fillRect(QRect(left + 1, bar.top() + 1, right - left - 1, bar.height() - 1),
                                 band.color);
        }
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(bar.adjusted(4, 0, -4, 0), Qt::AlignVCenter | Qt::AlignRight, levelText());
    }
    painter.fillRect(clip, m_clipped ? QColor(210, 40, 40) : palette().color(QPalette::Button));
    painter.setPen(m_clipped ? QColor(Qt::white) : palette().color(QPalette::PlaceholderText));
    painter.drawText(clip, Qt::AlignCenter, clippedText);
}
