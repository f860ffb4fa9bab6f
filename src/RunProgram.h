#pragma once

#include <QTimer>

#include "media/DOSOutputs.h"
#include "media/Module1.h"
#include "platform/App.h"
#include "shared/Product.h"

namespace kelvane {

// The whole life of a program that opens with one window of the class; returns its exit status.
// `programName` is the program's name for the window system.
template <class Window>
int RunProgram(const char* programName) {
  App app(programName, kProductName);
  ClearShortPathsLeftBehind();

  // Reaps tools that outlive their output. This is no form's timer, since the last of them may end
  // after the first window has been closed.
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
