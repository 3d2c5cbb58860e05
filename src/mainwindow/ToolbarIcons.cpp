#include "mainwindow/ToolbarIcons.h"

#include <QFont>
#include <QPainter>
#include <QPixmap>
#include <QStyle>

namespace {

QIcon themed(const char *name, const QIcon &fallback)
{
    return QIcon::fromTheme(QLatin1String(name), fallback);
}

// Drawn icons are painted afresh at every size a toolbar, a window frame or a HiDPI screen (twice
// or three times the pixels) may ask for, so they stay sharp instead of being scaled up from one
// small bitmap. `paint` draws on a square of `units` by `units`.
template<typename Paint>
QIcon drawnIcon(qreal units, Paint paint)
{
    QIcon icon;
    for (int size : {16, 22, 24, 32, 48, 64, 96, 128, 256}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter p(&pixmap);
        p.setRenderHint(QPainter::Antialiasing);
        p.scale(size / units, size / units);
        paint(p);
        p.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

// A printer: paper feeding into a body with a tray below.
void paintPrinter(QPainter &p)
{
    p.setPen(QPen(QColor(60, 60, 60), 1.5));
    p.setBrush(Qt::white);
    p.drawRect(QRectF(9, 3, 14, 10));
    p.setBrush(QColor(120, 130, 145));
    p.drawRoundedRect(QRectF(3, 12, 26, 11), 2, 2);
    p.setBrush(Qt::white);
    p.drawRect(QRectF(8, 19, 16, 10));
    p.setPen(QPen(QColor(90, 90, 90), 1));
    p.drawLine(QPointF(11, 23), QPointF(21, 23));
    p.drawLine(QPointF(11, 26), QPointF(19, 26));
    p.setBrush(QColor(80, 200, 90));
    p.setPen(Qt::NoPen);
    p.drawEllipse(QRectF(24, 15, 3, 3));
}

// A question mark in a speech bubble: the version information.
void paintHelp(QPainter &p)
{
    p.setPen(QPen(QColor(40, 70, 140), 1.5));
    p.setBrush(Qt::white);
    p.drawEllipse(QRectF(3, 2, 26, 22));
    const QPointF tail[] = {{10, 21}, {8, 30}, {16, 23}};
    p.drawPolygon(tail, 3);
    p.setPen(Qt::NoPen);
    p.drawRect(QRectF(10, 20, 6, 3)); // joins the tail to the bubble without a seam
    QFont font;
    font.setPixelSize(19);
    font.setBold(true);
    p.setFont(font);
    p.setPen(QColor(30, 60, 200));
    p.drawText(QRectF(3, 2, 26, 22), Qt::AlignCenter, QStringLiteral("?"));
}

} // namespace

namespace ToolbarIcons {

QIcon newFile(const QStyle *style)
{
    return themed("document-new", style->standardIcon(QStyle::SP_FileIcon));
}

QIcon open(const QStyle *style)
{
    return themed("document-open", style->standardIcon(QStyle::SP_DialogOpenButton));
}

QIcon save(const QStyle *style)
{
    return themed("document-save", style->standardIcon(QStyle::SP_DialogSaveButton));
}

QIcon print()
{
    return themed("document-print", drawnIcon(32, paintPrinter));
}

QIcon application()
{
    return drawnIcon(64, [](QPainter &p) {
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(30, 90, 160));
        p.drawRoundedRect(QRectF(2, 2, 60, 60), 12, 12);
        p.setBrush(Qt::white);
        const QPointF speaker[] = {{14, 26}, {22, 26}, {34, 16}, {34, 48}, {22, 38}, {14, 38}};
        p.drawPolygon(speaker, 6);
        p.setBrush(Qt::NoBrush);
        p.setPen(QPen(Qt::white, 3.5, Qt::SolidLine, Qt::RoundCap));
        p.drawArc(QRectF(30, 22, 14, 20), -50 * 16, 100 * 16);
        p.drawArc(QRectF(30, 14, 24, 36), -50 * 16, 100 * 16);
    });
}

QIcon help(const QStyle *)
{
    return themed("help-about", drawnIcon(32, paintHelp));
}

} // namespace ToolbarIcons
