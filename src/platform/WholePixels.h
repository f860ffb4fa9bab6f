#pragma once

class QObject;

namespace kelvane {

// Rounds the pointer's position down to whole pixels in all mouse events of all windows. To be
// called once, after the QApplication is made. A Wayland compositor, a pen and a touch screen send
// fractions of a pixel: Qt rounds them in some events only, and a control that follows the pointer
// would jitter. An event's position on the screen becomes the sum of its rounded position in the
// window and of the place where Qt assumes the window's corner: under Wayland Qt doesn't know it.
void RoundPointerPositions();

}  // namespace kelvane
