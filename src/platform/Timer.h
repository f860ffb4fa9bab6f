#pragma once

#include <QBasicTimer>
#include <QObject>
#include <functional>

namespace kelvane {

class HandlerOwner;

// Ticks on the user-interface thread while it is enabled and its form is loaded. The form owns it.
// A tick may come while the handler of an earlier one runs, if that handler calls DoEvents or opens
// a dialog. Ticks that are due while no events are processed come late, as one.
class Timer : public QObject {
  Q_OBJECT
 public:
  // `interval` is in milliseconds, above 0. The timer isn't enabled at first.
  Timer(HandlerOwner& form, const char* name, int interval);

  int Interval() const { return interval_; }
  bool Enabled() const { return timer_.isActive(); }
  void setEnabled(bool enabled);

  std::function<void()> Tick;

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  HandlerOwner& form_;
  QBasicTimer timer_;
  int interval_;
};

}  // namespace kelvane
