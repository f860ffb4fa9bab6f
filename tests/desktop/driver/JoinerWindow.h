#pragma once

#include <QString>

#include "desktop/driver/Picture.h"
#include "desktop/driver/Screen.h"

namespace kelvane::desktop {

enum class JoinerButton { kAddSection, kJoinSections, kSaveList };
enum class JoinerMode { kCopy, kTransportStreams };

// The joiner window as a user finds and uses it. Sections, rows and lines are numbered from 0.
class JoinerWindow {
 public:
  static constexpr QRgb kGround = 0xff404040;
  static constexpr QRgb kStrip = 0xff008000;
  static constexpr QRgb kRemoved = 0xff808080;
  static constexpr QRgb kRule = 0xff808080;

  explicit JoinerWindow(Screen& screen) : screen_(screen) {}

  // Waits until the window is on the screen and painted. False if that doesn't happen.
  bool Await();
  // The same where it fills another one, as under a compositor that shows its output there.
  bool AwaitFilling(WindowId window);
  WindowId Id() const { return window_; }

  // The area under the menu, and the menu's bar, in screen pixels.
  QRect Area() const;
  QRect Menus() const;
  // A control's place by the drawing and the window's present size, in screen pixels.
  QRect Place(const QString& control) const;

  QPoint ButtonCentre(JoinerButton button) const;
  // Clicks the button and waits for the dialog or box that it brings up; 0 if none comes.
  WindowId OpenDialog(JoinerButton button, PointerButton with = kLeftButton);
  // Clicks the button and types the path into the file dialog that comes. False if none comes or it
  // doesn't take the path.
  bool ChooseFile(JoinerButton button, const QString& path);
  void Choose(JoinerMode mode);
  QPoint ModeCentre(JoinerMode mode) const;

  bool AwaitTotals(int sections, const QString& seconds, const QString& runtime) const;
  bool AwaitSections(int sections) const;
  bool ShowsProcess(const QString& process) const;
  bool AwaitProcess(const QString& process, std::chrono::milliseconds patience = kPatience) const;
  // What stands behind "Video Details: ", and nothing else.
  bool ShowsDetails(const QString& details) const;
  bool AwaitDetails(const QString& details) const;

  // What can be seen of the chart and the ruler, on the screen.
  QRect Chart() const;
  QRect Ruler() const;
  // Where the row of a section shows the colour, in pixels from the chart's visible corner.
  QRect Strip(int section, QRgb color = kStrip) const;
  QPoint OnChart(QPoint place) const { return Chart().topLeft() + place; }
  // In the strip's middle.
  void PointAtSection(int section);
  // Under the strips.
  QPoint BareChart() const;
  // Opens the context menu there with the right button, and returns its entry's middle on the
  // screen. Null if it doesn't come.
  QPoint OpenMenuAt(QPoint place);
  bool RemoveSection(int section);

  // A row of the table and a line of the list, as far as they can be seen.
  QRect Row(int row) const;
  QRect Line(int line) const;
  bool AwaitRow(int row, const QString& number, const QString& title, const QString& seconds) const;
  bool AwaitLine(int line, const QString& text) const;
  bool RowChosen(int row) const { return Chosen(Row(row)); }
  bool LineChosen(int line) const { return Chosen(Line(line)); }
  // The table's headers.
  QRect Headers() const;

 private:
  bool Chosen(const QRect& entry) const;

  Screen& screen_;
  WindowId window_ = 0;
  int menuHeight_ = 0;
};

// Waits for the box that ends a join, and closes it. False if it doesn't come.
bool ConfirmJoin(Screen& screen, std::chrono::milliseconds patience = kPatience);

}  // namespace kelvane::desktop
