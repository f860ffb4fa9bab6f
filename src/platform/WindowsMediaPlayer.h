#pragma once

#include "platform/Control.h"

namespace kelvane {

// The place of the picture: black while nothing plays.
class WindowsMediaPlayer : public Control {
  Q_OBJECT
 public:
  WindowsMediaPlayer(Container* container, const QString& name);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace kelvane
