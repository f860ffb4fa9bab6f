#pragma once

#include <QApplication>
#include <memory>

namespace kelvane {

// Makes the application object so that a Qt pixel is a screen pixel and file names are UTF-8.
// Environment variables that it changes for this are restored before it returns, so that child
// processes don't see the changes. Under a Wayland compositor that has a scale, the object is made
// twice. If the compositor goes away, the program exits with 1. `argumentCount` and `arguments`
// must outlive it.
std::unique_ptr<QApplication> StartQt(int& argumentCount, char** arguments);

}  // namespace kelvane
