#pragma once

#include <QApplication>
#include <QList>
#include <QString>
#include <QTimer>
#include <optional>
#include <set>

namespace kelvane {
class Form;
class PictureBox;
class WindowsMediaPlayer;
}  // namespace kelvane

namespace kelvane::bench {

// Makes a clip without sound whose pictures carry their number in black and white squares. False if
// it can't be made.
bool MakeNumberedClip(const QString& path, QSize size, int rate, int seconds);

// What the user-interface thread is busy with, in milliseconds of the clock.
struct Busy {
  // Every run of handlers without a look at what else has come.
  QList<double> handlings;
  // Those of them that painted a new picture of the video or served the player otherwise, and what
  // they took of the processor: less than by the clock where somebody else's work came in between.
  QList<double> frames;
  QList<double> framesOnProcessor;
  // All the others.
  QList<double> others;
  // A move of a bar: its handler, and the repaint that it brought about.
  QList<double> moves;
};

// The application object, looking at its own work from outside: which picture of a numbered clip
// comes to the screen, how long each handling takes, and when a bar is where.
class FrameWatch : public QApplication {
 public:
  FrameWatch(int& argumentCount, char** arguments) : QApplication(argumentCount, arguments) {}

  // The player and the bar belong to the form, which outlives the watch or is forgotten by another
  // call.
  void Watch(const Form* form, const WindowsMediaPlayer* player, const PictureBox* bar);
  // Forgets what this thread was busy with.
  void Begin();

  const Busy& Seen() const { return busy_; }
  // The numbers of the pictures that were painted since the player has been watched.
  const std::set<int>& Frames() const { return frames_; }
  // When the repaint ended that shows the bar where it is now, in milliseconds of the clock; none
  // where there was none yet.
  std::optional<double> BarPaintedAt() const;

  // Serves events until `enough` says so, asleep where there are none: a thread that spins would be
  // made to wait by the system in the middle of its work.
  template <typename Condition>
  void ServeUntil(Condition enough) {
    QTimer look;
    look.start(kLongestWait);
    while (!enough()) processEvents(QEventLoop::WaitForMoreEvents);
  }

  // Milliseconds of the clock that the watch reads.
  static double Now();
  // Milliseconds of processor time that this thread has had.
  static double OnProcessor();

  bool notify(QObject* receiver, QEvent* event) override;

 private:
  static constexpr int kLongestWait = 10;  // ms

  bool TakeNumber();
  void EndHandling(double took, double onProcessor);

  const Form* form_ = nullptr;
  const WindowsMediaPlayer* player_ = nullptr;
  const PictureBox* bar_ = nullptr;
  Busy busy_;
  std::set<int> frames_;
  float barLeft_ = 0;
  double barPaintedAt_ = 0;
  // Of the handling that runs.
  int depth_ = 0;
  bool movesBar_ = false;
  bool servesPlayer_ = false;
  bool repaints_ = false;
  // A bar's handlers whose repaint hasn't come yet.
  double unpaintedMove_ = 0;
};

}  // namespace kelvane::bench
