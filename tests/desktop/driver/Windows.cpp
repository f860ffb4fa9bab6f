#include "desktop/driver/Windows.h"

#include <cstdlib>

#include "desktop/driver/Places.h"

namespace kelvane::desktop {

using namespace Qt::StringLiterals;

namespace {

constexpr int kThickness = 5;  // of a bar

// The text of a read-out, such as "0,640" or "-0,030".
QString ReadOut(int number) {
  const int size = std::abs(number);
  return u"%1%2,%3"_s.arg(number < 0 ? "-" : "")
      .arg(size / 1000)
      .arg(size % 1000, 3, 10, QChar('0'));
}

int Filled(const QImage& picture) {
  const int middle = picture.height() / 2;
  return CountOf(picture, QRect(0, middle, picture.width(), 1), kGrey);
}

QRegion AllOf(const MarkerBars& bars) {
  return QRegion(bars.left) + bars.top + bars.right + bars.base;
}

}  // namespace

MarkerBars BarsAround(QSize video) {
  return {.left = {0, 0, kThickness, video.height()},
          .top = {0, 0, video.width(), kThickness},
          .right = {video.width() - kThickness, 0, kThickness, video.height()},
          .base = {0, video.height() - kThickness, video.width(), kThickness}};
}

Region RegionOf(const MarkerBars& bars) {
  return {bars.left.left(), bars.top.top(), bars.right.left(), bars.base.top()};
}

bool MainWindow::Await() {
  window_ = screen_.Await("Kelvane");
  if (window_ == 0) return false;
  return WaitFor([this] { return ShowsItsDesignedCaption(NameOf(kLoadVideo)); });
}

// This looks at no caption, since letters may look different under Wayland.
bool MainWindow::AwaitInOutput(WindowId window) {
  window_ = window;
  return WaitFor([this] {
    return !Area().isEmpty() && desktop::AllOf(screen_.Picture(), Place("pbar"), kProgressBack);
  });
}

QRect MainWindow::Area() const { return AreaUnderMenus(screen_, window_, kDark); }

QRect MainWindow::Menus() const {
  const QRect window = screen_.Place(window_);
  return {window.topLeft(), QSize(window.width(), Area().top() - window.top())};
}

QRect MainWindow::Place(const QString& control) const {
  const QRect area = Area();
  return PlaceIn("Form1", area.size(), control).translated(area.topLeft());
}

QString MainWindow::NameOf(Command command) { return u"Label14(%1)"_s.arg(command); }

void MainWindow::Click(Command command, PointerButton button) {
  screen_.Click(Place(NameOf(command)).center(), button);
}

bool MainWindow::ChooseOnPicture(PictureEntry entry) {
  constexpr int kEntries = static_cast<int>(PictureEntry::kBeginning) + 1;
  constexpr int kSeparatorHeight = 9;  // about
  const QRect menu = screen_.OpenMenu(OnCanvas({300, 100}));
  if (menu.isEmpty()) return false;
  const int height = (menu.height() - kSeparatorHeight) / kEntries;
  const int above = static_cast<int>(entry);
  const int y = entry <= PictureEntry::kStop
                    ? menu.top() + height * above + height / 2
                    : menu.bottom() - height * (kEntries - 1 - above) - height / 2;
  screen_.Click({menu.center().x(), y});
  return true;
}

void MainWindow::PointAt(Command command) { screen_.MovePointer(Place(NameOf(command)).center()); }

void MainWindow::PointAtGround() {
  const QPoint betweenFrames = Area().topLeft() + QPoint(10, 60);
  screen_.MovePointer(betweenFrames);
  screen_.MovePointer(betweenFrames + QPoint(1, 1));
}

void MainWindow::ChooseFirstItem(int menu) {
  constexpr int kFirstMenu = 20;
  constexpr int kMenuPitch = 60;
  constexpr int kHalfAnItem = 11;
  const QRect menus = Menus();
  const QPoint title(menus.left() + kFirstMenu + menu * kMenuPitch, menus.center().y());
  const QRect item(title.x() + kFirstMenu, menus.bottom() + kHalfAnItem, 1, 1);
  const QImage before = screen_.Picture(item);
  screen_.Click(title);
  WaitFor([&] { return screen_.Picture(item) != before; });
  screen_.Click(item.topLeft());
}

bool MainWindow::Shows(const QString& control, const QString& caption, QRgb background) const {
  const QRect place = Place(control);
  const bool centred = control.startsWith("Label14(");
  return ShowsCaption(screen_.Picture(place), caption, background,
                      centred ? Justify::kCentre : Justify::kLeft);
}

bool MainWindow::ShowsItsDesignedCaption(const QString& control) const {
  return Shows(control, CaptionIn("Form1", control));
}

bool MainWindow::AwaitCaption(const QString& control, const QString& caption) const {
  return WaitFor([&] { return Shows(control, caption); });
}

bool MainWindow::AwaitTimesWithoutVideo() const {
  return AwaitCaption("Label12", "0:00:00") && AwaitCaption("Label13", "00:00");
}

bool MainWindow::Answers() {
  PointAtGround();
  PointAt(kPauseVideo);
  return WaitFor([this] { return Shows(NameOf(kPauseVideo), "Pause Video", kGrey); }, 5s);
}

bool MainWindow::FrameLiesInPlace(const QString& frame, QRgb color) const {
  const QImage picture = screen_.Picture();
  const QRect place = Place(frame);
  const QRect aboveTheLine(place.bottomLeft() + QPoint(1, -1), QSize(10, 1));
  return desktop::AllOf(picture, QRect(place.bottomLeft(), QSize(place.width(), 1)), color) &&
         desktop::AllOf(picture, QRect(place.topRight(), QSize(1, place.height())), color) &&
         desktop::AllOf(picture, aboveTheLine, kDark);
}

bool MainWindow::FramesLieInPlace() const {
  for (const char* frame : {"Shape1", "Shape2", "Shape3", "Shape4"}) {
    if (!FrameLiesInPlace(frame, kFrame)) return false;
  }
  return FrameLiesInPlace("Shape5", kGrey) && FrameLiesInPlace("Picture1(0)", kGrey);
}

bool MainWindow::IsLaidOut() const {
  for (const char* label : {"Label14(0)", "Label14(4)", "Label14(6)", "Label10", "Label11",
                            "Label1(0)", "Label1(1)", "Label1(14)"}) {
    if (!ShowsItsDesignedCaption(label)) return false;
  }
  const QImage picture = screen_.Picture();
  return FramesLieInPlace() && Shows("Label12", "0:00:00") && Shows("Label13", "00:00") &&
         desktop::AllOf(picture, Place("pbar"), kProgressBack) &&
         desktop::AllOf(picture, Place("Text1(1)"), kDark) &&
         desktop::AllOf(picture, Viewport(), kDark);
}

bool MainWindow::ShowsPath(const QString& path) const {
  return ShowsText(screen_.Picture(Place("Text1(1)")), path, kDark);
}

bool MainWindow::AwaitVideo(QSize video) const {
  return AwaitCaption("Label1(1)", ReadOut(video.width())) &&
         AwaitCaption("Label1(3)", ReadOut(video.height())) &&
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
    if (!AwaitCaption(u"Label1(%1)"_s.arg(index), ReadOut(number))) return false;
  }
  return true;
}

