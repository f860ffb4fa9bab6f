#pragma once

namespace kelvane {

class ListView;

// Makes the column headers of a fresh list flat: they show no press and no hover, and can't be
// clicked. To be called once: what is flipped a second time is a row of buttons again.
void FlattenHeaders(ListView& list);

}  // namespace kelvane
