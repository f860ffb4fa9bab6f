#pragma once

#include <QApplication>
#include <array>
#include <memory>
#include <string>

#include "desktop/driver/PrivateDisplay.h"

namespace kelvane::desktop {

// This process's QApplication on a private display, with the same settings of Qt as the program
// under test. The clipboard and the drawing of expected captions need it. There may be only one
// QtOnDisplay at a time.
class QtOnDisplay {
 public:
  QtOnDisplay(const PrivateDisplay& display, const std::string& privateFolder) {
    display.UseForQt(privateFolder);
    application_ = std::make_unique<QApplication>(argumentCount_, arguments_.data());
  }
  QtOnDisplay(const QtOnDisplay&) = delete;
  QtOnDisplay& operator=(const QtOnDisplay&) = delete;

 private:
  std::string name_ = "desktop_driver";
  int argumentCount_ = 1;
  std::array<char*, 2> arguments_ = {name_.data(), nullptr};
  std::unique_ptr<QApplication> application_;
};

}  // namespace kelvane::desktop
