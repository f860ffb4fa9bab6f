#pragma once

#include <QSize>
#include <string>
#include <vector>

#include "platform/Form.h"

// A window as text: how it is designed, what its load changes, where everything lies on the screen,
// and what a screen reader is told. tests/windows has one such text for each window, in which the
// desktop tests look up where a control lies.
namespace kelvane::testing {

// Loads and shows a form unless it is open, turns its timers off, and describes it.
//
// `areas` are sizes of the content area in pixels; without any, the area keeps the size that the
// load gives it. Each control has a line, below that of its container and from front to back: the
// control's name, class, place in the container's unit and look; after "=>" what the load changes;
// and after each '|', for one of the sizes, the part that the control's containers show, in pixels
// from the content area's corner, or '-' if it is hidden. Defaults of the class are left out.
std::string DescribeWindow(Form& form, const std::vector<QSize>& areas = {});

// Fails the test with a diff unless tests/windows/NAME_OF_THE_FORM.txt holds the form's
// description. With KELVANE_RENEW_WINDOW_TEXTS in the environment it writes that file instead, and
// fails as well.
void ExpectWindowText(Form& form, const std::vector<QSize>& areas = {});

}  // namespace kelvane::testing
