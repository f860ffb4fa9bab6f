#pragma once

class QObject;

namespace kelvane {

// Rounds the pointer's place down to whole pixels in all mouse events of all windows from now on. A
// Wayland compositor, a pen and a touch screen tell fractions of a pixel: Qt rounds them in some
// events and not in others, and a control that follows the pointer would not rest. The place on the
// screen becomes the place in the window behind the window's corner, since under a compositor Qt
// knows no better where its windows are. Ends with `owner`, which must live on the user-interface
// thread.
void RoundPointerDown(QObject& owner);

}  // namespace kelvane
