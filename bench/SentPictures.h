#pragma once

#include <functional>

class QImage;

namespace kelvane::bench {

// Looks at every picture that goes to the screen past the window's painting, on the thread that
// sends it and before it goes. One look at a time; an empty one ends it. This program's own xcb
// functions stand in front of the library's for it.
void LookAtSentPictures(std::function<void(const QImage&)> look);

}  // namespace kelvane::bench
