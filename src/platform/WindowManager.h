#pragma once

#include <QByteArray>

namespace kelvane {

// Whether this event of a window, as QWidget::nativeEvent gets it, is word from an X server or a
// window manager of the place and size that the window has.
bool TellsOfGeometry(const QByteArray& eventType, const void* message);

// Whether a button of the pointer is held down at this moment, in whatever window: the user may be
// dragging a window's edge. False where there is no X server.
bool PointerButtonHeld();

}  // namespace kelvane
