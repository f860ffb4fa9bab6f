#include "support/Gate.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <system_error>
#include <utility>

namespace kelvane::testing {

Gate::Gate(std::string path) : path_(std::move(path)) {
  // Opened for reading and writing, so that neither this call nor a script's waits until the other
  // end is open.
  if (::mkfifo(path_.c_str(), S_IRUSR | S_IWUSR) == 0) {
    end_ = Descriptor(::open(path_.c_str(), O_RDWR | O_CLOEXEC));
  }
  if (!end_) throw std::system_error(errno, std::generic_category(), path_);
}

void Gate::Open() const {
  if (::write(end_.number(), "\n", 1) != 1) std::abort();
}

bool Gate::IsPassed() const {
  int unread = 0;
  return ::ioctl(end_.number(), FIONREAD, &unread) == 0 && unread == 0;
}

}  // namespace kelvane::testing