bool MainWindow::AwaitCanvas() const {
  return WaitFor([this] {
    const QImage viewport = screen_.Picture(Viewport());
    return CountOf(viewport, viewport.rect(), kMarker) > 0;
  });
}

// The horizontal scroll bar covers the last rows.
QRect MainWindow::Viewport() const { return Place("Picture1(1)").adjusted(0, 0, 0, -4); }

bool MainWindow::AwaitBarsAround(QSize video) const {
  return AwaitBars(BarsAround(video), QRect(QPoint(), video));
}

bool MainWindow::AwaitBars(const MarkerBars& bars, const QRect& canvas) const {
  return WaitFor(
      [&] {
        const QImage viewport = screen_.Picture(Viewport());
        const QRegion expected =
            AllOf(bars).translated(canvas.topLeft()) & canvas & QRegion(viewport.rect());
        int pixels = 0;
        for (const QRect& part : expected) {
          pixels += part.width() * part.height();
          if (!desktop::AllOf(viewport, part, kMarker)) return false;
        }
        return CountOf(viewport, viewport.rect(), kMarker) == pixels;
      },
      5s);
}

QImage MainWindow::Inside(QSize video) const {
  const QRect viewport = Viewport();
  const QRect inside =
      QRect(viewport.topLeft(), video).adjusted(kThickness, kThickness, -kThickness, -kThickness);
  return screen_.Picture(inside & viewport);
}

