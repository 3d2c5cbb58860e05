#pragma once

#include <QIcon>

#include <initializer_list>

class QPainter;

/// Icons made at the size they are shown at, when it is first asked for: no size that nobody shows
/// is ever drawn, read or held.
namespace IconEngines {

/// Painted by `paint` on a square of `units` by `units`: sharp at every size, a toolbar's, a window
/// frame's or a HiDPI screen's.
QIcon drawn(qreal units, void (*paint)(QPainter &));

/// From the images `base`-N.png for each side N of `sides` (ascending) that exists, chosen and
/// scaled as Qt's own icon of these files would be; each is read when a size first needs it. The
/// sides are the icon's available sizes, which a window system takes all of. Null when none exists.
QIcon fromSizedImages(const QString &base, std::initializer_list<int> sides);

} // namespace IconEngines
