#include "lookandfeel/FlatListViewHeaders.h"

#include "platform/ListView.h"

namespace kelvane {

void FlattenHeaders(ListView& list) { list.setHeaderButtons(!list.HeaderButtons()); }

}  // namespace kelvane