bool MainWindow::AwaitMoving(QSize video) const {
  for (int change = 0; change < 3; ++change) {
    const QImage before = Inside(video);
    if (!WaitFor([&] { return Inside(video) != before; }, 5s)) return false;
  }
  return true;
}

bool MainWindow::AwaitStill(QSize video) const {
  return WaitFor([&] {
    const QImage picture = Inside(video);
    return HoldsFor([&] { return Inside(video) == picture; }, 500ms);
  });
}

bool MainWindow::AwaitBlack(QSize video) const {
  return WaitFor([&] { return IsBlack(video); }, 5s);
}

bool MainWindow::IsBlack(QSize video) const {
  const QImage inside = Inside(video);
  return desktop::AllOf(inside, inside.rect(), kBlack);
}

void MainWindow::ScrollToTheFarCorner() {
  constexpr int kOnTheThumb = 20;  // from the end of the arrow
  const QRect across = Place("HScroll1");
  const QRect down = Place("VScroll1");
  screen_.Drag(across.topLeft() + QPoint(across.height() + kOnTheThumb, across.height() / 2),
               QPoint(across.width(), 0));
  screen_.Drag(down.topLeft() + QPoint(down.width() / 2, down.width() + kOnTheThumb),
               QPoint(0, down.height()));
}

QPoint MainWindow::OnCanvas(QPoint place) const { return Place("Picture1(1)").topLeft() + place; }

int MainWindow::Progress() const { return Filled(screen_.Picture(Place("pbar"))); }

bool JobWindow::Await() {
  window_ = screen_.Await("Saving Video");
  if (window_ == 0) return false;
  return WaitFor([this] {
    const QImage heading = screen_.Picture(Place("Label1(0)"));
    return ShowsCaption(heading, "Saving As", kDark, Justify::kLeft);
  });
}

QRect JobWindow::Place(const char* control) const {
  const QRect area = screen_.Place(window_);
  return PlaceIn("Form2", area.size(), control).translated(area.topLeft());
}

bool JobWindow::ShowsStatus(const QString& status) const {
  const QRect place = Place("Label1(2)");
  return ShowsCaption(screen_.Picture(place), status, kDark, Justify::kLeft);
}

bool JobWindow::AwaitStatus(const QString& status, std::chrono::milliseconds patience) const {
  return WaitFor([&] { return ShowsStatus(status); }, patience);
}

bool JobWindow::AwaitEndStatus(std::chrono::milliseconds patience) const {
  return AwaitStatus("Progress: 100 % Complete: Status: Cropping Successful", patience);
}

bool JobWindow::ShowsOutput(const QString& output) const {
  const QRect place = Place("Label1(1)");
  return ShowsCaption(screen_.Picture(place), output, kDark, Justify::kLeft);
}

int JobWindow::Progress() const { return Filled(screen_.Picture(Place("pbar"))); }

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
  screen.PressKey('a', kControl);
  screen.Type(path);
  screen.PressKey(kReturn);
  return WaitFor([&] { return !screen.Exists(dialog); });
}

}  // namespace kelvane::desktop
