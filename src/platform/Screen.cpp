#include "platform/Screen.h"

#include <QGuiApplication>

namespace kelvane {

void Screen::setMousePointer(MousePointer pointer) {
  QGuiApplication::restoreOverrideCursor();
  if (pointer != MousePointer::kDefault) QGuiApplication::setOverrideCursor(CursorOf(pointer));
}

}  // namespace kelvane
