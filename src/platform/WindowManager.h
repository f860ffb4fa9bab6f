#pragma once

#include <QByteArray>

namespace kelvane {

// Returns whether an event, as passed to QWidget::nativeEvent, is a ConfigureNotify of X, which
// reports the position and size of the window.
bool IsGeometryNotice(const QByteArray& eventType, const void* message);

// Returns whether a pointer button is held down now, in any window: the user may be dragging a
// window's edge. Returns false unless Qt runs on X.
bool PointerButtonHeld();

}  // namespace kelvane
