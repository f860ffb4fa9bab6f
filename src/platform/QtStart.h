#pragma once

#include <QApplication>
#include <memory>

namespace kelvane {

// Makes the application object so that a Qt pixel is a screen pixel, and in a UTF-8 locale: Qt
// takes file names as UTF-8 in every locale, but warns if the locale has another encoding. The
// function restores the environment variables that it changes for this before it returns, so that
// child processes don't see the changes. Under a Wayland compositor with a scale other than 1, the
// object is made twice. If the compositor goes away, the program exits with status 1, unless
// QT_WAYLAND_RECONNECT is set. `argumentCount` and `arguments` must outlive the object.
std::unique_ptr<QApplication> StartQt(int& argumentCount, char** arguments);

}  // namespace kelvane
