#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace kelvane::desktop {

enum class WindowManager { kOpenbox, kNone };

// A private X server of 1920 by 1200 pixels without a screen, and a window manager on it, both with
// nobody's configuration. They end with the object, and with this process however it ends.
//
// To watch, name Xephyr in KELVANE_TEST_DISPLAY_SERVER: it then takes Xvfb's place and shows its
// screen in a window of the display in DISPLAY.
class PrivateDisplay {
 public:
  // `privateFolder` is the window manager's home. Throws std::runtime_error where the server or the
  // manager doesn't come up.
  explicit PrivateDisplay(const std::string& privateFolder,
                          WindowManager windowManager = WindowManager::kOpenbox);
  PrivateDisplay(const PrivateDisplay&) = delete;
  PrivateDisplay& operator=(const PrivateDisplay&) = delete;
  ~PrivateDisplay();

  // ":7"
  const std::string& Name() const { return name_; }

  // Has this process's own Qt, started later, look at the display as the program under test
  // does.
  void UseForQt(const std::string& privateFolder) const;

 private:
  void StartServer();
  void StartWindowManager(const std::string& privateFolder);

  std::string name_;
  pid_t server_ = 0;
  pid_t windowManager_ = 0;
};

}  // namespace kelvane::desktop
