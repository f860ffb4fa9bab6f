#pragma once

#include <QString>

#include "desktop/driver/Picture.h"
#include "desktop/driver/Screen.h"

namespace kelvane::desktop {

enum class JoinerButton { kAddSection, kJoinSections, kSaveList };

// The joiner window as a user finds and uses it. Sections, rows and lines are numbered from 0.
class JoinerWindow {
 public:
  static constexpr QRgb kGround = 0xff404040;
  static constexpr QRgb kStrip = 0xff008000;
  static constexpr QRgb kRemoved = 0xff808080;

  explicit JoinerWindow(Screen& screen) : screen_(screen) {}

  // Waits until the window is on the screen and painted. Returns false if it doesn't come.
  bool Await();
  // The same under a Wayland compositor: `window` is the X window of the program's output.
  bool AwaitInOutput(WindowId window);
  WindowId Id() const { return window_; }

  // The area under the menu bar.
  QRect Area() const;
  // The place of a control, such as "Label3(6)", if the chart hasn't been scrolled.
  QRect Place(const QString& control) const;

  QPoint ButtonCentre(JoinerButton button) const;
  // Clicks the button and types the path into the file dialog that this opens. Returns false if no
  // dialog opens or if it doesn't accept the path.
  bool ChooseFile(JoinerButton button, const QString& path);

  bool AwaitTotals(int sections, const QString& seconds, const QString& runtime) const;
  bool AwaitSections(int sections) const;
  bool ShowsProcess(const QString& process) const;
  bool AwaitProcess(const QString& process, std::chrono::milliseconds patience = kPatience) const;
  // Waits until exactly these details are shown after "Video Details: ".
  bool AwaitDetails(const QString& details) const;

  // The visible parts of the chart and the ruler.
  QRect Chart() const;
  QRect Ruler() const;
  // The extent of the colour in a section's row, in pixels from the top left corner of Chart().
  QRect Strip(int section, QRgb color = kStrip) const;
  QPoint OnChart(QPoint place) const { return Chart().topLeft() + place; }
  // Moves the pointer to the middle of the section's strip, even if the section has been removed.
  void PointAtSection(int section);
  // A place of the chart below the strips.
  QPoint EmptyChartPosition() const;
  // Opens the context menu there with the right button, and returns the middle of its only entry.
  // Returns a null point if no menu opens.
  QPoint OpenMenuAt(QPoint place);
  bool RemoveSection(int section);

  // The visible parts of a row of the table and of a line of the list.
  QRect Row(int row) const;
  QRect Line(int line) const;
  bool AwaitRow(int row, const QString& number, const QString& title, const QString& seconds) const;
  bool AwaitLine(int line, const QString& text) const;
  bool RowSelected(int row) const { return Chosen(Row(row)); }
  bool LineSelected(int line) const { return Chosen(Line(line)); }

 private:
  bool ShowsDetails(const QString& details) const;
  bool Chosen(const QRect& entry) const;

  Screen& screen_;
  WindowId window_ = 0;
  int menuHeight_ = 0;
};

// Waits for the message box at the end of a join and closes it. Returns false if it doesn't come.
bool CloseJoinMessage(Screen& screen, std::chrono::milliseconds patience = kPatience);

}  // namespace kelvane::desktop
