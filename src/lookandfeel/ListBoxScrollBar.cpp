#include "lookandfeel/ListBoxScrollBar.h"

#include "platform/ListBox.h"

namespace kelvane {

void GiveHorizontalExtent(ListBox& list) {
  constexpr int kExtent = 900;
  list.setHorizontalExtent(kExtent);
}

}  // namespace kelvane
