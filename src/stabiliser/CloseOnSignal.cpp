#include "stabiliser/CloseOnSignal.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <QApplication>
#include <atomic>
#include <csignal>
#include <cstdint>

namespace kelvane {
namespace {

std::atomic<int> eventOfSignals = -1;

void NoteSignal(int /*signal*/) {
  const std::uint64_t one = 1;
  (void)!::write(eventOfSignals, &one, sizeof one);
}

// Sets the handler. Signals that were ignored when the program was started, as nohup does with
// SIGHUP, stay ignored.
void HandleSignals(void (*handler)(int)) {
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    if (std::signal(signal, handler) == SIG_IGN) (void)std::signal(signal, SIG_IGN);
  }
}

}  // namespace

CloseOnSignal::CloseOnSignal(QWidget& window) : event_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (!event_) return;
  notifier_ = std::make_unique<QSocketNotifier>(event_.number(), QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, &window, [this, &window] {
    notifier_->setEnabled(false);
    // A dialog that stays open would keep the program alive.
    QWidget* dialog = QApplication::activeModalWidget();
    while (dialog != nullptr && dialog->close()) dialog = QApplication::activeModalWidget();
    window.close();
  });
  eventOfSignals = event_.number();
  HandleSignals(NoteSignal);
}

CloseOnSignal::~CloseOnSignal() {
  if (event_) HandleSignals(SIG_DFL);
}

}  // namespace kelvane
