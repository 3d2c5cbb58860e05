#include "mainwindow/IconEngines.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <QPixmapCache>
#include <QStyle>
#include <QStyleOption>

namespace {

/// Makes each size and mode once, on demand, and keeps it in Qt's pixmap cache.
class OnDemandEngine : public QIconEngine
{
public:
    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        const qreal ratio = painter->device() ? painter->device()->devicePixelRatio() : 1.0;
        QPixmap made = pixmap(rect.size() * ratio, mode, state);
        made.setDevicePixelRatio(ratio);
        painter->drawPixmap(rect, made);
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        if (actualSize(size, mode, state).isEmpty())
            return {};
        const QString key = QStringLiteral("dq480-icon-%1-%2x%3-%4")
                                .arg(cacheName())
                                .arg(size.width())
                                .arg(size.height())
                                .arg(int(mode));
        QPixmap made;
        if (QPixmapCache::find(key, &made))
            return made;
        made = make(size);
        // Greyed for a disabled button, as the style does for any icon.
        if (mode != QIcon::Normal) {
            QStyleOption option;
            option.palette = QGuiApplication::palette();
            const QPixmap generated = QApplication::style()->generatedIconPixmap(mode, made, &option);
            if (!generated.isNull())
                made = generated;
        }
        QPixmapCache::insert(key, made);
        return made;
    }

protected:
    /// Tells this icon's pixmaps from every other's in the shared cache.
    virtual QString cacheName() const = 0;
    /// The normal picture for a request of `size`, at actualSize(size).
    virtual QPixmap make(const QSize &size) const = 0;
};

class DrawnEngine : public OnDemandEngine
{
public:
    using Paint = void (*)(QPainter &);

    DrawnEngine(qreal units, Paint paint)
        : m_units(units)
        , m_paint(paint)
    { }

    QIconEngine *clone() const override { return new DrawnEngine(m_units, m_paint); }
    QString key() const override { return QStringLiteral("dq480-drawn"); }

    QSize actualSize(const QSize &size, QIcon::Mode, QIcon::State) override
    {
        const int side = qMin(size.width(), size.height());
        return {side, side};
    }

    // None: Qt asks a scalable icon for the sizes it needs.
    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override { return {}; }

protected:
    QString cacheName() const override { return QString::number(quintptr(m_paint), 16); }

    QPixmap make(const QSize &size) const override
    {
        const int side = qMin(size.width(), size.height());
        QPixmap drawn(side, side);
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(side / m_units, side / m_units);
        m_paint(painter);
        return drawn;
    }

private:
    qreal m_units;
    Paint m_paint;
};

class SizedImagesEngine : public OnDemandEngine
{
public:
    SizedImagesEngine(const QString &base, const QList<int> &sides)
        : m_base(base)
        , m_sides(sides)
    { }

    QIconEngine *clone() const override { return new SizedImagesEngine(m_base, m_sides); }
    QString key() const override { return QStringLiteral("dq480-sized-images"); }

    QSize actualSize(const QSize &size, QIcon::Mode, QIcon::State) override { return fitted(size); }

    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override
    {
        QList<QSize> sizes;
        if (mode == QIcon::Normal && state == QIcon::Off) {
            for (int side : m_sides)
                sizes << QSize(side, side);
        }
        return sizes;
    }

    static QString file(const QString &base, int side) { return base + QStringLiteral("-%1.png").arg(side); }

protected:
    QString cacheName() const override { return m_base; }

    QPixmap make(const QSize &size) const override
    {
        const QPixmap image(file(m_base, sideFor(size)));
        const QSize actual = fitted(size);
        return image.size() == actual ? image
                                      : image.scaled(actual, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }

private:
    // As Qt's icon of several images picks one: the smallest that is at least as large as asked
    // for, else the largest.
    int sideFor(const QSize &size) const
    {
        const qint64 asked = qint64(size.width()) * size.height();
        for (int side : m_sides) {
            if (qint64(side) * side >= asked)
                return side;
        }
        return m_sides.last();
    }

    // Shrunk to fit, never enlarged.
    QSize fitted(const QSize &size) const
    {
        const int side = sideFor(size);
        QSize actual(side, side);
        if (side > size.width() || side > size.height())
            actual.scale(size, Qt::KeepAspectRatio);
        return actual;
    }

    QString m_base;
    QList<int> m_sides; // ascending
};

} // namespace

namespace IconEngines {

QIcon drawn(qreal units, void (*paint)(QPainter &))
{
    return QIcon(new DrawnEngine(units, paint));
}

QIcon fromSizedImages(const QString &base, std::initializer_list<int> candidates)
{
    QList<int> sides;
    for (int side : candidates) {
        if (QFile::exists(SizedImagesEngine::file(base, side)))
            sides << side;
    }
    return sides.isEmpty() ? QIcon() : QIcon(new SizedImagesEngine(base, sides));
}

} // namespace IconEngines
