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

  std::function<void(int Index)> Click;

 private:
  QPushButton* button_;
};

}  // namespace kelvane
