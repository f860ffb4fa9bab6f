#pragma once

#include <QApplication>
#include <memory>

namespace kelvane {

// Makes the application object so that a pixel of Qt's is a pixel of the screen and file names are
// UTF-8. Environment variables that this takes are restored before the function returns: programs
// that are started later don't see the changes. Under a Wayland compositor that has a scale, the
// object is made twice. `argumentCount` and `arguments` must outlive it.
std::unique_ptr<QApplication> StartQt(int& argumentCount, char** arguments);

}  // namespace kelvane
