#include "FrameWatch.h"

#include <QBackingStore>
#include <QEvent>
#include <QImage>
#include <chrono>
#include <ctime>

#include "platform/Form.h"
#include "platform/PictureBox.h"
#include "platform/WindowsMediaPlayer.h"
#include "support/Videos.h"

namespace kelvane::bench {
namespace {

// The number stands in squares, the lowest digit first, clear of the bars.
constexpr int kDigits = 10;
constexpr int kSquare = 16;
constexpr QPoint kFirstSquare(64, 64);

}  // namespace

bool MakeNumberedClip(const QString& path, QSize size, int rate, int seconds) {
  QString filter = QStringLiteral("drawbox=x=%1:y=%2:w=%3:h=%4:color=black:t=fill")
                       .arg(kFirstSquare.x())
                       .arg(kFirstSquare.y())
                       .arg(kDigits * kSquare)
                       .arg(kSquare);
  for (int digit = 0; digit < kDigits; ++digit) {
    filter += QStringLiteral(
                  ",drawbox=x=%1:y=%2:w=%3:h=%3:color=white:t=fill:enable=gt(bitand(n\\,%4)\\,0)")
                  .arg(kFirstSquare.x() + digit * kSquare)
                  .arg(kFirstSquare.y())
                  .arg(kSquare)
                  .arg(1 << digit);
  }
  const QString picture = QStringLiteral("testsrc2=size=%1x%2:rate=%3:duration=%4,")
                              .arg(size.width())
                              .arg(size.height())
                              .arg(rate)
                              .arg(seconds);
  return RunTool(QStringLiteral("ffmpeg"), {"-v", "error", "-f", "lavfi", "-i", picture + filter,
                                            "-pix_fmt", "yuv420p", "-preset", "ultrafast", path});
}

void FrameWatch::Watch(const Form* form, const WindowsMediaPlayer* player, const PictureBox* bar) {
  form_ = form;
  player_ = player;
  bar_ = bar;
  Begin();
  frames_.clear();
}

void FrameWatch::Begin() {
  busy_ = {};
  unpaintedMove_ = 0;
}

std::optional<double> FrameWatch::BarPaintedAt() const {
  if (bar_->Left() != barLeft_) return std::nullopt;
  return barPaintedAt_;
}

double FrameWatch::Now() {
  return std::chrono::duration<double, std::milli>(
             std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

double FrameWatch::OnProcessor() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  constexpr double kMilli = 1e3;
  constexpr double kNano = 1e-6;
  return static_cast<double>(time.tv_sec) * kMilli + static_cast<double>(time.tv_nsec) * kNano;
}

bool FrameWatch::notify(QObject* receiver, QEvent* event) {
  const QEvent::Type type = event->type();
  const double begin = Now();
  const double beginOnProcessor = OnProcessor();
  ++depth_;
  const bool handled = QApplication::notify(receiver, event);
  --depth_;
  if (bar_ == nullptr) return handled;
  if (type == QEvent::MouseMove && receiver == bar_) movesBar_ = true;
  if (type == QEvent::UpdateRequest) repaints_ = true;
  if (type == QEvent::MetaCall && receiver->parent() == player_) servesPlayer_ = true;
  if (type == QEvent::Paint && receiver == player_ && TakeNumber()) servesPlayer_ = true;
  if (depth_ == 0) EndHandling(Now() - begin, OnProcessor() - beginOnProcessor);
  return handled;
}

// Whether a new picture is seen where the window is put together, as it goes to the screen.
bool FrameWatch::TakeNumber() {
  QBackingStore* store = form_->backingStore();
  const auto* window = store == nullptr ? nullptr : dynamic_cast<QImage*>(store->paintDevice());
  if (window == nullptr) return false;
  const QPoint corner = player_->mapTo(form_, QPoint());
  const QPoint first = corner + kFirstSquare + QPoint(kSquare / 2, kSquare / 2);
  int number = 0;
  for (int digit = 0; digit < kDigits; ++digit) {
    constexpr int kHalf = 128;
    const QPoint square = first + QPoint(digit * kSquare, 0);
    if (!window->rect().contains(square)) return false;
    if (qGray(window->pixel(square)) > kHalf) number |= 1 << digit;
  }
  return frames_.insert(number).second;
}

void FrameWatch::EndHandling(double took, double onProcessor) {
  busy_.handlings << took;
  if (servesPlayer_) {
    busy_.frames << took;
    busy_.framesOnProcessor << onProcessor;
  } else {
    busy_.others << took;
  }
  if (movesBar_) unpaintedMove_ += took;
  if (repaints_ && unpaintedMove_ > 0) {
    busy_.moves << unpaintedMove_ + (movesBar_ ? 0 : took);
    unpaintedMove_ = 0;
    if (bar_->Left() != barLeft_) barPaintedAt_ = Now();
    barLeft_ = bar_->Left();
  }
  servesPlayer_ = false;
  movesBar_ = false;
  repaints_ = false;
}

}  // namespace kelvane::bench
