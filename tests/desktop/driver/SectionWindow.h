#pragma once

#include <QString>

#include "desktop/driver/Picture.h"
#include "desktop/driver/Screen.h"

namespace kelvane::desktop {

enum class TimeLineArrow { kTowardsStart, kTowardsEnd };
enum class TimeReadOut { kStart = 1, kEnd = 3, kSpan = 6 };

// The section window as a user finds and uses it. Sliders are numbered from 0, top to bottom.
class SectionWindow {
 public:
  static constexpr int kSliders = 7;
  static constexpr QRgb kStartNeedle = 0xff00c000;
  static constexpr QRgb kEndNeedle = 0xffc00000;
  static constexpr QRgb kSpan = 0xffe0e0e0;

  explicit SectionWindow(Screen& screen) : screen_(screen) {}

  // Waits until the window is on the screen and painted. Returns false if it doesn't come.
  bool Await();
  // The same under a Wayland compositor: `window` is the X window of the program's output.
  bool AwaitInOutput(WindowId window);
  WindowId Id() const { return window_; }

  // The place of a control, such as "Picture3(1)", if the time line hasn't been scrolled.
  QRect Place(const QString& control) const;
  // A place where the window has no control.
  QPoint BareGround() const;

  // The visible part of the time line.
  QRect TimeLine() const { return Place("Picture3(1)"); }
  // The extent of the colour on the time line, in pixels from the top left corner of TimeLine().
  QRect OnTimeLine(QRgb color) const;
  void ClickArrow(TimeLineArrow arrow) { screen_.Click(ArrowCentre(arrow)); }
  QPoint ArrowCentre(TimeLineArrow arrow) const;
  // Drags the needle of that colour sideways by `way` pixels.
  void DragNeedle(QRgb needle, int way);
  bool AwaitTime(TimeReadOut readOut, const QString& time) const;
  // Opens the context menu at a place of the time line, and returns the middle of the entry with
  // that number, counted from 0. Returns a null point if no menu opens.
  QPoint OpenMenuAt(QPoint onTimeLine, int entry);

  QRect Track(int slider) const;
  // The visible part of the outline around the thumb, in pixels from the track's corner.
  QRect ThumbOutline(int slider) const;
  // The middle of that outline on the screen.
  QPoint ThumbCentre(int slider) const;
  // Drags the thumb sideways by `way` pixels.
  void DragThumb(int slider, int way);
  bool AwaitOption(int slider, const QString& value) const;

  QPoint FileButton() const { return Place("Label6(0)").center(); }
  bool ShowsFile(const QString& path) const;

 private:
  Screen& screen_;
  WindowId window_ = 0;
};

}  // namespace kelvane::desktop
