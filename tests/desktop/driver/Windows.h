#pragma once

#include <QRect>
#include <QRegion>
#include <QString>

#include "desktop/driver/Picture.h"
#include "desktop/driver/Screen.h"

// The main window and the job's window as a user finds and uses them.
namespace kelvane::desktop {

enum Command : int {
  kLoadVideo,
  kRunVideo,
  kPauseVideo,
  kStopVideo,
  kPreviewCroppedVideo,
  kCropVideo,
  kResetMarkers
};

// The entries of the picture's menu. A separator follows kStop.
enum class PictureEntry : int {
  kPlay,
  kPause,
  kStop,
  kBack,
  kForward,
  kPreviousFrame,
  kNextFrame,
  kBeginning
};

// The four green bars on the canvas, in pixels of the video.
struct MarkerBars {
  QRect left;
  QRect top;
  QRect right;
  QRect base;
};

// Each bar's left or top edge, which the read-outs show.
struct Region {
  int left;
  int top;
  int right;
  int base;
};

// The bars at the edges of a video of this size.
MarkerBars BarsAround(QSize video);
Region RegionOf(const MarkerBars& bars);

class MainWindow {
 public:
  explicit MainWindow(Screen& screen) : screen_(screen) {}

  // Waits until the window is on the screen and painted. Returns false if it doesn't come.
  bool Await();
  // The same under a Wayland compositor: `window` is the X window of the program's output.
  bool AwaitInOutput(WindowId window);
  WindowId Id() const { return window_; }

  // The area under the menu bar, and the menu bar.
  QRect Area() const;
  QRect Menus() const;
  // The place of a control, such as "Label14(3)", if the canvas hasn't been scrolled.
  QRect Place(const QString& control) const;
  static QString NameOf(Command command);

  void Click(Command command, PointerButton button = kLeftButton);
  void PointAt(Command command);
  // Opens the menu of the picture and clicks an entry. Returns false if no menu comes.
  bool ChooseOnPicture(PictureEntry entry);
  // Moves the pointer to where the window has no control.
  void PointAtGround();
  // Chooses the first item of a menu. Menus count from 0.
  void ChooseFirstItem(int menu);

  // Whether the label shows exactly this caption now.
  bool Shows(const QString& control, const QString& caption, QRgb background = kDark) const;
  // Whether the label shows the caption that the window text has for it.
  bool ShowsItsDesignedCaption(const QString& control) const;
  // Waits until the label shows exactly this caption.
  bool AwaitCaption(const QString& control, const QString& caption) const;
  // Waits until duration and position show the times of a player without a video. They do so half a
  // second after the start.
  bool AwaitTimesWithoutVideo() const;
  // Points at a command and waits until it lights up. Returns false if the window doesn't handle
  // events.
  bool Answers();
  // Whether the frame's right line and its bottom line, one pixel thick, have that colour and lie
  // where the window text has them at the window's present size.
  bool FrameLiesInPlace(const QString& frame, QRgb color) const;
  // The same for all frames.
  bool FramesLieInPlace() const;
  // The same for all frames, and whether the captions, the progress bar and the viewport look as
  // they do without a video.
  bool IsLaidOut() const;
  bool ShowsPath(const QString& path) const;
  // Waits until the read-outs show a video of this size with its bars at the edges.
  bool AwaitVideo(QSize video) const;
  bool AwaitRegion(const Region& region) const;
  // Waits until the canvas is visible, which is the last step of a load.
  bool AwaitCanvas() const;
  // Waits until the bars at the edges of a video of this size are visible, and nothing else is
  // green.
  bool AwaitBarsAround(QSize video) const;
  // Waits until exactly these bars are visible on a canvas that lies at this place in the viewport,
  // and nothing else in the viewport is green.
  bool AwaitBars(const MarkerBars& bars, const QRect& canvas) const;

  // The visible part of the picture inside bars at the edges of a video of this size.
  QImage Inside(QSize video) const;
  // Waits until that picture has changed three times.
  bool AwaitMoving(QSize video) const;
  // Waits until that picture stays the same for longer than a frame lasts.
  bool AwaitStill(QSize video) const;
  // Waits until that picture is black.
  bool AwaitBlack(QSize video) const;
  bool IsBlack(QSize video) const;

  // Drags both scroll bars to their ends.
  void ScrollToTheFarCorner();
  // Where a place of the canvas is on the screen, if the canvas hasn't been scrolled.
  QPoint OnCanvas(QPoint place) const;
  // The width in pixels of the filled part of the progress bar.
  int Progress() const;

 private:
  QRect Viewport() const;

  Screen& screen_;
  WindowId window_ = 0;
};

class JobWindow {
 public:
  explicit JobWindow(Screen& screen) : screen_(screen) {}

  // Waits until the window is on the screen and painted. Returns false if it doesn't come.
  bool Await();
  bool Open() const { return screen_.Find("Saving Video").has_value(); }
  WindowId Id() const { return window_; }

  bool ShowsStatus(const QString& status) const;
  bool AwaitStatus(const QString& status, std::chrono::milliseconds patience = kPatience) const;
  // Waits for the status that a job shows at its end, even if the tool has failed.
  bool AwaitEndStatus(std::chrono::milliseconds patience = kPatience) const;
  bool ShowsOutput(const QString& output) const;
  // The width in pixels of the filled part of the progress bar.
  int Progress() const;
  void Cancel() { screen_.Click(Place("Label2").center()); }

 private:
  QRect Place(const char* control) const;

  Screen& screen_;
  WindowId window_ = 0;
};

// The window's area under its menu bar, in pixels of the screen: it begins where the window's left
// edge has the colour `ground`.
QRect AreaUnderMenus(const Screen& screen, WindowId window, QRgb ground);

// Clicks the command and types the path into the file dialog that this opens. Returns false if no
// dialog opens or if it doesn't accept the path.
bool ChooseFile(Screen& screen, MainWindow& window, Command command, const QString& path);
// Types the path into a file dialog that is open already. Returns false if the dialog doesn't
// accept the path.
bool TypeFileName(Screen& screen, WindowId dialog, const QString& path);

}  // namespace kelvane::desktop
