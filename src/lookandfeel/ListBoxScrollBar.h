#pragma once

namespace kelvane {

class ListBox;

// Lets the list scroll sideways over 900 pixels, whatever it holds: the end of a longer text stays
// out of reach, and a list of short ones, or of none, scrolls as far.
void GiveHorizontalExtent(ListBox& list);

}  // namespace kelvane
