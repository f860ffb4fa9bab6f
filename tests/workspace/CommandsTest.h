#pragma once

#include <string>

#include "shared/SharedValues.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {

class Commands : public MainWindowTest {
 protected:
  static void SetRegion(int width, int height, int left, int top) {
    CropWidth = width;
    CropHeight = height;
    CropLeft = left;
    CropTop = top;
  }
  static void RunTheJob() {
    ASSERT_NE(JobWindow(), nullptr);
    RunJob(*JobWindow());
  }
  std::string PauseState() const {
    return Get<CommandButton>("Command1", PauseVideo).Caption().toStdString();
  }
  std::string LastRun() const { return tools_.Runs().empty() ? "" : tools_.Runs().back(); }
};

}  // namespace kelvane::testing
