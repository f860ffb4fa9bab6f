#include "desktop/driver/Windows.h"

#include <cstdlib>

#include "desktop/driver/Places.h"

namespace kelvane::desktop {
namespace {

// "0,640", "-0,030"
QString ReadOut(int number) {
  const int size = std::abs(number);
  return QStringLiteral("%1%2,%3")
      .arg(QLatin1String(number < 0 ? "-" : ""))
      .arg(size / 1000)
      .arg(size % 1000, 3, 10, QLatin1Char('0'));
}

int Filled(const QImage& picture) {
  const int middle = picture.height() / 2;
  return CountOf(picture, QRect(0, middle, picture.width(), 1), kLit);
}

}  // namespace

bool MainWindow::Await() {
  window_ = screen_.Await(QStringLiteral("Kelvane"));
  if (window_ == 0) return false;
  return WaitFor([this] { return ShowsAsDrawn(NameOf(kLoadVideo)); });
}

// Not by a caption: letters may be drawn otherwise there.
bool MainWindow::AwaitFilling(WindowId window) {
  window_ = window;
  return WaitFor([this] {
    return !Area().isEmpty() &&
           desktop::AllOf(screen_.Picture(), Place(QStringLiteral("pbar")), kProgressBack);
  });
}

QRect MainWindow::Area() const { return AreaUnderMenus(screen_, window_, kDark); }

QRect MainWindow::Menus() const {
  const QRect window = screen_.Place(window_);
  return {window.topLeft(), QSize(window.width(), Area().top() - window.top())};
}

QRect MainWindow::Place(const QString& control) const {
  const QRect area = Area();
  return PlaceIn(QStringLiteral("Form1"), area.size(), control).translated(area.topLeft());
}

QString MainWindow::NameOf(Command command) { return QStringLiteral("Label14(%1)").arg(command); }

void MainWindow::Click(Command command, PointerButton button) {
  screen_.Click(Place(NameOf(command)).center(), button);
}

void MainWindow::PointAt(Command command) { screen_.MovePointer(Place(NameOf(command)).center()); }

void MainWindow::PointAtGround() {
  constexpr QPoint kBetweenFrames(10, 60);
  screen_.MovePointer(Area().topLeft() + kBetweenFrames);
  screen_.MovePointer(Area().topLeft() + kBetweenFrames + QPoint(1, 1));
}

void MainWindow::ChooseMenuItem(int menu, int item) {
  constexpr int kFirstMenu = 20;
  constexpr int kMenuPitch = 60;
  constexpr int kItemPitch = 22;
  const QRect menus = Menus();
  const QPoint title(menus.left() + kFirstMenu + menu * kMenuPitch, menus.center().y());
  const QImage before = screen_.Picture();
  screen_.Click(title);
  const QPoint chosen(title.x() + kFirstMenu, menus.bottom() + kItemPitch / 2 + item * kItemPitch);
  WaitFor([&] {
    return screen_.Picture({chosen, QSize(1, 1)}) != before.copy({chosen, QSize(1, 1)});
  });
  screen_.Click(chosen);
}

bool MainWindow::Shows(const QString& control, const QString& caption, QRgb background) const {
  const QRect place = Place(control);
  const bool centred = control.startsWith(QLatin1String("Label14("));
  return ShowsCaption(screen_.Picture(place), caption, background,
                      centred ? Justify::kCentre : Justify::kLeft);
}

bool MainWindow::ShowsAsDrawn(const QString& control, QRgb background) const {
  return Shows(control, CaptionIn(QStringLiteral("Form1"), control), background);
}

bool MainWindow::AwaitCaption(const QString& control, const QString& caption) const {
  return WaitFor([&] { return Shows(control, caption); });
}

bool MainWindow::AwaitTimesOfNothing() const {
  return AwaitCaption(QStringLiteral("Label12"), QStringLiteral("0:00:00")) &&
         AwaitCaption(QStringLiteral("Label13"), QStringLiteral("00:00"));
}

bool MainWindow::ShowsPath(const QString& path) const {
  return ShowsText(screen_.Picture(Place(QStringLiteral("Text1(1)"))), path, kDark);
}

bool MainWindow::AwaitVideo(QSize video) const {
  return AwaitCaption(QStringLiteral("Label1(1)"), ReadOut(video.width())) &&
         AwaitCaption(QStringLiteral("Label1(3)"), ReadOut(video.height())) &&
         AwaitRegion(RegionOf(BarsAround(video)));
}

bool MainWindow::AwaitRegion(const Region& region) const {
  const QList<std::pair<int, int>> numbers = {{5, region.left},
                                              {7, region.top},
                                              {9, region.right - region.left},
                                              {11, region.base - region.top},
                                              {13, region.base},
                                              {15, region.right}};
  for (const auto& [index, number] : numbers) {
    if (!AwaitCaption(QStringLiteral("Label1(%1)").arg(index), ReadOut(number))) return false;
  }
  return true;
}

bool MainWindow::AwaitCanvas() const {
  return WaitFor([this] { return !Bars().isEmpty(); });
}

QRect MainWindow::Bars() const {
  const QImage viewport = screen_.Picture(Place(QStringLiteral("Picture1(1)")));
  return Extent(viewport, viewport.rect(), kMarker);
}

// The lower scroll bar covers its last rows.
QRect MainWindow::Viewport() const {
  constexpr int kCovered = 4;
  return Place(QStringLiteral("Picture1(1)")).adjusted(0, 0, 0, -kCovered);
}

bool MainWindow::AwaitBarsAround(QSize video) const {
  return AwaitBars(BarsAround(video), QRect(QPoint(), video));
}

bool MainWindow::AwaitBars(const MarkerBars& bars, const QRect& canvas) const {
  return WaitFor([&] { return ShowsBars(bars, canvas); }, 5s);
}

bool MainWindow::ShowsBars(const MarkerBars& bars, const QRect& canvas) const {
  const QImage viewport = screen_.Picture(Viewport());
  const QRegion expected =
      AllOf(bars).translated(canvas.topLeft()) & canvas & QRegion(viewport.rect());
  int pixels = 0;
  for (const QRect& part : expected) {
    pixels += part.width() * part.height();
    if (!desktop::AllOf(viewport, part, kMarker)) return false;
  }
  return CountOf(viewport, viewport.rect(), kMarker) == pixels;
}

QImage MainWindow::Inside(QSize video) const {
  const QRect viewport = Viewport();
  return screen_.Picture(InsideBars(video).translated(viewport.topLeft()) & viewport);
}

void MainWindow::ScrollToTheFarCorner() {
  constexpr int kOnTheThumb = 20;  // behind the arrow
  const QRect across = Place(QStringLiteral("HScroll1"));
  const QRect down = Place(QStringLiteral("VScroll1"));
  screen_.Drag(across.topLeft() + QPoint(across.height() + kOnTheThumb, across.height() / 2),
               QPoint(across.width(), 0));
  screen_.Drag(down.topLeft() + QPoint(down.width() / 2, down.width() + kOnTheThumb),
               QPoint(0, down.height()));
}

QPoint MainWindow::OnCanvas(QPoint place) const {
  return Place(QStringLiteral("Picture1(1)")).topLeft() + place;
}

int MainWindow::Progress() const { return Filled(screen_.Picture(Place(QStringLiteral("pbar")))); }

bool JobWindow::Await() {
  window_ = screen_.Await(QStringLiteral("Saving Video"));
  if (window_ == 0) return false;
  return WaitFor([this] {
    const QImage heading = screen_.Picture(Place("Label1(0)"));
    return ShowsCaption(heading, QStringLiteral("Saving As"), kDark, Justify::kLeft);
  });
}

QRect JobWindow::Place(const char* control) const {
  const QRect area = screen_.Place(window_);
  return PlaceIn(QStringLiteral("Form2"), area.size(), QLatin1String(control))
      .translated(area.topLeft());
}

bool JobWindow::ShowsStatus(const QString& status) const {
  const QRect place = Place("Label1(2)");
  return ShowsCaption(screen_.Picture(place), status, kDark, Justify::kLeft);
}

bool JobWindow::AwaitStatus(const QString& status, std::chrono::milliseconds patience) const {
  return WaitFor([&] { return ShowsStatus(status); }, patience);
}

bool JobWindow::AwaitSuccess(std::chrono::milliseconds patience) const {
  return AwaitStatus(QStringLiteral("Progress: 100 % Complete: Status: Cropping Successful"),
                     patience);
}

bool JobWindow::ShowsOutput(const QString& output) const {
  const QRect place = Place("Label1(1)");
  return ShowsCaption(screen_.Picture(place), output, kDark, Justify::kLeft);
}

int JobWindow::Progress() const { return Filled(screen_.Picture(Place("pbar"))); }

QPoint JobWindow::CancelButton() const { return Place("Label2").center(); }

void JobWindow::Cancel(PointerButton button) { screen_.Click(CancelButton(), button); }

QRect AreaUnderMenus(const Screen& screen, WindowId window, QRgb ground) {
  const QRect place = screen.Place(window);
  const QImage edge = screen.Picture(QRect(place.topLeft(), QSize(1, place.height())));
  int top = 0;
  while (top < edge.height() && edge.pixel(0, top) != ground) ++top;
  return place.adjusted(0, top, 0, 0);
}

bool ChooseFile(Screen& screen, MainWindow& window, Command command, const QString& path) {
  const QList<WindowId> known = screen.Windows();
  window.Click(command);
  const WindowId dialog = screen.AwaitNew(known);
  return dialog != 0 && TypeFileName(screen, dialog, path);
}

bool TypeFileName(Screen& screen, WindowId dialog, const QString& path) {
  if (!WaitFor([&] { return screen.Active(dialog); })) return false;
  screen.Strike('a', kControl);
  screen.Type(path);
  screen.Strike(kReturn);
  return WaitFor([&] { return !screen.Exists(dialog); });
}

}  // namespace kelvane::desktop
