#pragma once

#include "platform/Control.h"

class QPushButton;

namespace kelvane {

class CommandButton : public Control {
  Q_OBJECT
 public:
  CommandButton(Container& container, const QString& name);

  QString Caption() const;
  void setCaption(const QString& caption);

  // Raised by the mouse, the keyboard or a screen reader.
  std::function<void(int Index)> Click;

 private:
  QPushButton* button_;
};

}  // namespace kelvane
