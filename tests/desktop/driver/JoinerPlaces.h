#pragma once

#include <QRect>
#include <QString>

namespace kelvane::desktop {

// Where a control lies in a joiner window whose area under the menu has the size `area`, in pixels
// from that area's top left corner, worked out anew from the drawing and the rule by which the
// window lays itself out. For sizes large enough for all of it; the name must be known here.
QRect JoinerPlaceIn(QSize area, const QString& control);

}  // namespace kelvane::desktop
