// Prints the name of Qt's platform plugin for the display server that answers, "xcb" or "wayland",
// and exits with 0. Exits with 1 if no display server answers.
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

bool XServerAnswers() {
  xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
  const bool answers = xcb_connection_has_error(connection) == 0;
  xcb_disconnect(connection);
  return answers;
}

// WAYLAND_DISPLAY is an absolute path or a name in the folder XDG_RUNTIME_DIR.
bool WaylandAnswers() {
  const char* name = std::getenv("WAYLAND_DISPLAY");
  const char* folder = std::getenv("XDG_RUNTIME_DIR");
  if (name == nullptr || *name == '\0') return false;
  std::string path = name;
  if (path.front() != '/') path = std::string(folder == nullptr ? "" : folder) + "/" + path;

  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) return false;
  std::memcpy(address.sun_path, path.c_str(), path.size());
  const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (connection < 0) return false;
  const bool answers =
      connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  close(connection);
  return answers;
}

}  // namespace

int main() {
  const bool x = std::getenv("DISPLAY") != nullptr && XServerAnswers();
  if (!x && !WaylandAnswers()) return 1;
  std::puts(x ? "xcb" : "wayland");
  return 0;
}
