#pragma once

#include <atomic>
#include <string>
#include <thread>

namespace kelvane {

// Tells the desktop that a long job runs. As long as this lives, the session isn't suspended, and
// the program's entry in a launcher shows how far the job is, where the desktop has one. The object
// has a thread of its own, which asks over D-Bus: the desktop portal, and logind if that refuses or
// doesn't answer within three seconds. Nobody waits for an answer. Refusals, silence and a thread
// that can't be started are ignored. What it was granted ends with it, and with the process.
//
// Belongs to one thread.
class LongJob {
 public:
  // The desktop may show `purpose`, such as "Cropping a video". It must outlive this object.
  explicit LongJob(const char* purpose);
  LongJob(const LongJob&) = delete;
  LongJob& operator=(const LongJob&) = delete;
  ~LongJob();

  // Shows the part of the job that is done, from 0 to 1. A number beyond is brought into that
  // range. None is shown before the first call.
  void SetProgress(double part);

 private:
  class Session;

  void Wake() const;

  std::string entry_;  // the program in a launcher
  int wake_ = -1;      // an eventfd, which the thread polls
  std::atomic<int> percent_ = -1;
  std::atomic<bool> ends_ = false;
  std::thread thread_;
};

}  // namespace kelvane
