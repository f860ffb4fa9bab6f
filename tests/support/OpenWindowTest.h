#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "support/Events.h"
#include "support/RecordingTools.h"

namespace kelvane::testing {

// A loaded and shown window, with RecordingTools in place of the media tools.
template <class Window>
class OpenWindowTest : public ::testing::Test {
 protected:
  OpenWindowTest() {
    ForgetSharedValues();
    form_->Load();
    form_->Show();
  }
  ~OpenWindowTest() override {
    form_.reset();
    ForgetSharedValues();
  }

  template <class Kind>
  Kind& Get(const char* name) const {
    return form_->template Find<Kind>(QLatin1String(name));
  }
  template <class Kind>
  Kind& Get(const char* array, int index) const {
    return form_->template Find<Kind>(Member(array, index));
  }

  RecordingTools tools_;
  std::unique_ptr<Window> form_ = std::make_unique<Window>();
};

}  // namespace kelvane::testing
