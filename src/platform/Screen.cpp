#include "platform/Screen.h"

#include <QGuiApplication>

namespace kelvane {
namespace {
MousePointer shown = MousePointer::kDefault;
}

void Screen::setMousePointer(MousePointer pointer) {
  QGuiApplication::restoreOverrideCursor();
  if (pointer != MousePointer::kDefault) QGuiApplication::setOverrideCursor(CursorOf(pointer));
  shown = pointer;
}

MousePointer Screen::Pointer() { return shown; }

}  // namespace kelvane
