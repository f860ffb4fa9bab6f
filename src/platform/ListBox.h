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
  // Returns an empty text if there is no such line.
  QString List(int index) const;
  // Has no effect if there is no such line.
  void setList(int index, const QString& text);

  // The selected line; -1 while none is.
  int ListIndex() const;
  // -1 selects none. Has no effect if there is no such line. The selected line is scrolled into
  // view, vertically only.
  void setListIndex(int index);

  // The width in pixels, 0 or more, over which the list scrolls horizontally, whatever texts it
  // holds. With 0 it doesn't scroll horizontally.
  int HorizontalExtent() const;
  void setHorizontalExtent(int pixels);

 private:
  class Lines;

  Lines* lines_;
};

}  // namespace kelvane
