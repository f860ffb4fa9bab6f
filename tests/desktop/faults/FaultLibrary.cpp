// Loaded into the program before the system's own libraries: passes its calls on to them, and lets
// those fail that the test's plan names. In the program's tools it does nothing.
#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <spawn.h>
#include <sys/eventfd.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <initializer_list>

#include "desktop/faults/FaultPlan.h"

namespace {

using kelvane::desktop::Attempt;
using kelvane::desktop::FaultPlan;

FaultPlan* OpenPlan() {
  const char* const path = std::getenv(kelvane::desktop::kPlanVariable);
  if (path == nullptr ||
      std::strncmp(program_invocation_short_name, "kelvane", std::strlen("kelvane")) != 0) {
    return nullptr;
  }
  const int file = ::open(path, O_RDWR | O_CLOEXEC);
  void* const memory =
      ::mmap(nullptr, sizeof(FaultPlan), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
  ::close(file);
  if (memory == MAP_FAILED) std::abort();
  return static_cast<FaultPlan*>(memory);
}

FaultPlan* plan = nullptr;

// The ways to read the calendar clock, as all that is in the program finds them.
struct ClockReaders {
  decltype(&::clock_gettime) clockGettime;
  decltype(&::gettimeofday) gettimeofday;
  decltype(&::time) time;
};
ClockReaders readers;

template <class Function>
void Find(Function*& function, const char* name) {
  function = reinterpret_cast<Function*>(::dlsym(RTLD_DEFAULT, name));
}

__attribute__((constructor)) void Begin() {
  Find(readers.clockGettime, "clock_gettime");
  Find(readers.gettimeofday, "gettimeofday");
  Find(readers.time, "time");
  plan = OpenPlan();
}

// While this library itself reads the clock.
thread_local bool looking = false;

// The error with which this call shall fail; 0 for none.
int ErrorOf(Attempt attempt) {
  if (plan == nullptr) return 0;
  FaultPlan::Entry& entry = plan->entries[static_cast<int>(attempt)];
  const int failing = entry.failing;
  if (failing == kelvane::desktop::kNoCall) return 0;
  if (failing > 0 && --entry.failing > 0) return 0;
  ++entry.failed;
  return entry.error;
}

template <class Function>
Function* System(Function* /*replaced*/, const char* name) {
  return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

long ClockAhead() { return plan == nullptr ? 0 : plan->clockAhead.load(); }

// The calendar clock as the system has it.
timespec SystemClock() {
  timespec now{};
  ::syscall(SYS_clock_gettime, CLOCK_REALTIME, &now);
  return now;
}

// Notes how far ahead the calendar clock is shown, where all that read it agree.
void LookAtClock() {
  if (plan == nullptr || looking || plan->clockShown == plan->clockAhead) return;
  looking = true;
  const time_t system = SystemClock().tv_sec;
  timespec precise{};
  timespec coarse{};
  timeval day{};
  readers.clockGettime(CLOCK_REALTIME, &precise);
  readers.clockGettime(CLOCK_REALTIME_COARSE, &coarse);
  readers.gettimeofday(&day, nullptr);
  const long ahead = plan->clockAhead;
  bool shown = true;
  for (const time_t second : {precise.tv_sec, coarse.tv_sec, day.tv_sec, readers.time(nullptr)}) {
    shown = shown && std::labs(second - system - ahead) <= 1;
  }
  if (shown) plan->clockShown = ahead;
  looking = false;
}

// A clock that shows less counts from the machine's start.
constexpr time_t kFirstCalendarSecond = 1'000'000'000;

// Whether a file is to be made in a private folder.
bool FillsFolder(const char* path, int flags) {
  constexpr const char* kFolders = "/tmp/kelvane-";
  return (flags & O_CREAT) != 0 && std::strncmp(path, kFolders, std::strlen(kFolders)) == 0;
}

}  // namespace

// Those that return their error, and those that leave it in errno and return -1.
#define RETURN_ERROR_OF(attempt) \
  if (const int error = ErrorOf(Attempt::attempt)) return error
#define FAIL_WITH_ERROR_OF(attempt, result)          \
  if (const int error = ErrorOf(Attempt::attempt)) { \
    errno = error;                                   \
    return result;                                   \
  }
#define PASS_ON(name, ...)                            \
  static auto* const system = System(&::name, #name); \
  return system(__VA_ARGS__)

extern "C" {

int pipe2(int ends[2], int flags) noexcept {
  FAIL_WITH_ERROR_OF(kStartTool, -1);
  PASS_ON(pipe2, ends, flags);
}

int eventfd(unsigned count, int flags) noexcept {
  // The event loops of other threads have theirs with more flags.
  if (flags == EFD_CLOEXEC) FAIL_WITH_ERROR_OF(kStartTool, -1);
  PASS_ON(eventfd, count, flags);
}

int posix_spawn_file_actions_init(posix_spawn_file_actions_t* files) noexcept {
  RETURN_ERROR_OF(kStartTool);
  PASS_ON(posix_spawn_file_actions_init, files);
}

int posix_spawn_file_actions_adddup2(posix_spawn_file_actions_t* files, int from, int to) noexcept {
  RETURN_ERROR_OF(kStartTool);
  PASS_ON(posix_spawn_file_actions_adddup2, files, from, to);
}

int posix_spawn_file_actions_addopen(posix_spawn_file_actions_t* files, int number,
                                     const char* path, int flags, mode_t mode) noexcept {
  RETURN_ERROR_OF(kStartTool);
  PASS_ON(posix_spawn_file_actions_addopen, files, number, path, flags, mode);
}

int posix_spawn_file_actions_addclosefrom_np(posix_spawn_file_actions_t* files, int from) noexcept {
  RETURN_ERROR_OF(kStartTool);
  PASS_ON(posix_spawn_file_actions_addclosefrom_np, files, from);
}

int posix_spawnattr_init(posix_spawnattr_t* attributes) noexcept {
  RETURN_ERROR_OF(kStartTool);
  PASS_ON(posix_spawnattr_init, attributes);
}

int posix_spawnattr_setsigmask(posix_spawnattr_t* attributes, const sigset_t* mask) noexcept {
  RETURN_ERROR_OF(kStartTool);
  PASS_ON(posix_spawnattr_setsigmask, attributes, mask);
}

int posix_spawnattr_setsigdefault(posix_spawnattr_t* attributes, const sigset_t* mask) noexcept {
  RETURN_ERROR_OF(kStartTool);
  PASS_ON(posix_spawnattr_setsigdefault, attributes, mask);
}

int posix_spawnattr_setflags(posix_spawnattr_t* attributes, short flags) noexcept {
  RETURN_ERROR_OF(kStartTool);
  PASS_ON(posix_spawnattr_setflags, attributes, flags);
}

int posix_spawn(pid_t* child, const char* path, const posix_spawn_file_actions_t* files,
                const posix_spawnattr_t* attributes, char* const arguments[],
                char* const environment[]) {
  RETURN_ERROR_OF(kStartTool);
  PASS_ON(posix_spawn, child, path, files, attributes, arguments, environment);
}

char* mkdtemp(char* path) noexcept {
  FAIL_WITH_ERROR_OF(kUseTemporary, nullptr);
  PASS_ON(mkdtemp, path);
}

int symlinkat(const char* target, int folder, const char* path) noexcept {
  FAIL_WITH_ERROR_OF(kFillFolder, -1);
  PASS_ON(symlinkat, target, folder, path);
}

int open(const char* path, int flags, ...) {
  if (std::strcmp(path, "/tmp") == 0) FAIL_WITH_ERROR_OF(kUseTemporary, -1);
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = va_arg(rest, mode_t);
  va_end(rest);
  PASS_ON(open, path, flags, mode);
}

int open64(const char* path, int flags, ...) {
  if (FillsFolder(path, flags)) FAIL_WITH_ERROR_OF(kFillFolder, -1);
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = va_arg(rest, mode_t);
  va_end(rest);
  PASS_ON(open64, path, flags, mode);
}

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*run)(void*),
                   void* argument) noexcept {
  RETURN_ERROR_OF(kStartThread);
  PASS_ON(pthread_create, thread, attributes, run, argument);
}

void* dlopen(const char* name, int flags) noexcept {
  if (name != nullptr && std::strstr(name, "mpv") != nullptr) {
    FAIL_WITH_ERROR_OF(kLoadPlayer, nullptr);
  }
  PASS_ON(dlopen, name, flags);
}

int clock_gettime(clockid_t clock, timespec* now) noexcept {
  static auto* const system = System(&::clock_gettime, "clock_gettime");
  const int result = system(clock, now);
  if (clock == CLOCK_MONOTONIC) LookAtClock();
  if (clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE) now->tv_sec += ClockAhead();
  return result;
}

// As the system has it, a wait for a moment of the calendar clock ends by where that clock stands
// now, wherever it stood when the wait began.
int pthread_cond_timedwait(pthread_cond_t* condition, pthread_mutex_t* mutex,
                           const timespec* moment) {
  if (moment->tv_sec < kFirstCalendarSecond) {
    return pthread_cond_clockwait(condition, mutex, CLOCK_MONOTONIC, moment);
  }
  constexpr long kLook = 10'000'000;  // ns
  constexpr long kSecond = 1'000'000'000;
  while (true) {
    timespec now = SystemClock();
    now.tv_sec += ClockAhead();
    if (now.tv_sec > moment->tv_sec ||
        (now.tv_sec == moment->tv_sec && now.tv_nsec >= moment->tv_nsec)) {
      return ETIMEDOUT;
    }
    const bool last =
        moment->tv_sec - now.tv_sec <= 1 &&
        (moment->tv_sec - now.tv_sec) * kSecond + moment->tv_nsec - now.tv_nsec < kLook;
    timespec look = *moment;
    if (!last) {
      look = now;
      look.tv_nsec += kLook;
      look.tv_sec += look.tv_nsec / kSecond;
      look.tv_nsec %= kSecond;
    }
    look.tv_sec -= ClockAhead();
    const int result = pthread_cond_clockwait(condition, mutex, CLOCK_REALTIME, &look);
    if (result != ETIMEDOUT) return result;
  }
}

int gettimeofday(timeval* now, void* zone) noexcept {
  static auto* const system = System(&::gettimeofday, "gettimeofday");
  const int result = system(now, zone);
  now->tv_sec += ClockAhead();
  return result;
}

time_t time(time_t* now) noexcept {
  static auto* const system = System(&::time, "time");
  const time_t result = system(nullptr) + ClockAhead();
  if (now != nullptr) *now = result;
  return result;
}

}  // extern "C"
