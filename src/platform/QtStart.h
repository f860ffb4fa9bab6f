#pragma once

#include <QApplication>
#include <memory>

namespace kelvane {

// Starts Qt for a program whose pixels are pixels of the screen, in UTF-8. What the environment
// says is changed for Qt's start alone; programs that are started later don't see the changes.
// Under a Wayland compositor that has a scale, Qt is started twice. `argumentCount` and `arguments`
// must outlive the application.
std::unique_ptr<QApplication> StartQt(int& argumentCount, char** arguments);

}  // namespace kelvane
