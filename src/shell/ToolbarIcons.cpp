#include "ToolbarIcons.h"

#include <QPainter>
#include <QPixmap>
#include <QStyle>

namespace {

QIcon themed(const char *name, const QIcon &fallback)
{
    return QIcon::fromTheme(QLatin1String(name), fallback);
}

// A printer: paper feeding into a body with a tray below.
QIcon drawnPrinter()
{
    QPixmap pixmap(32, 32);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
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
    return QIcon(pixmap);
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
    return themed("document-print", drawnPrinter());
}

QIcon application()
{
    QPixmap pixmap(64, 64);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
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
    return QIcon(pixmap);
}

QIcon help(const QStyle *style)
{
    return themed("help-about", style->standardIcon(QStyle::SP_MessageBoxQuestion));
}

} // namespace ToolbarIcons
