#pragma once

#include <functional>
#include <string>
#include <utility>

#include "joiner/JoinerWindowTest.h"

namespace kelvane::testing {

constexpr const char* kSuccess =
    "Kelvane | Your Videos have been joined successfully. | exclamation | OK Cancel";

class JoinTest : public JoinerWindowTest {
 protected:
  std::string ListFile() const { return ContentOf(InFolder("files.txt")); }
  Texts RunsOf(const char* tool) const {
    Texts runs;
    for (const std::string& run : tools_.Runs()) {
      if (run.starts_with(tool)) runs.push_back(run);
    }
    return runs;
  }
  std::string CopyRun(const std::string& output) const {
    return "ffmpeg | -f | concat | -safe | 0 | -i | " + Path("files.txt") + " | -c | copy | -y" +
           (output.empty() ? "" : " | " + output);
  }
  std::string WrapRun(const char* source, const char* intermediate) const {
    return "ffmpeg | -i | " + Path(source) +
           " | -c | copy | -bsf:v | h264_mp4toannexb | -f | mpegts | -y | " + Path(intermediate);
  }
  // The process line's captions from now on.
  void WriteCaptionsDown(Texts& captions) const {
    Get<Label>("Label3", ProcessLine).Change = [&](int) { captions.push_back(Shown(ProcessLine)); };
  }
  // When the process line says this, at the next serving of the windows.
  void DuringTheWait(std::function<void()> step) const {
    Get<Label>("Label3", ProcessLine).Change = [this, step = std::move(step)](int) mutable {
      if (step && Shown(ProcessLine) == "Process: Joining Your Videos...") {
        AtNextDoEvents(std::exchange(step, nullptr));
      }
    };
  }
};

}  // namespace kelvane::testing
