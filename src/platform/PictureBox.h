#pragma once

#include "platform/Container.h"

namespace kelvane {

// A plain box of one colour that may hold controls.
class PictureBox : public Container {
  Q_OBJECT
 public:
  using Container::Container;

  // Raised when the box has changed size on the screen, before the assignment returns.
  std::function<void(int Index)> Resize;

 protected:
  void SizeChanged() override;
};

}  // namespace kelvane
