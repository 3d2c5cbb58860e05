#pragma once

#include <QIcon>

class QPainter;

/// Icons made at the size they are shown at, when it is first asked for: no size that nobody shows
/// is ever drawn, read or held.
namespace IconEngines {

/// Painted by `paint` on a square of `units` by `units`: sharp at every size, a toolbar's, a window
/// frame's or a HiDPI screen's.
QIcon drawn(qreal units, void (*paint)(QPainter &));

/// From the images `base`-16.png, -32.png and -128.png, chosen and scaled as Qt's own icon of these
/// files would be; each is read when a size first needs it. Null when none of them exists.
QIcon fromSizedImages(const QString &base);

} // namespace IconEngines
