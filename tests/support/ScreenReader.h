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

// The lines of all visible nodes of a window, itself first, each indented by two blanks for a
// level, after a line break. Leaves out nodes without a name that only lay out others. Fails the
// test if a node and its parent disagree on its place.
std::string HeardIn(QWidget& window);
// The first node with that line; null if there is none.
QAccessibleInterface* FindHeard(QWidget& window, const std::string& line);

}  // namespace kelvane::testing
