#pragma once

#include <QSocketNotifier>
#include <QWidget>
#include <memory>

#include "media/Descriptor.h"

namespace kelvane {

// Closes a window when SIGTERM, SIGINT or SIGHUP asks the program to end, so that the window is
// unloaded first. A signal that the program ignores stays ignored. Only one CloseOnSignal may
// exist at a time. Belongs to the user-interface thread. Has no effect if no descriptor is left for
// it.
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
