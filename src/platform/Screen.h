#pragma once

#include "platform/MouseArea.h"

namespace kelvane {

// The screen as a whole.
class Screen {
 public:
  // Sets the pointer's shape over every window of the program; with kDefault, the widget under the
  // pointer decides.
  static void setMousePointer(MousePointer pointer);
  static MousePointer Pointer();
};

}  // namespace kelvane
