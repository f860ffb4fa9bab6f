#pragma once

namespace kelvane {

class ListView;

// Makes the column headers of a new list flat: they don't react to hover, press and click. A second
// call makes them buttons again.
void FlattenHeaders(ListView& list);

}  // namespace kelvane
