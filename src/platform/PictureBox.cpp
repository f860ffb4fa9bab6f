#include "platform/PictureBox.h"

#include "platform/HandlerScope.h"

namespace kelvane {

void PictureBox::SizeChanged() { Raise(this, Resize, Index()); }

}  // namespace kelvane
