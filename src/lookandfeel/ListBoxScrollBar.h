#pragma once

namespace kelvane {

class ListBox;

// Makes the list scroll horizontally over a width of 900 pixels, whatever texts it holds: the end
// of a wider text can't be reached, and an empty list scrolls just as far.
void GiveHorizontalExtent(ListBox& list);

}  // namespace kelvane
