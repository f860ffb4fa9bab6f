#pragma once

namespace kelvane {

class ListBox;

// Makes the list scroll horizontally over 900 pixels, whatever it holds: the end of a longer text
// can't be reached, and an empty list scrolls as far.
void GiveHorizontalExtent(ListBox& list);

}  // namespace kelvane
