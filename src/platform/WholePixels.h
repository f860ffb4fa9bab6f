#pragma once

class QObject;

namespace kelvane {

// Rounds the pointer's position down to whole pixels in all mouse events of all windows. To be
// called once, after the QApplication is made. A Wayland compositor, a pen and a touch screen send
// fractions of a pixel: Qt rounds them in some events only, and a control that follows the pointer
// would jitter. The position on the screen becomes the corner that Qt assumes for the window plus
// the position in the window. Under Wayland Qt doesn't know that corner.
void RoundPointerPositions();

}  // namespace kelvane
