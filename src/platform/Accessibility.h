#pragma once

#include <QAccessible>

// Screen readers, and other programs that read windows and press their buttons by way of Qt.
// Nothing here does anything until one of them asks.
namespace kelvane {

class Control;
class Label;

// From now on forms and controls answer as AccessibleTree.h and their roles have it.
void ServeScreenReaders();

// For a screen reader that is there: a control has another place, which is the value of a bar.
void AnnouncePlace(Control& control);
// The same of a label's caption, which may be the value of a thumb.
void AnnounceCaption(Label& label);
// And of a control that has come to its window on show or gone from it, or of the controls
// in it.
void AnnounceControls(Control& control, QAccessible::Event change);

}  // namespace kelvane
