#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace kelvane::desktop {

enum class WindowManager { kOpenbox, kNone };

// A private X server with a virtual screen of 1920 by 1200 pixels, and a window manager without a
// user's configuration. Both end with the object, or at the latest with this process.
//
// With KELVANE_TEST_DISPLAY_SERVER=Xephyr the server is Xephyr instead of Xvfb. It shows the screen
// in a window on the display that DISPLAY names.
class PrivateDisplay {
 public:
  // `privateFolder` is the window manager's home folder. Throws std::runtime_error if the server or
  // the manager doesn't start.
  explicit PrivateDisplay(const std::string& privateFolder,
                          WindowManager windowManager = WindowManager::kOpenbox);
  PrivateDisplay(const PrivateDisplay&) = delete;
  PrivateDisplay& operator=(const PrivateDisplay&) = delete;
  ~PrivateDisplay();

  // The value of DISPLAY, such as ":7".
  const std::string& Name() const { return name_; }

  // Sets this process's environment so that a QApplication made later uses this display, and
  // `privateFolder` as its runtime folder.
  void UseForQt(const std::string& privateFolder) const;

 private:
  void StartServer();
  void StartWindowManager(const std::string& privateFolder);

  std::string name_;
  pid_t server_ = 0;
  pid_t windowManager_ = 0;
};

}  // namespace kelvane::desktop
