#pragma once

#include "platform/TextControl.h"

class QRadioButton;

namespace kelvane {

// One of a group of choices: of the option buttons in a container, at most one is chosen.
class OptionButton : public TextControl {
  Q_OBJECT
 public:
  OptionButton(Container& container, const QString& name);

  QString Caption() const;
  void setCaption(const QString& caption);

  // Whether this one is chosen.
  bool Value() const;
  // Chooses this one and deselects the others.
  void Choose();

 private:
  QRadioButton* button_;
};

}  // namespace kelvane
