#include "desktop/driver/JoinerWindow.h"

#include <QPainter>

#include "desktop/driver/Places.h"
#include "desktop/driver/Windows.h"

namespace kelvane::desktop {

using namespace Qt::StringLiterals;

namespace {

constexpr int kRowPitch = 20;
constexpr int kStripHeight = 17;

constexpr int kHeaderHeight = 17;
constexpr int kTableRow = 13;
constexpr int kListLine = 14;
constexpr int kColumn = 96;

QRect WithoutBorder(const QRect& place) { return place.adjusted(1, 1, -1, -1); }

QString NameOf(JoinerButton button) { return u"Label1(%1)"_s.arg(static_cast<int>(button)); }

}  // namespace

bool JoinerWindow::Await() {
  const WindowId window = screen_.Await("Video Joiner");
  return window != 0 && AwaitInOutput(window) &&
         WaitFor([this] { return ShowsProcess("Process: Compiling Video List"); });
}

// This looks for what is drawn on the ruler and compares no caption, since letters may look
// different under Wayland.
bool JoinerWindow::AwaitInOutput(WindowId window) {
  window_ = window;
  return WaitFor([this] {
    menuHeight_ = AreaUnderMenus(screen_, window_, kGround).top() - screen_.Place(window_).top();
    return menuHeight_ < screen_.Place(window_).height() &&
           CountOf(screen_.Picture(), Ruler(), kText) > 0;
  });
}

QRect JoinerWindow::Area() const { return screen_.Place(window_).adjusted(0, menuHeight_, 0, 0); }

QRect JoinerWindow::Place(const QString& control) const {
  const QRect area = Area();
  return PlaceIn("Form4", area.size(), control).translated(area.topLeft());
}

QPoint JoinerWindow::ButtonCentre(JoinerButton button) const {
  return Place(NameOf(button)).center();
}

bool JoinerWindow::ChooseFile(JoinerButton button, const QString& path) {
  const QList<WindowId> known = screen_.Windows();
  screen_.Click(ButtonCentre(button));
  const WindowId dialog = screen_.AwaitNew(known);
  return dialog != 0 && TypeFileName(screen_, dialog, path);
}

bool JoinerWindow::AwaitTotals(int sections, const QString& seconds, const QString& runtime) const {
  const auto shows = [this](const char* readOut, const QString& caption) {
    return ShowsCaption(screen_.Picture(Place(readOut)), caption, kGround, Justify::kLeft);
  };
  return AwaitSections(sections) &&
         WaitFor([&] { return shows("Label3(3)", seconds) && shows("Label3(4)", runtime); });
}

bool JoinerWindow::AwaitSections(int sections) const {
  const QString caption = u"Total Sections: %1"_s.arg(sections, 2, 10, QChar('0'));
  return WaitFor([&] {
    return ShowsCaption(screen_.Picture(Place("Label3(7)")), caption, kGround, Justify::kCentre);
  });
}

bool JoinerWindow::ShowsProcess(const QString& process) const {
  return ShowsCaption(screen_.Picture(Place("Label3(6)")), process, kGround, Justify::kLeft);
}

bool JoinerWindow::AwaitProcess(const QString& process, std::chrono::milliseconds patience) const {
  return WaitFor([&] { return ShowsProcess(process); }, patience);
}

bool JoinerWindow::ShowsDetails(const QString& details) const {
  // The outline is as wide as the text. What lies inside it is put on a picture that is wide enough
  // for the expected text.
  const QRect bar = Place("Picture3");
  const QRect outline = Place("Shape8");
  const QImage top = screen_.Picture({outline.topLeft(), QSize(bar.right() - outline.left(), 1)});
  QRect inside = Place("Label3(8)");
  inside.setRight(outline.left() + Extent(top, top.rect(), kGrey).right() - 1);
  QImage picture(bar.width(), inside.height(), QImage::Format_RGB32);
  picture.fill(kGround);
  QPainter(&picture).drawImage(0, 0, screen_.Picture(inside));
  return ShowsText(picture, "Video Details: " + details, kGround);
}

bool JoinerWindow::AwaitDetails(const QString& details) const {
  return WaitFor([&] { return ShowsDetails(details); }, 5s);
}

QRect JoinerWindow::Chart() const { return Place("Picture1(2)"); }

QRect JoinerWindow::Ruler() const { return Place("Picture5"); }

QRect JoinerWindow::Strip(int section, QRgb color) const {
  const QImage chart = screen_.Picture(Chart());
  return Extent(chart, QRect(0, 1 + section * kRowPitch, chart.width(), kStripHeight), color);
}

void JoinerWindow::PointAtSection(int section) {
  QRect strip = Strip(section);
  if (strip.isEmpty()) strip = Strip(section, kRemoved);
  screen_.MovePointer(OnChart(strip.center()));
}

QPoint JoinerWindow::EmptyChartPosition() const { return Chart().bottomRight() - QPoint(40, 40); }

QPoint JoinerWindow::OpenMenuAt(QPoint place) {
  const QRect menu = screen_.OpenMenu(place);
  return menu.isEmpty() ? QPoint() : menu.center();
}

bool JoinerWindow::RemoveSection(int section) {
  const QPoint entry = OpenMenuAt(OnChart(Strip(section).center()));
  if (entry.isNull()) return false;
  screen_.Click(entry);
  return WaitFor([&] { return Strip(section).isEmpty(); }, 5s);
}

QRect JoinerWindow::Row(int row) const {
  const QRect table = WithoutBorder(Place("ListView1"));
  return {table.left(), table.top() + kHeaderHeight + row * kTableRow, table.width(), kTableRow};
}

QRect JoinerWindow::Line(int line) const {
  const QRect list = WithoutBorder(Place("List1"));
  return {list.left(), list.top() + line * kListLine, list.width(), kListLine};
}

bool JoinerWindow::AwaitRow(int row, const QString& number, const QString& title,
                            const QString& seconds) const {
  const QRect place = Row(row);
  const auto cell = [&](int left, int right, const QString& text) {
    const QRect inside(place.left() + left, place.top(), right - left, place.height());
    return ShowsText(screen_.Picture(inside), text, kGround);
  };
  return WaitFor([&] {
    return cell(0, kColumn, number) && cell(kColumn, 2 * kColumn, title) &&
           cell(2 * kColumn, place.width(), seconds);
  });
}

bool JoinerWindow::AwaitLine(int line, const QString& text) const {
  return WaitFor([&] { return ShowsText(screen_.Picture(Line(line)), text, kGround); });
}

bool JoinerWindow::Chosen(const QRect& entry) const {
  const QImage picture = screen_.Picture(entry);
  return CountOf(picture, picture.rect(), kGround) < picture.width();
}

bool CloseJoinMessage(Screen& screen, std::chrono::milliseconds patience) {
  const WindowId box = screen.Await("Kelvane", patience);
  if (box == 0 || !WaitFor([&] { return screen.Active(box); })) return false;
  screen.PressKey(kReturn);
  return WaitFor([&] { return !screen.Exists(box); });
}

}  // namespace kelvane::desktop
