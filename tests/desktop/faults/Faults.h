#pragma once

#include "desktop/driver/Program.h"
#include "desktop/faults/FaultPlan.h"

namespace kelvane::desktop {

// Lets calls of the system fail in a program, while it runs.
class Faults {
 public:
  // The program must not have been started yet, and must outlive this object.
  explicit Faults(Program& program);
  Faults(const Faults&) = delete;
  Faults& operator=(const Faults&) = delete;
  ~Faults();

  // Lets the next but so many calls of this kind fail, once: 1 is the very next one.
  void FailOne(Attempt attempt, int number, int error);
  void FailAll(Attempt attempt, int error) { FailOne(attempt, kEveryCall, error); }
  void Heal(Attempt attempt) { FailOne(attempt, kNoCall, 0); }
  // How many have failed since FailOne or FailAll.
  int Failed(Attempt attempt) const;

  // How far the program's calendar clock is ahead of the system's; the clocks of timers stay right.
  // Waits until the program has read the clock of its timers since, and the usual ways to read the
  // calendar clock have shown it there. False if that doesn't come.
  bool PutClockAhead(std::chrono::seconds time);

 private:
  FaultPlan* plan_;
};

}  // namespace kelvane::desktop
