#include "cropjob/Form2.h"

#include <algorithm>
#include <exception>
#include <limits>

#include "cropjob/Form2_Design.h"
#include "media/CommandLines.h"
#include "media/Module1.h"
#include "platform/App.h"
#include "platform/DialogLoop.h"
#include "platform/MsgBox.h"
#include "shared/Product.h"
#include "shared/SharedValues.h"
#include "shared/TextHelpers.h"

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

constexpr std::int16_t kStartTick = 2;
constexpr float kWindowHeight = 2400;  // twips

// Returns the "hh:mm:ss" after "time=" in the tool's statistics, or less of it if the block ends
// there: "size=    1024kB time=00:00:10.00 bitrate= 838.9kbits/s speed=2.0x". Other lines may have
// the word "time" as well, with any text after it. Empty if the block doesn't have the word.
QString TimeText(const QString& block) {
  constexpr qsizetype kOffset = 5;
  constexpr qsizetype kLength = 8;
  const qsizetype word = block.indexOf("time"_L1, 0, Qt::CaseInsensitive);
  return word < 0 ? QString() : block.mid(word + kOffset, kLength);
}

}  // namespace

Form2::Form2(MainWindow& mainWindow) : Form(kForm2, kForm2Controls), mainWindow_(mainWindow) {
  WireEvents();
}

void Form2::WireEvents() {
  // A job begun while a dialog is open would hold back the dialog's answer until the job ends.
  Timer1.Tick = [this] {
    if (!DialogIsOpen()) Timer1_Timer();
  };
  Label2.MouseUp = [this](const MouseEvent& event) { Label2_MouseUp(event); };
  Label2.setTakesKeyboard();
  Label2.MouseMove = [this](const MouseEvent& event) { Label2_MouseMove(event); };
}

void Form2::Form_Load() {
  objDOS = std::make_unique<DOSOutputs>();
  objDOS->ReceiveOutputs =
      IgnoringExceptions([this](const std::string& block) { objDOS_ReceiveOutputs(block); });
  pbar.SetColours(kGrey, kProgressBack);
  setWindowIcon(mainWindow_.Icon());
  setHeight(kWindowHeight);

  // The bar's range stays 100 if the duration is empty, isn't a time, or is 0.
  if (const std::optional<int> duration = SecondsFromTimeText(VideoDuration)) {
    pbar.setMax(static_cast<float>(*duration));
  }
  pbar.setMin(0);
  pbar.setValue(0);
  ProgressBar& mainBar = mainWindow_.JobProgress();
  mainBar.setMax(pbar.Max());
  mainBar.setMin(0);
  mainBar.setValue(0);

  Label1(1).setCaption(OutputPath);
  TimerTicks = 0;
  Timer1.setEnabled(true);
  Label3.setBackColor(kDark);
}

void Form2::Timer1_Timer() {
  if (TimerTicks < std::numeric_limits<std::int16_t>::max()) ++TimerTicks;
  if (TimerTicks != kStartTick) return;
  Label1(2).setCaption(u"Progress: 000 % Complete: Status: Starting..."_s);
  CropVideo();
  Timer1.setEnabled(false);
}

void Form2::CropVideo() {
  try {
    Label1(2).setCaption(u"Progress: 00.00 % Complete: Status: Cropping..."_s);
    setMousePointer(MousePointer::kHourglass);
    objDOS->setCommandLine(CropCommandLine(ToolsFolder(App::Path()),
                                           ToNarrow(mainWindow_.ShownVideo()), ToNarrow(CropFilter),
                                           ToNarrow(OutputPath)));
    longJob_.emplace("Cropping a video");
    objDOS->ExecuteCommand();
    longJob_.reset();
    setMousePointer(MousePointer::kDefault);
    Label1(2).setCaption(u"Progress: 100 % Complete: Status: Cropping Successful"_s);
  } catch (const std::exception&) {
    longJob_.reset();
    MsgBox(u"An Error Occurred trying to crop the Video."_s);
  }
  objDOS.reset();
}

void Form2::objDOS_ReceiveOutputs(const std::string& CommandOutputs) {
  const QString block = FromNarrow(CommandOutputs);
  DoEvents();
  const QString time = TimeText(block);
  if (time.isEmpty()) return;

  // The percentage shown is that of the value before this update.
  const float old = pbar.Value();
  const float top = pbar.Max();
  if (const std::optional<int> seconds = SecondsFromTimeText(time)) {
    pbar.setValue(static_cast<float>(*seconds));
  }
  if (longJob_) longJob_->SetProgress(double{pbar.Value()} / double{top});
  const QString percent = FormatTwoDecimals(double{old} / (double{top} / 100));
  Label1(2).setCaption(u"Progress: %1% Complete: Status: Cropping Video"_s.arg(percent));
  mainWindow_.JobProgress().setValue(pbar.Value());
  mainWindow_.SetTitle(MainWindowMinimised ? u"Crop: %1%"_s.arg(percent) : QString(kProductName));
}

void Form2::Label2_MouseUp(const MouseEvent& /*event*/) { Unload(); }

void Form2::Label2_MouseMove(const MouseEvent& /*event*/) { Label3.setBackColor(kBlack); }

void Form2::Form_MouseMove(const MouseEvent& /*event*/) { Label3.setBackColor(kDark); }

}  // namespace kelvane
