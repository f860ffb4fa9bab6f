#pragma once

namespace kelvane {

class ListView;

// Toggles the column headers between buttons, which they are at first, and flat captions, which
// don't react to hover, press or click.
void ToggleFlatHeaders(ListView& list);

}  // namespace kelvane
