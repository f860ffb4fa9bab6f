#pragma once

#include <string>

class QWidget;

namespace kelvane::testing {

// Makes the window active, presses Tab until a control has the focus for the second time, and
// returns the names of the controls that had the focus, one to a line. A Qt widget that fills a
// control goes by the control's name.
std::string TabOrder(QWidget& window);

}  // namespace kelvane::testing
