#pragma once

#include <QDir>
#include <QString>

#include "desktop/driver/Screen.h"

namespace kelvane::desktop {

// One window's part of the demo: leaves its pictures in a folder and says what it does.
class DemoPart {
 protected:
  DemoPart(Screen& screen, const QDir& output) : screen_(screen), output_(output) {}

  // A picture of what the screen shows now, without the bare ground round it.
  void Keep(const char* name, const char* what);
  // Ends the demo with a picture of the screen and std::runtime_error unless it holds.
  void Need(bool holds, const char* complaint);
  static void Say(const QString& text);

  Screen& screen_;
  QDir output_;
};

}  // namespace kelvane::desktop
