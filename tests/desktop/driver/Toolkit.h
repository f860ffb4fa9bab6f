#pragma once

#include <QApplication>
#include <array>
#include <memory>
#include <string>

#include "desktop/driver/PrivateDisplay.h"

namespace kelvane::desktop {

// This process's own toolkit, looking at a private display as the program under test does. Needed
// for the clipboard, and for windows of this process; one at a time.
class Toolkit {
 public:
  Toolkit(const PrivateDisplay& display, const std::string& privateFolder) {
    display.UseForToolkit(privateFolder);
    application_ = std::make_unique<QApplication>(argumentCount_, arguments_.data());
  }
  Toolkit(const Toolkit&) = delete;
  Toolkit& operator=(const Toolkit&) = delete;

 private:
  std::string name_ = "desktop_driver";
  int argumentCount_ = 1;
  std::array<char*, 2> arguments_ = {name_.data(), nullptr};
  std::unique_ptr<QApplication> application_;
};

}  // namespace kelvane::desktop
