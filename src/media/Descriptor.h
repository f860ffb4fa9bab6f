#pragma once

#include <unistd.h>

#include <utility>

namespace kelvane {

// Owns one file descriptor, or none, and closes it when destroyed.
class Descriptor {
 public:
  Descriptor() = default;
  // Takes ownership of `number`, which is -1 for none.
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    other.Close();
    return *this;
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { Close(); }

  // Returns -1 if there is none. The object keeps the ownership.
  int number() const { return number_; }
  explicit operator bool() const { return number_ >= 0; }

  void Close() {
    if (number_ >= 0) ::close(std::exchange(number_, -1));
  }

 private:
  int number_ = -1;
};

}  // namespace kelvane
