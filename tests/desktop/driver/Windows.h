#pragma once

#include <QString>

#include "desktop/driver/MarkerBars.h"
#include "desktop/driver/Picture.h"
#include "desktop/driver/Screen.h"

// The program's windows as a user finds and uses them.
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

class MainWindow {
 public:
  explicit MainWindow(Screen& screen) : screen_(screen) {}

  // Waits until the window is on the screen and painted. False if that doesn't happen.
  bool Await();
  // The same where it fills another one, as under a compositor that shows its output there.
  bool AwaitFilling(WindowId window);
  WindowId Id() const { return window_; }

  // The area under the menus, in screen pixels.
  QRect Area() const;
  QRect Menus() const;
  // A control's place in screen pixels.
  QRect Place(const QString& control) const;
  static QString NameOf(Command command);

  void Click(Command command, PointerButton button = kLeftButton);
  void PointAt(Command command);
  // Lays the pointer on the window's own bare ground.
  void PointAtGround();
  // Chooses the item in line `item` (from 0) of the menu in column `menu`.
  void ChooseMenuItem(int menu, int item);

  // True if the label shows this caption at this moment, pixel for pixel.
  bool Shows(const QString& control, const QString& caption, QRgb background = kDark) const;
  // The same of the caption with which it is drawn.
  bool ShowsAsDrawn(const QString& control, QRgb background = kDark) const;
  // Waits until the label shows this caption.
  bool AwaitCaption(const QString& control, const QString& caption) const;
  // Waits for the times of a player that plays nothing, which come a moment after the window: the
  // last that it shows by itself.
  bool AwaitTimesOfNothing() const;
  // True if the box shows this path and nothing else.
  bool ShowsPath(const QString& path) const;
  // Waits until the read-outs are those of a video of this size with its bars at the edges.
  bool AwaitVideo(QSize video) const;
  // Waits until the read-outs of the region are these.
  bool AwaitRegion(const Region& region) const;
  // Waits until the canvas is on show, which is the last thing that a load does.
  bool AwaitCanvas() const;
  // What can be seen of the four bars, from the viewport's corner; empty while they are hidden.
  QRect Bars() const;
  // Waits until the canvas shows its four bars at the edges of a video of this size, and nowhere
  // else.
  bool AwaitBarsAround(QSize video) const;
  // Waits until exactly these bars are to be seen where the canvas lies in the viewport. No other
  // pixel of the viewport may have their colour.
  bool AwaitBars(const MarkerBars& bars, const QRect& canvas) const;
  bool ShowsBars(const MarkerBars& bars, const QRect& canvas) const;
  // What a canvas of this size that hasn't been scrolled shows inside bars at its edges; the part
  // of it that lies in the viewport.
  QImage Inside(QSize video) const;
  // Takes both scroll bars' thumbs as far as they go.
  void ScrollToTheFarCorner();
  // The screen's pixel of a place on a canvas that hasn't been scrolled.
  QPoint OnCanvas(QPoint place) const;
  // The filled part of the progress bar in pixels.
  int Progress() const;

 private:
  QRect Viewport() const;

  Screen& screen_;
  WindowId window_ = 0;
};

class JobWindow {
 public:
  explicit JobWindow(Screen& screen) : screen_(screen) {}

  // Waits until the window is on the screen and painted. False if that doesn't happen.
  bool Await();
  bool Open() const { return screen_.Find(QStringLiteral("Saving Video")).has_value(); }
  WindowId Id() const { return window_; }

  bool ShowsStatus(const QString& status) const;
  bool AwaitStatus(const QString& status, std::chrono::milliseconds patience = kPatience) const;
  // Waits until the job is said to be over.
  bool AwaitSuccess(std::chrono::milliseconds patience = kPatience) const;
  bool ShowsOutput(const QString& output) const;
  int Progress() const;
  QPoint CancelButton() const;
  void Cancel(PointerButton button = kLeftButton);

 private:
  QRect Place(const char* control) const;

  Screen& screen_;
  WindowId window_ = 0;
};

// The window's area under its menu bar, in screen pixels; the bar ends where `ground` begins.
QRect AreaUnderMenus(const Screen& screen, WindowId window, QRgb ground);

// Fires the command, and types the path into the file dialog that comes. False if none comes or it
// doesn't take the path.
bool ChooseFile(Screen& screen, MainWindow& window, Command command, const QString& path);
// Types the path into a file dialog that stands open.
bool TypeFileName(Screen& screen, WindowId dialog, const QString& path);

}  // namespace kelvane::desktop
