#pragma once

#include <atomic>
#include <string>
#include <thread>

namespace kelvane {

// Tells the desktop that a long job runs. While this object lives, the desktop is asked not to
// suspend the session, and to show in the program's launcher entry how much of the job is done. The
// object has a thread of its own, which sends its requests over D-Bus. It asks the desktop portal
// to keep the session from being suspended, and logind if the portal refuses or doesn't answer
// within three seconds. The caller never waits for an answer. Refusals, silence and a thread that
// can't be started are ignored. What was granted ends with the object, or with the process.
//
// Belongs to one thread.
class LongJob {
 public:
  // The desktop may show `purpose`, such as "Cropping a video". The text must outlive this object.
  explicit LongJob(const char* purpose);
  LongJob(const LongJob&) = delete;
  LongJob& operator=(const LongJob&) = delete;
  ~LongJob();

  // Shows the part of the job that is done, from 0 to 1. A number outside this range is clamped to
  // it; one that isn't finite counts as 0. No progress is shown before the first call.
  void SetProgress(double part);

 private:
  class Session;

  void Wake() const;

  std::string entry_;  // by which a launcher knows the program
  int wake_ = -1;      // an eventfd, which the thread polls
  std::atomic<int> percent_ = -1;
  std::atomic<bool> ends_ = false;
  std::thread thread_;
};

}  // namespace kelvane
