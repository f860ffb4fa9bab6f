#pragma once

#include <QRect>
#include <QString>

// Where the main window's controls lie, worked out anew from the drawing and the rule by which the
// window lays itself out, so that the tests don't ask the program under test.
namespace kelvane::desktop {

// The control's place in a main window whose area under the menus has the size `area`, in pixels
// from that area's top left corner. Names as in "Label14(3)"; the name must be known here. What
// lies inside the picture frame is given as it shows when nothing has been scrolled.
QRect PlaceIn(QSize area, const QString& control);

// A place drawn in twips, in pixels.
QRect Drawn(int left, int top, int width, int height);

}  // namespace kelvane::desktop
