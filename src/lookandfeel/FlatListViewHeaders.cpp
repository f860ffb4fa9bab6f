#include "lookandfeel/FlatListViewHeaders.h"

#include "platform/ListView.h"

namespace kelvane {

void ToggleFlatHeaders(ListView& list) { list.setHeaderButtons(!list.HeaderButtons()); }

}  // namespace kelvane
