#pragma once

class QObject;

namespace kelvane {

// Rounds the pointer's place down to whole pixels in all mouse events of all windows, until `owner`
// is deleted, which must belong to the user-interface thread. A Wayland compositor, a pen and a
// touch screen send fractions of a pixel: Qt rounds them in some events and not in others, and a
// control that follows the pointer would not rest. The place on the screen becomes the window's
// corner plus the place in the window, since under a compositor Qt doesn't know where its windows
// are.
void RoundPointerDown(QObject& owner);

}  // namespace kelvane
