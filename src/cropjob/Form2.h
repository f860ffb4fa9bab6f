#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "cropjob/MainWindow.h"
#include "media/DOSOutputs.h"
#include "platform/ControlArray.h"
#include "platform/Form.h"
#include "platform/Label.h"
#include "platform/LongJob.h"
#include "platform/ProgressBar.h"
#include "platform/Timer.h"

namespace kelvane {

// "Saving Video": runs one crop and shows its progress. The crop begins at the timer's second tick,
// not counting the ticks that come while a dialog is open. When the tool's text ends, the window
// says that the job succeeded, whatever the tool did.
//
// The job runs inside a tick of Timer1. If the window is cancelled meanwhile, the tool runs on to
// its end and the main window's bar still follows it.
class Form2 : public Form {
  Q_OBJECT
 public:
  // `mainWindow` must outlive the form.
  explicit Form2(MainWindow& mainWindow);

  // Takes what the tool prints, block by block while it runs, and an empty block at its end.
  void objDOS_ReceiveOutputs(const std::string& CommandOutputs);

 protected:
  void Form_Load() override;
  void Form_MouseMove(const MouseEvent& event) override;

 private:
  void WireEvents();
  void Timer1_Timer();
  void CropVideo();
  void Label2_MouseUp(const MouseEvent& event);
  void Label2_MouseMove(const MouseEvent& event);

  MainWindow& mainWindow_;
  std::unique_ptr<DOSOutputs> objDOS;
  std::optional<LongJob> longJob_;  // while the tool runs
  std::int16_t TimerTicks = 0;

  ControlArray<Label> Label1{*this, "Label1"};
  Label& Label2 = Find<Label>("Label2");
  Label& Label3 = Find<Label>("Label3");
  ProgressBar& pbar = Find<ProgressBar>("pbar");
  Timer Timer1{*this, "Timer1", 1000};
};

}  // namespace kelvane
