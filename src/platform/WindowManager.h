#pragma once

#include <QByteArray>

namespace kelvane {

// Whether this event, as QWidget::nativeEvent gets it, tells which place and size the X server or
// the window manager has given the window.
bool IsGeometryNotice(const QByteArray& eventType, const void* message);

// Whether a button of the pointer is held down at this moment, in whatever window: the user may be
// dragging a window's edge. False where there is no X server.
bool PointerButtonHeld();

}  // namespace kelvane
