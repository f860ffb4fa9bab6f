#include "desktop/driver/PrivateDisplay.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <vector>

#include "desktop/driver/Screen.h"

namespace kelvane::desktop {
namespace {

// Starts a program that is found in PATH, and returns its process id. The program inherits the
// descriptor `inherited`, and is killed when this process ends.
pid_t StartProcess(const std::vector<std::string>& arguments, int inherited = -1) {
  std::vector<char*> pointers;
  pointers.reserve(arguments.size() + 1);
  for (const std::string& argument : arguments) {
    pointers.push_back(const_cast<char*>(argument.c_str()));
  }
  pointers.push_back(nullptr);
  const pid_t child = fork();
  if (child != 0) return child;
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  const int null = open("/dev/null", O_RDWR | O_CLOEXEC);
  for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(null, standard);
  if (inherited >= 0) fcntl(inherited, F_SETFD, 0);
  execvp(pointers.front(), pointers.data());
  _exit(127);
}

// Returns the X server's command. Xephyr's -screen takes no screen number, unlike that of Xvfb.
std::vector<std::string> ServerCommand() {
  const std::string screen = "1920x1200x24";
  const char* shown = std::getenv("KELVANE_TEST_DISPLAY_SERVER");
  if (shown == nullptr || *shown == '\0') return {"Xvfb", "-screen", "0", screen};
  return {shown, "-screen", screen};
}

void End(pid_t process) {
  if (process <= 0) return;
  kill(process, SIGTERM);
  const bool ended = WaitFor([process] { return waitpid(process, nullptr, WNOHANG) != 0; }, 5s);
  if (ended) return;
  kill(process, SIGKILL);
  waitpid(process, nullptr, 0);
}

// A window that tells whether the window manager manages windows yet. The manager announces itself
// some time before it does, and never shows a window that is mapped in between.
class TrialWindow {
 public:
  explicit TrialWindow(Screen& screen, const std::string& display)
      : screen_(screen), connection_(xcb_connect(display.c_str(), nullptr)) {
    constexpr std::uint16_t kSize = 10;
    const xcb_screen_t* setup = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
    window_ = xcb_generate_id(connection_);
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, setup->root, 0, 0, kSize, kSize,
                      0, XCB_WINDOW_CLASS_INPUT_OUTPUT, setup->root_visual, 0, nullptr);
  }
  TrialWindow(const TrialWindow&) = delete;
  TrialWindow& operator=(const TrialWindow&) = delete;
  ~TrialWindow() {
    xcb_disconnect(connection_);
    WaitFor([this] { return screen_.Windows().isEmpty(); });
  }

  bool IsManaged() {
    xcb_unmap_window(connection_, window_);
    xcb_map_window(connection_, window_);
    xcb_flush(connection_);
    return WaitFor([this] { return screen_.Exists(window_); }, 500ms);
  }

 private:
  Screen& screen_;
  xcb_connection_t* connection_;
  xcb_window_t window_ = 0;
};

}  // namespace

PrivateDisplay::PrivateDisplay(const std::string& privateFolder, WindowManager windowManager) {
  try {
    StartServer();
    if (windowManager == WindowManager::kOpenbox) StartWindowManager(privateFolder);
  } catch (...) {
    End(windowManager_);
    End(server_);
    throw;
  }
}

PrivateDisplay::~PrivateDisplay() {
  End(windowManager_);
  End(server_);
}

void PrivateDisplay::UseForQt(const std::string& privateFolder) const {
  setenv("DISPLAY", name_.c_str(), 1);
  setenv("QT_QPA_PLATFORM", "xcb", 1);
  setenv("QT_ENABLE_HIGHDPI_SCALING", "0", 1);
  setenv("XDG_RUNTIME_DIR", privateFolder.c_str(), 1);
  setenv("LANG", "C.UTF-8", 1);
}

// The server writes its display number to a pipe as soon as it accepts connections.
void PrivateDisplay::StartServer() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe for the X server");
  std::vector<std::string> arguments = ServerCommand();
  const std::string server = arguments.front();
  arguments.insert(arguments.end(),
                   {"-displayfd", std::to_string(ends[1]), "-nolisten", "tcp", "-noreset"});
  server_ = StartProcess(arguments, ends[1]);
  close(ends[1]);
  std::string number;
  char digit = 0;
  while (read(ends[0], &digit, 1) == 1 && digit != '\n') number += digit;
  close(ends[0]);
  if (number.empty()) throw std::runtime_error("the X server " + server + " doesn't start");
  name_ = ":" + number;
}

void PrivateDisplay::StartWindowManager(const std::string& privateFolder) {
  windowManager_ = StartProcess({"env", "-i", "PATH=/usr/bin:/bin", "HOME=" + privateFolder,
                                 "LANG=C.UTF-8", "DISPLAY=" + name_, "openbox"});
  Screen screen(name_);
  TrialWindow window(screen, name_);
  const bool answers = WaitFor([&] { return window.IsManaged(); });
  if (!answers) throw std::runtime_error("the window manager openbox doesn't start");
}

}  // namespace kelvane::desktop
