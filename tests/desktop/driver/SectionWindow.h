#pragma once

#include <QString>

#include "desktop/driver/Picture.h"
#include "desktop/driver/Screen.h"

namespace kelvane::desktop {

enum class TimeLineArrow { kTowardsStart, kTowardsEnd };
enum class TimeReadOut { kStart = 1, kEnd = 3, kSpan = 6 };

// The section window as a user finds and uses it. Sliders are numbered from the top, from 0.
class SectionWindow {
 public:
  static constexpr int kSliders = 7;
  static constexpr QRgb kStartNeedle = 0xff00c000;
  static constexpr QRgb kEndNeedle = 0xffc00000;
  static constexpr QRgb kSpan = 0xffe0e0e0;

  explicit SectionWindow(Screen& screen) : screen_(screen) {}

  // Waits until the window is on the screen and painted. False if that doesn't happen.
  bool Await();
  // The same where it fills another one, as under a compositor that shows its output there.
  bool AwaitFilling(WindowId window);
  WindowId Id() const { return window_; }

  // A place of the window, in pixels from its top left corner, on the screen.
  QRect OnScreen(const QRect& place) const;
  // A control's place in screen pixels.
  QRect Place(const QString& control) const;

  // What can be seen of the time line, on the screen.
  QRect TimeLine() const;
  QImage TimeLinePicture() const { return screen_.Picture(TimeLine()); }
  // Where a colour of the time line is to be seen, in pixels from the time line's visible corner.
  QRect OnTimeLine(QRgb color) const;
  void ClickArrow(TimeLineArrow arrow, PointerButton button = kLeftButton);
  QPoint ArrowCentre(TimeLineArrow arrow) const;
  // Takes the needle of that colour by its middle, and drags it that far.
  void DragNeedle(QRgb needle, int way);
  bool ShowsTime(TimeReadOut readOut, const QString& time) const;
  bool AwaitTime(TimeReadOut readOut, const QString& time) const;
  // Clicks the context menu's entry (from 0) after the right button at a place of the time line.
  void ChooseAt(QPoint onTimeLine, int entry);
  // Opens the context menu there, and returns the entry's middle on the screen. Null if it doesn't
  // come.
  QPoint OpenMenuAt(QPoint onTimeLine, int entry);

  QRect Track(int slider) const;
  // What can be seen of the outline round the thumb, in pixels from the track's corner. Empty where
  // it is out of sight; Step Size may leave its own behind.
  QRect ThumbOutline(int slider) const;
  // The outline's middle on the screen. Both throw std::runtime_error where it is out of sight.
  QPoint ThumbCentre(int slider) const;
  void DragThumb(int slider, int way);
  bool ShowsOption(int slider, const QString& value) const;
  bool AwaitOption(int slider, const QString& value) const;

  QPoint FileButton() const;
  bool ShowsFile(const QString& path) const;
  QPoint BareGround() const;

 private:
  Screen& screen_;
  WindowId window_ = 0;
};

}  // namespace kelvane::desktop
