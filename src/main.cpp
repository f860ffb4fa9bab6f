#include <QTimer>

#include "media/DOSOutputs.h"
#include "media/Module1.h"
#include "platform/App.h"
#include "workspace/Form1.h"

int main() {
  kelvane::App app("kelvane");
  kelvane::ClearShortPathsLeftBehind();

  // Tools that outlive their output are taken leave of here. No form's timer: the last ones may end
  // when the main window is closed already.
  constexpr int kReapInterval = 1000;  // ms
  QTimer reaper;
  reaper.callOnTimeout(&kelvane::DOSOutputs::ReapEndedChildren);
  reaper.start(kReapInterval);

  kelvane::Form1 form1;
  form1.Load();
  form1.Show();
  return app.Run();
}
