#pragma once

#include "platform/TextControl.h"

namespace kelvane {

// A list of texts, one to a line, at most one of them selected. Lines are numbered from 0.
class ListBox : public TextControl {
  Q_OBJECT
 public:
  ListBox(Container& container, const QString& name);

  void AddItem(const QString& text);
  int ListCount() const;
  // Empty for a line that isn't there.
  QString List(int index) const;
  // Refused for a line that isn't there.
  void setList(int index, const QString& text);

  // The selected line; -1 while none is.
  int ListIndex() const;
  // -1 selects none. Refused for a line that isn't there. The selected line is scrolled into view,
  // down and up alone.
  void setListIndex(int index);

  // The width in pixels over which the list scrolls sideways, whatever it holds; 0 is none.
  int HorizontalExtent() const;
  void setHorizontalExtent(int pixels);

 private:
  class Lines;

  Lines* lines_;
};

}  // namespace kelvane
