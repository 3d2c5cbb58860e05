#include "mainwindow/ToolbarIcons.h"

#include "mainwindow/IconEngines.h"

#include <QFont>
#include <QPainter>
#include <QStyle>

namespace {

// X without a desktop: Qt makes do with the hicolor theme, which holds programs' own icons and no
// actions', so asking it costs thousands of file look-ups at every start and finds nothing.
bool onlyFallbackIconTheme()
{
    const QString theme = QIcon::themeName();
    return !theme.isEmpty() && theme == QIcon::fallbackThemeName();
}

template<typename Fallback>
QIcon themed(const char *name, Fallback fallback)
{
    if (!onlyFallbackIconTheme()) {
        const QIcon icon = QIcon::fromTheme(QLatin1String(name));
        if (!icon.isNull() && !icon.availableSizes().isEmpty())
            return icon;
    }
    return fallback();
}

// The style's own picture. Fusion asks the theme first and, with only hicolor, ends with its
// built-in images (`image`-16, -32 and -128), which are taken directly where this Qt has them.
QIcon styleIcon(const QStyle *style, QStyle::StandardPixmap standard, const char *image)
{
    if (onlyFallbackIconTheme() && style->name() == QLatin1String("fusion")) {
        const QIcon icon = IconEngines::fromSizedImages(
            QStringLiteral(":/qt-project.org/styles/commonstyle/images/") + QLatin1String(image),
            {16, 32, 128});
        if (!icon.isNull())
            return icon;
    }
    return style->standardIcon(standard);
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
    // Not bold: a second face of the font costs each start a third of a megabyte.
    font.setPixelSize(20);
    p.setFont(font);
    p.setPen(QColor(30, 60, 200));
    p.drawText(QRectF(3, 2, 26, 22), Qt::AlignCenter, QStringLiteral("?"));
}

} // namespace

namespace ToolbarIcons {

QIcon newFile(const QStyle *style)
{
    return themed("document-new", [style] { return styleIcon(style, QStyle::SP_FileIcon, "file"); });
}

QIcon open(const QStyle *style)
{
    return themed("document-open",
                  [style] { return styleIcon(style, QStyle::SP_DialogOpenButton, "standardbutton-open"); });
}

QIcon save(const QStyle *style)
{
    return themed("document-save",
                  [style] { return styleIcon(style, QStyle::SP_DialogSaveButton, "standardbutton-save"); });
}

QIcon print()
{
    return themed("document-print", [] { return IconEngines::drawn(32, paintPrinter); });
}

QIcon application()
{
    // The pictures rendered for the desktop's menus, not drawn here: drawing antialiased arcs at
    // every size a window frame may show costs each start half a megabyte. Only the sizes of a
    // title bar, a task bar and a window switcher, because the window system is handed every
    // available size for every window; docks take the installed icon.
    return IconEngines::fromSizedImages(QStringLiteral(":/dq480/icons/dq480"), {16, 32, 48});
}

QIcon help()
{
    return themed("help-about", [] { return IconEngines::drawn(32, paintHelp); });
}

} // namespace ToolbarIcons
