#include "desktop/driver/SectionWindow.h"

#include <stdexcept>
#include <string>

#include "desktop/driver/Places.h"

namespace kelvane::desktop {

bool SectionWindow::Await() {
  window_ = screen_.Await(QStringLiteral("Advanced 2-Pass Video Stabilization"));
  if (window_ == 0) return false;
  return WaitFor([this] {
    const QImage button = screen_.Picture(Place(QStringLiteral("Label6(0)")).adjusted(1, 0, -1, 0));
    return ShowsCaption(button, QStringLiteral("Select Video To Extract Section From"), kDark,
                        Justify::kCentre) &&
           ShowsOption(kSliders - 1, QStringLiteral("06"));
  });
}

bool SectionWindow::AwaitFilling(WindowId window) {
  window_ = window;
  return WaitFor(
      [this] { return !OnTimeLine(kEndNeedle).isEmpty() && !ThumbOutline(0).isEmpty(); });
}

QRect SectionWindow::OnScreen(const QRect& place) const {
  return place.translated(screen_.Place(window_).topLeft());
}

QRect SectionWindow::Place(const QString& control) const {
  const QRect window = screen_.Place(window_);
  return PlaceIn(QStringLiteral("Form3"), window.size(), control).translated(window.topLeft());
}

QRect SectionWindow::TimeLine() const { return Place(QStringLiteral("Picture3(1)")); }

QRect SectionWindow::OnTimeLine(QRgb color) const {
  const QImage picture = TimeLinePicture();
  return Extent(picture, picture.rect(), color);
}

QPoint SectionWindow::ArrowCentre(TimeLineArrow arrow) const {
  return Place(QStringLiteral("Label7(%1)").arg(static_cast<int>(arrow))).center();
}

void SectionWindow::ClickArrow(TimeLineArrow arrow, PointerButton button) {
  screen_.Click(ArrowCentre(arrow), button);
}

void SectionWindow::DragNeedle(QRgb needle, int way) {
  screen_.Drag(TimeLine().topLeft() + OnTimeLine(needle).center(), QPoint(way, 0));
}

bool SectionWindow::ShowsTime(TimeReadOut readOut, const QString& time) const {
  // The line below the read-outs goes through their last row.
  const QRect place =
      Place(QStringLiteral("Label8(%1)").arg(static_cast<int>(readOut))).adjusted(0, 0, 0, -2);
  return ShowsCaption(screen_.Picture(place), time, kDark, Justify::kLeft);
}

bool SectionWindow::AwaitTime(TimeReadOut readOut, const QString& time) const {
  return WaitFor([&] { return ShowsTime(readOut, time); }, 5s);
}

QPoint SectionWindow::OpenMenuAt(QPoint onTimeLine, int entry) {
  constexpr int kEntries = 2;
  const QRect menu = screen_.OpenMenu(TimeLine().topLeft() + onTimeLine);
  if (menu.isEmpty()) return {};
  return {menu.center().x(), menu.top() + menu.height() * (2 * entry + 1) / (2 * kEntries)};
}

void SectionWindow::ChooseAt(QPoint onTimeLine, int entry) {
  screen_.Click(OpenMenuAt(onTimeLine, entry));
}

QRect SectionWindow::Track(int slider) const {
  return Place(QStringLiteral("Picture2(%1)").arg(slider));
}

QRect SectionWindow::ThumbOutline(int slider) const {
  constexpr QRgb kOutline = 0xffe0e0e0;
  const QImage track = screen_.Picture(Track(slider));
  return Extent(track, track.rect(), kOutline);
}

QPoint SectionWindow::ThumbCentre(int slider) const {
  const QRect outline = ThumbOutline(slider);
  if (outline.isEmpty()) {
    throw std::runtime_error("the outline of thumb " + std::to_string(slider) + " is out of sight");
  }
  return Track(slider).topLeft() + outline.center();
}

void SectionWindow::DragThumb(int slider, int way) {
  screen_.Drag(ThumbCentre(slider), QPoint(way, 0));
}

bool SectionWindow::ShowsOption(int slider, const QString& value) const {
  const QRect place = Place(QStringLiteral("Label2(%1)").arg(2 * slider + 1));
  return ShowsCaption(screen_.Picture(place.adjusted(1, 1, -1, -1)), value, kDark,
                      Justify::kCentre);
}

bool SectionWindow::AwaitOption(int slider, const QString& value) const {
  return WaitFor([&] { return ShowsOption(slider, value); }, 5s);
}

QPoint SectionWindow::FileButton() const { return Place(QStringLiteral("Label6(0)")).center(); }

bool SectionWindow::ShowsFile(const QString& path) const {
  const QRect place = Place(QStringLiteral("Text1")).adjusted(2, 2, -2, -2);
  return ShowsText(screen_.Picture(place), path, kDark);
}

// Under everything.
QPoint SectionWindow::BareGround() const { return OnScreen({480, 760, 2, 2}).center(); }

}  // namespace kelvane::desktop
