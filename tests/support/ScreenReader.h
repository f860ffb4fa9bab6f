#pragma once

#include <QAccessible>
#include <QString>
#include <string>

class QWidget;

// A screen reader's ears inside the program.
namespace kelvane::testing {

QAccessibleInterface& NodeOf(QObject& object);

// What is read of one node: `PushButton "Load Video"`, `StaticText "0,640" (Width of the video in
// pixels)`, `Slider "Left Bar" = 12`.
std::string Heard(const QAccessibleInterface& node);

// The same of all that shows in a window, itself first: a line to a node, indented by two blanks to
// the level, and a line break before the first. What only lays others out, and has no name, is
// passed over. Fails the test where a node isn't where its parent has it.
std::string HeardIn(QWidget& window);
// Of the first node that is read like this; null if there is none.
QAccessibleInterface* FindHeard(QWidget& window, const std::string& line);

}  // namespace kelvane::testing
