#pragma once

#include <QRect>
#include <QString>

namespace kelvane::desktop {

// The visible part of a control, in pixels from the top left corner of the content area under the
// menu bar, if that area has the size `area` and nothing has been scrolled. `control` is a name
// such as "Label14(3)". The window text tests/windows/<form>.txt has the places at one or two sizes
// of the window. Places at other sizes are computed from these, since each edge of a control moves
// with an edge or with the middle of the window. Throws std::invalid_argument if the text has no
// visible control of that name.
QRect PlaceIn(const QString& form, QSize area, const QString& control);

// The control's caption in the window text.
QString CaptionIn(const QString& form, const QString& control);

}  // namespace kelvane::desktop
