#include "widgets/MessageBoxFit.h"

#include <QGuiApplication>
#include <QMessageBox>
#include <QScreen>

#include <algorithm>

namespace {

// More than this is never laid out in the box: laying out megabytes holds the program for seconds.
constexpr qsizetype MaxShownCharacters = 2000;
// A line with no blank to wrap at is cut here, so that it does not push the box past the screen.
constexpr qsizetype MaxShownLineLength = 300;
// The details area scrolls, but its text is laid out whole too.
constexpr qsizetype MaxDetailCharacters = 100000;

const QString Ellipsis = QStringLiteral("\u2026");

// The first `maxLines` lines of the text, each of at most `MaxShownLineLength` characters, and of
// at most `MaxShownCharacters` in all.
QString shortened(const QString &text, qsizetype maxLines)
{
    QStringList lines;
    qsizetype total = 0;
    for (QStringView line : QStringView(text).split(u'\n')) {
        if (lines.size() == maxLines || total >= MaxShownCharacters)
            break;
        line = line.left(std::min(MaxShownLineLength, MaxShownCharacters - total));
        total += line.size();
        lines.append(line.toString());
    }
    QString shown = lines.join(QLatin1Char('\n'));
    return shown.size() < text.size() ? shown + Ellipsis : shown;
}

QRect screenArea(const QMessageBox &box)
{
    const QWidget *anchor = box.parentWidget() ? box.parentWidget() : &box;
    const QScreen *screen = anchor->screen() ? anchor->screen() : QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect(0, 0, 800, 600);
}

} // namespace

void setTextWithinScreen(QMessageBox &box, const QString &text)
{
    const QRect area = screenArea(box);
    qsizetype maxLines = std::max(4, area.height() / 2 / std::max(1, box.fontMetrics().lineSpacing()));
    QString shown = shortened(text, maxLines);
    box.setText(shown);
    if (shown == text)
        return;
    box.setDetailedText(text.left(MaxDetailCharacters));
    // Wrapped lines take more room than counted: fewer lines until the box fits.
    while (maxLines > 1 && box.sizeHint().height() > area.height()) {
        maxLines /= 2;
        box.setText(shortened(text, maxLines));
    }
}
