#pragma once

#include <QRect>
#include <QString>

namespace kelvane::desktop {

// What is to be seen of a control, in pixels from the corner of its window's content area under the
// menu bar, while that area has the size `area` and nothing has been scrolled. The place is looked
// up in tests/windows/<form>.txt; for sizes that aren't told there it follows from those that are,
// since every edge keeps its distance from an edge or from the middle of the window. Throws
// std::invalid_argument for a control that the text doesn't show. `control` as in "Label14(3)".
QRect PlaceIn(const QString& form, QSize area, const QString& control);

// The caption, or the text, with which the control is drawn.
QString CaptionIn(const QString& form, const QString& control);

}  // namespace kelvane::desktop
