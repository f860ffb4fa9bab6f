#pragma once

#include <QAccessible>

// Screen readers, and other programs that read windows and press their buttons by way of the
// toolkit. Nothing here does anything until one of them asks.
namespace kelvane {

class Control;

// From now on forms and controls answer as AccessibleTree.h and their roles have it.
void ServeScreenReaders();

// For a screen reader that is there: the value of a bar or a thumb has changed.
void AnnounceValue(Control& control);
// And the same of a control that has come to its window on show or gone from it, or of the controls
// in it.
void AnnounceControls(Control& control, QAccessible::Event change);

}  // namespace kelvane
