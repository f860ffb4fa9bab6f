#include "desktop/driver/JoinerWindow.h"

#include <QPainter>

#include "desktop/driver/Places.h"
#include "desktop/driver/Windows.h"

namespace kelvane::desktop {
namespace {

constexpr int kRowPitch = 20;
constexpr int kStripHeight = 17;

constexpr int kHeaderHeight = 17;
constexpr int kTableRow = 13;
constexpr int kListLine = 14;
constexpr int kColumn = 96;

// Of the ruler.
constexpr QRgb kTick = 0xffc0c0c0;

// Without the border.
QRect Inside(const QRect& place) { return place.adjusted(1, 1, -1, -1); }

QString NameOf(JoinerButton button) {
  return QStringLiteral("Label1(%1)").arg(static_cast<int>(button));
}

}  // namespace

bool JoinerWindow::Await() {
  window_ = screen_.Await(QStringLiteral("Video Joiner"));
  if (window_ == 0) return false;
  return WaitFor([this] {
    menuHeight_ = AreaUnderMenus(screen_, window_, kGround).top() - screen_.Place(window_).top();
    return menuHeight_ < screen_.Place(window_).height() &&
           ShowsProcess(QStringLiteral("Process: Compiling Video List"));
  });
}

// Not by a caption: letters may be drawn otherwise there.
bool JoinerWindow::AwaitFilling(WindowId window) {
  window_ = window;
  return WaitFor([this] {
    menuHeight_ = AreaUnderMenus(screen_, window_, kGround).top() - screen_.Place(window_).top();
    return menuHeight_ < screen_.Place(window_).height() &&
           CountOf(screen_.Picture(), Ruler(), kTick) > 0;
  });
}

QRect JoinerWindow::Area() const { return screen_.Place(window_).adjusted(0, menuHeight_, 0, 0); }

QRect JoinerWindow::Menus() const {
  const QRect window = screen_.Place(window_);
  return {window.topLeft(), QSize(window.width(), menuHeight_)};
}

QRect JoinerWindow::Place(const QString& control) const {
  const QRect area = Area();
  return PlaceIn(QStringLiteral("Form4"), area.size(), control).translated(area.topLeft());
}

QPoint JoinerWindow::ButtonCentre(JoinerButton button) const {
  return Place(NameOf(button)).center();
}

WindowId JoinerWindow::OpenDialog(JoinerButton button, PointerButton with) {
  const QList<WindowId> known = screen_.Windows();
  screen_.Click(ButtonCentre(button), with);
  return screen_.AwaitNew(known);
}

bool JoinerWindow::ChooseFile(JoinerButton button, const QString& path) {
  const WindowId dialog = OpenDialog(button);
  return dialog != 0 && TypeFileName(screen_, dialog, path);
}

QPoint JoinerWindow::ModeCentre(JoinerMode mode) const {
  return Place(QStringLiteral("Option1(%1)").arg(static_cast<int>(mode))).center();
}

void JoinerWindow::Choose(JoinerMode mode) { screen_.Click(ModeCentre(mode)); }

bool JoinerWindow::AwaitTotals(int sections, const QString& seconds, const QString& runtime) const {
  const auto shows = [this](const char* readOut, const QString& caption) {
    return ShowsCaption(screen_.Picture(Place(QLatin1String(readOut))), caption, kGround,
                        Justify::kLeft);
  };
  return AwaitSections(sections) &&
         WaitFor([&] { return shows("Label3(3)", seconds) && shows("Label3(4)", runtime); });
}

bool JoinerWindow::AwaitSections(int sections) const {
  const QString caption =
      QStringLiteral("Total Sections: %1").arg(sections, 2, 10, QLatin1Char('0'));
  return WaitFor([&] {
    return ShowsCaption(screen_.Picture(Place(QStringLiteral("Label3(7)"))), caption, kGround,
                        Justify::kCentre);
  });
}

bool JoinerWindow::ShowsProcess(const QString& process) const {
  return ShowsCaption(screen_.Picture(Place(QStringLiteral("Label3(6)"))), process, kGround,
                      Justify::kLeft);
}

bool JoinerWindow::AwaitProcess(const QString& process, std::chrono::milliseconds patience) const {
  return WaitFor([&] { return ShowsProcess(process); }, patience);
}

bool JoinerWindow::ShowsDetails(const QString& details) const {
  // The outline is as wide as the text.
  const QRect bar = Place(QStringLiteral("Picture3"));
  const QRect outline = Place(QStringLiteral("Shape8"));
  const QImage top = screen_.Picture({outline.topLeft(), QSize(bar.right() - outline.left(), 1)});
  QRect inside = Place(QStringLiteral("Label3(8)"));
  inside.setRight(outline.left() + Extent(top, top.rect(), kLit).right() - 1);
  // On as much ground as any text needs.
  QImage picture(bar.width(), inside.height(), QImage::Format_RGB32);
  picture.fill(kGround);
  QPainter(&picture).drawImage(0, 0, screen_.Picture(inside));
  return ShowsText(picture, QStringLiteral("Video Details: ") + details, kGround);
}

bool JoinerWindow::AwaitDetails(const QString& details) const {
  return WaitFor([&] { return ShowsDetails(details); }, 5s);
}

QRect JoinerWindow::Chart() const { return Place(QStringLiteral("Picture1(2)")); }

QRect JoinerWindow::Ruler() const { return Place(QStringLiteral("Picture5")); }

QRect JoinerWindow::Strip(int section, QRgb color) const {
  const QImage chart = screen_.Picture(Chart());
  return Extent(chart, QRect(0, 1 + section * kRowPitch, chart.width(), kStripHeight), color);
}

void JoinerWindow::PointAtSection(int section) {
  QRect strip = Strip(section);
  if (strip.isEmpty()) strip = Strip(section, kRemoved);
  screen_.MovePointer(OnChart(strip.center()));
}

QPoint JoinerWindow::BareChart() const { return Chart().bottomRight() - QPoint(40, 40); }

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

QRect JoinerWindow::Headers() const {
  const QRect table = Inside(Place(QStringLiteral("ListView1")));
  return {table.topLeft(), QSize(table.width(), kHeaderHeight)};
}

QRect JoinerWindow::Row(int row) const {
  const QRect headers = Headers();
  return {headers.left(), headers.bottom() + 1 + row * kTableRow, headers.width(), kTableRow};
}

QRect JoinerWindow::Line(int line) const {
  const QRect list = Inside(Place(QStringLiteral("List1")));
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

bool ConfirmJoin(Screen& screen, std::chrono::milliseconds patience) {
  const WindowId box = screen.Await(QStringLiteral("Kelvane"), patience);
  if (box == 0 || !WaitFor([&] { return screen.Active(box); })) return false;
  screen.Strike(kReturn);
  return WaitFor([&] { return !screen.Exists(box); });
}

}  // namespace kelvane::desktop
