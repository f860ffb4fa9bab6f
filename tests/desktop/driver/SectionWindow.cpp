#include "desktop/driver/SectionWindow.h"

#include <stdexcept>
#include <string>

namespace kelvane::desktop {

bool SectionWindow::Await() {
  window_ = screen_.Await(QStringLiteral("Advanced 2-Pass Video Stabilization"));
  if (window_ == 0) return false;
  return WaitFor([this] {
    const QImage button = screen_.Picture(OnScreen({41, 20, 231, 17}));
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

// Inside the frame's border.
QRect SectionWindow::TimeLine() const { return OnScreen({42, 58, 877, 41}); }

QRect SectionWindow::OnTimeLine(QRgb color) const {
  const QImage picture = TimeLinePicture();
  return Extent(picture, picture.rect(), color);
}

QPoint SectionWindow::ArrowCentre(TimeLineArrow arrow) const {
  return OnScreen({arrow == TimeLineArrow::kTowardsStart ? 50 : 898, 106, 17, 17}).center();
}

void SectionWindow::ClickArrow(TimeLineArrow arrow, PointerButton button) {
  screen_.Click(ArrowCentre(arrow), button);
}

void SectionWindow::DragNeedle(QRgb needle, int way) {
  screen_.Drag(TimeLine().topLeft() + OnTimeLine(needle).center(), QPoint(way, 0));
}

bool SectionWindow::ShowsTime(TimeReadOut readOut, const QString& time) const {
  const int left = readOut == TimeReadOut::kStart ? 432 : readOut == TimeReadOut::kEnd ? 600 : 872;
  return ShowsCaption(screen_.Picture(OnScreen({left, 136, 49, 15})), time, kDark, Justify::kLeft);
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

QRect SectionWindow::Track(int slider) const { return OnScreen({208, 240 + 32 * slider, 537, 25}); }

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
  const QRect inside(873, 243 + 32 * slider, 31, 18);
  return ShowsCaption(screen_.Picture(OnScreen(inside)), value, kDark, Justify::kCentre);
}

bool SectionWindow::AwaitOption(int slider, const QString& value) const {
  return WaitFor([&] { return ShowsOption(slider, value); }, 5s);
}

QPoint SectionWindow::FileButton() const { return OnScreen({40, 20, 233, 17}).center(); }

bool SectionWindow::ShowsFile(const QString& path) const {
  return ShowsText(screen_.Picture(OnScreen({282, 18, 637, 21})), path, kDark);
}

// Under everything.
QPoint SectionWindow::BareGround() const { return OnScreen({480, 760, 2, 2}).center(); }

}  // namespace kelvane::desktop
