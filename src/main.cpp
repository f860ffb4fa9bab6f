#include "media/DOSOutputs.h"
#include "media/Module1.h"
#include "platform/App.h"
#include "platform/Timer.h"
#include "workspace/Form1.h"

int main() {
  kelvane::App app("kelvane");
  kelvane::ClearShortPathsLeftBehind();

  kelvane::Form1 form1;
  form1.Load();
  form1.Show();

  // Tools that outlived their output are taken leave of here.
  constexpr int kReapInterval = 1000;  // ms
  kelvane::Timer reaper(form1, "Reaper", kReapInterval);
  reaper.Tick = kelvane::DOSOutputs::ReapEndedChildren;
  reaper.setEnabled(true);

  return app.Run();
}
