#pragma once

#include <QAccessible>
#include <QString>
#include <string>

class QWidget;

// What a screen reader is told of a window.
namespace kelvane::testing {

QAccessibleInterface& NodeOf(QObject& object);

// One node as a line: `Button "Load Video"`, `StaticText "0,640" (Width of the video in
// pixels)`, `Slider "Left Bar" = 12`.
std::string Heard(const QAccessibleInterface& node);

// A line break and then the lines of all visible nodes, that of the window first, each indented by
// two blanks per level. Leaves out nodes without a name that only lay out others. Fails the test if
// a child doesn't return its node as parent(), or the node's indexOfChild() doesn't return the
// child's index.
std::string HeardIn(QWidget& window);
// The first visible node with that line; null if there is none.
QAccessibleInterface* FindHeard(QWidget& window, const std::string& line);

}  // namespace kelvane::testing
