#pragma once

#include <QSocketNotifier>
#include <QWidget>
#include <memory>

#include "media/Descriptor.h"

namespace kelvane {

// Closes a window when the program is asked to end, by SIGTERM, SIGINT or SIGHUP unless it ignores
// that, so that the window is unloaded first. Only one may exist at a time. Belongs to the
// user-interface thread. Has no effect if there is no descriptor for it.
class CloseOnSignal {
 public:
  // `window` must outlive this object.
  explicit CloseOnSignal(QWidget& window);
  CloseOnSignal(const CloseOnSignal&) = delete;
  CloseOnSignal& operator=(const CloseOnSignal&) = delete;
  // Restores the default actions.
  ~CloseOnSignal();

 private:
  Descriptor event_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace kelvane
