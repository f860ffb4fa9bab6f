#pragma once

#include <QSize>
#include <string>
#include <vector>

#include "platform/Form.h"

// A window as text: what it is made of and how it is designed, where everything lies on the screen,
// and what a screen reader is told. There is one such text to a window in tests/windows; the
// desktop tests look up there where a control lies.
namespace kelvane::testing {

// Describes a form that hasn't been loaded yet, and loads and shows it for that. `areas` are the
// sizes in pixels of the content area under the menu bar for which places on the screen are told;
// if there are none, it is the size that the load leaves. The timers are off afterwards.
//
// A line describes a control, under its container and from front to back: name, class, place in the
// container's unit, look; after "=>" what of that the load has changed; and, after each '|', what
// its containers show of it at one of the sizes, in pixels from the content area's corner, or '-' if
// it is hidden. What isn't said is the class's default. What a screen reader is told follows, at the
// last of the sizes.
std::string DescribeWindow(Form& form, const std::vector<QSize>& areas = {});

// Fails the test with a diff unless the description is the text in tests/windows/<name of the
// form>.txt. With KELVANE_RENEW_WINDOW_TEXTS in the environment it writes that file instead, and
// fails as well.
void ExpectWindowText(Form& form, const std::vector<QSize>& areas = {});

}  // namespace kelvane::testing
