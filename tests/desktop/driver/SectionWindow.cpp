#include "desktop/driver/SectionWindow.h"

#include "desktop/driver/Places.h"

namespace kelvane::desktop {

using namespace Qt::StringLiterals;

bool SectionWindow::Await() {
  window_ = screen_.Await("Advanced 2-Pass Video Stabilization");
  if (window_ == 0) return false;
  return WaitFor([this] {
    const QImage button = screen_.Picture(Place("Label6(0)").adjusted(1, 0, -1, 0));
    return ShowsCaption(button, "Select Video To Extract Section From", kDark, Justify::kCentre);
  });
}

bool SectionWindow::AwaitInOutput(WindowId window) {
  window_ = window;
  return WaitFor(
      [this] { return !OnTimeLine(kEndNeedle).isEmpty() && !ThumbOutline(0).isEmpty(); });
}

QRect SectionWindow::Place(const QString& control) const {
  const QRect window = screen_.Place(window_);
  return PlaceIn("Form3", window.size(), control).translated(window.topLeft());
}

// Below the time line's frame, but near enough to the window's corner to lie on a small screen too.
QPoint SectionWindow::BareGround() const {
  return screen_.Place(window_).topLeft() + QPoint(10, 300);
}

QRect SectionWindow::OnTimeLine(QRgb color) const {
  const QImage picture = screen_.Picture(TimeLine());
  return Extent(picture, picture.rect(), color);
}

QPoint SectionWindow::ArrowCentre(TimeLineArrow arrow) const {
  return Place(u"Label7(%1)"_s.arg(static_cast<int>(arrow))).center();
}

void SectionWindow::DragNeedle(QRgb needle, int way) {
  screen_.Drag(TimeLine().topLeft() + OnTimeLine(needle).center(), QPoint(way, 0));
}

bool SectionWindow::AwaitTime(TimeReadOut readOut, const QString& time) const {
  // A line covers the last row of the read-outs. That row and the one above it are left out.
  const QRect place = Place(u"Label8(%1)"_s.arg(static_cast<int>(readOut))).adjusted(0, 0, 0, -2);
  return WaitFor([&] { return ShowsCaption(screen_.Picture(place), time, kDark, Justify::kLeft); },
                 5s);
}

QPoint SectionWindow::OpenMenuAt(QPoint onTimeLine, int entry) {
  constexpr int kEntries = 2;
  const QRect menu = screen_.OpenMenu(TimeLine().topLeft() + onTimeLine);
  if (menu.isEmpty()) return {};
  return {menu.center().x(), menu.top() + menu.height() * (2 * entry + 1) / (2 * kEntries)};
}

QRect SectionWindow::Track(int slider) const { return Place(u"Picture2(%1)"_s.arg(slider)); }

QRect SectionWindow::ThumbOutline(int slider) const {
  constexpr QRgb kOutline = 0xffe0e0e0;
  const QImage track = screen_.Picture(Track(slider));
  return Extent(track, track.rect(), kOutline);
}

QPoint SectionWindow::ThumbCentre(int slider) const {
  return Track(slider).topLeft() + ThumbOutline(slider).center();
}

void SectionWindow::DragThumb(int slider, int way) {
  screen_.Drag(ThumbCentre(slider), QPoint(way, 0));
}

bool SectionWindow::AwaitOption(int slider, const QString& value) const {
  const QRect place = Place(u"Label2(%1)"_s.arg(2 * slider + 1)).adjusted(1, 1, -1, -1);
  return WaitFor(
      [&] { return ShowsCaption(screen_.Picture(place), value, kDark, Justify::kCentre); }, 5s);
}

bool SectionWindow::ShowsFile(const QString& path) const {
  return ShowsText(screen_.Picture(Place("Text1").adjusted(2, 2, -2, -2)), path, kDark);
}

}  // namespace kelvane::desktop
