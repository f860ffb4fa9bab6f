#pragma once

#include <QTimer>

#include "media/DOSOutputs.h"
#include "media/Module1.h"
#include "platform/App.h"
#include "shared/Product.h"

namespace kelvane {

// Runs a program that opens with one window of the class `Window`, and returns the program's exit
// status. `programName` is the name of the program's desktop file.
template <class Window>
int RunProgram(const char* programName) {
  App app(programName, kProductName);
  ClearShortPathsLeftBehind();
  ClearWorkFilesLeftBehind();

  // Reaps tools that exit after their output has ended. No form owns this timer, since the last
  // tool may exit after the first window is closed.
  constexpr int kReapInterval = 1000;  // ms
  QTimer reaper;
  reaper.callOnTimeout(&DOSOutputs::ReapEndedChildren);
  reaper.start(kReapInterval);

  Window window;
  window.Load();
  window.Show();
  return app.Run();
}

}  // namespace kelvane
