#include "platform/LongJob.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include <QGuiApplication>
#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <exception>
#include <memory>
#include <utility>

#include "shared/Product.h"

namespace kelvane {
namespace {

using std::chrono::microseconds;

constexpr microseconds kPatience = std::chrono::seconds(3);  // for the portal's answer
constexpr int kWholePercent = 100;

struct CloseBus {
  void operator()(sd_bus* bus) const { sd_bus_close_unref(bus); }
};
using Bus = std::unique_ptr<sd_bus, CloseBus>;

// Begins to connect to a bus, and returns before the bus answers. Returns null if there is no bus.
Bus Open(int (*open)(sd_bus**)) {
  sd_bus* bus = nullptr;
  return open(&bus) < 0 ? nullptr : Bus(bus);
}

// Sends and receives what it can without waiting. Makes `bus` null if the connection is lost.
void Process(Bus& bus) {
  int result = 1;
  while (bus && result > 0) result = sd_bus_process(bus.get(), nullptr);
  if (result < 0) bus.reset();
}

// Returns the time by the clock of sd_bus_get_timeout.
microseconds Now() {
  return std::chrono::duration_cast<microseconds>(
      std::chrono::steady_clock::now().time_since_epoch());
}

}  // namespace

// What the thread does: it asks the portal or logind, and shows the progress, over D-Bus.
class LongJob::Session {
 public:
  Session(const LongJob& job, const char* purpose) : job_(job), purpose_(purpose) {}
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
  ~Session() {
    if (inhibitor_ >= 0) ::close(inhibitor_);
  }

  void Run() {
    sessionBus_ = Open(sd_bus_open_user);
    AskPortal();
    while (!job_.ends_) {
      ShowProgress(job_.percent_);
      Process(sessionBus_);
      if (!doneAsking_ && (!sessionBus_ || Now() >= deadline_)) AskLogind();
      Process(systemBus_);
      Wait();
    }
    ShowProgress(-1);
    Process(sessionBus_);
  }

 private:
  void AskPortal() {
    constexpr std::uint32_t kSuspend = 4;
    deadline_ = Now() + kPatience;
    if (!sessionBus_) return;
    // The portal answers the call before it asks its backend, which may refuse. The signal
    // Response says whether the backend has granted.
    sd_bus_match_signal_async(
        sessionBus_.get(), nullptr, "org.freedesktop.portal.Desktop", nullptr,
        "org.freedesktop.portal.Request", "Response",
        [](sd_bus_message* response, void* self, sd_bus_error* /*error*/) {
          std::uint32_t refusal = 0;
          if (sd_bus_message_read(response, "u", &refusal) <= 0) return 0;
          static_cast<Session*>(self)->TakePortalsAnswer(refusal == 0);
          return 0;
        },
        nullptr, this);
    sd_bus_call_method_async(
        sessionBus_.get(), nullptr, "org.freedesktop.portal.Desktop",
        "/org/freedesktop/portal/desktop", "org.freedesktop.portal.Inhibit", "Inhibit",
        [](sd_bus_message* answer, void* self, sd_bus_error* /*error*/) {
          if (sd_bus_message_is_method_error(answer, nullptr) != 0) {
            static_cast<Session*>(self)->TakePortalsAnswer(false);
          }
          return 0;
        },
        this, "sua{sv}", "", kSuspend, 1, "reason", "s", purpose_);
  }

  void TakePortalsAnswer(bool granted) {
    if (granted) doneAsking_ = true;
    deadline_ = Now();
  }

  // Is called at most once.
  void AskLogind() {
    doneAsking_ = true;
    systemBus_ = Open(sd_bus_open_system);
    if (!systemBus_) return;
    sd_bus_call_method_async(
        systemBus_.get(), nullptr, "org.freedesktop.login1", "/org/freedesktop/login1",
        "org.freedesktop.login1.Manager", "Inhibit",
        [](sd_bus_message* answer, void* self, sd_bus_error* /*error*/) {
          int inhibitor = -1;
          if (sd_bus_message_read(answer, "h", &inhibitor) > 0) {
            static_cast<Session*>(self)->inhibitor_ = ::fcntl(inhibitor, F_DUPFD_CLOEXEC, 0);
          }
          return 0;
        },
        this, "ssss", "sleep", kProductName.data(), purpose_, "block");
  }

  // Hides the progress if `percent` is negative.
  void ShowProgress(int percent) {
    if (percent == shown_) return;
    shown_ = percent;
    if (!sessionBus_) return;
    sd_bus_emit_signal(sessionBus_.get(), "/com/canonical/unity/launcherentry/kelvane",
                       "com.canonical.Unity.LauncherEntry", "Update", "sa{sv}", job_.entry_.c_str(),
                       2, "progress", "d", std::max(percent, 0) / double{kWholePercent},
                       "progress-visible", "b", int{percent >= 0});
  }

  // Waits until a bus has something to process, the job wakes the thread, or time is up.
  void Wait() {
    microseconds next = doneAsking_ ? microseconds::max() : deadline_;
    std::array<pollfd, 3> awaited{{{job_.wake_, POLLIN, 0}, {-1, 0, 0}, {-1, 0, 0}}};
    for (const auto& [bus, entry] :
         {std::pair(sessionBus_.get(), &awaited[1]), std::pair(systemBus_.get(), &awaited[2])}) {
      if (bus == nullptr) continue;
      *entry = {sd_bus_get_fd(bus), static_cast<short>(sd_bus_get_events(bus)), 0};
      std::uint64_t timeout = 0;  // UINT64_MAX for none
      if (sd_bus_get_timeout(bus, &timeout) >= 0 && timeout < std::uint64_t(next.count())) {
        next = microseconds(timeout);
      }
    }
    int milliseconds = -1;
    if (next != microseconds::max()) {
      const auto rest = std::chrono::ceil<std::chrono::milliseconds>(next - Now());
      milliseconds = static_cast<int>(std::max<std::int64_t>(rest.count(), 0));
    }
    ::poll(awaited.data(), awaited.size(), milliseconds);
    std::uint64_t ignored = 0;
    (void)!::read(job_.wake_, &ignored, sizeof ignored);
  }

  const LongJob& job_;
  const char* purpose_;
  Bus sessionBus_;
  Bus systemBus_;
  microseconds deadline_{};  // when logind is asked, unless the portal has granted the request
  bool doneAsking_ = false;  // whether the portal has granted, or logind has been asked
  int inhibitor_ = -1;       // a descriptor from logind: no suspension while it is open
  int shown_ = -1;           // percent
};

LongJob::LongJob(const char* purpose) : wake_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (wake_ < 0) return;
  try {
    entry_ = "application://" + QGuiApplication::desktopFileName().toStdString() + ".desktop";
    thread_ = std::thread([this, purpose] { Session(*this, purpose).Run(); });
  } catch (const std::exception&) {
  }
}

LongJob::~LongJob() {
  ends_ = true;
  Wake();
  if (thread_.joinable()) thread_.join();
  if (wake_ >= 0) ::close(wake_);
}

void LongJob::SetProgress(double part) {
  const int percent =
      std::isfinite(part) ? static_cast<int>(std::clamp(part, 0.0, 1.0) * kWholePercent) : 0;
  if (percent_.exchange(percent) != percent) Wake();
}

void LongJob::Wake() const {
  const std::uint64_t one = 1;
  (void)!::write(wake_, &one, sizeof one);
}

}  // namespace kelvane
