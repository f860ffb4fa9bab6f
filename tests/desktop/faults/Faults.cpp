#include "desktop/faults/Faults.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <QFile>
#include <stdexcept>

namespace kelvane::desktop {
namespace {

FaultPlan* MakePlan(const QString& path) {
  const int file =
      ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  const bool sized = file >= 0 && ::ftruncate(file, sizeof(FaultPlan)) == 0;
  void* const memory =
      sized ? ::mmap(nullptr, sizeof(FaultPlan), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0)
            : MAP_FAILED;
  ::close(file);
  if (memory == MAP_FAILED) throw std::runtime_error("the plan of faults can't be made");
  return new (memory) FaultPlan{};
}

}  // namespace

Faults::Faults(Program& program) {
  const QString path = program.PathOf(QStringLiteral("fault-plan"));
  plan_ = MakePlan(path);
  program.SetVariable(QLatin1String(kPlanVariable), path);
  // Beside the program, since whoever runs it may not get at what was built.
  const QString library = program.PathOf(QStringLiteral("faults.so"));
  if (!QFile::copy(QStringLiteral(KELVANE_FAULT_LIBRARY), library)) {
    throw std::runtime_error("the library of faults can't be copied");
  }
  program.SetVariable(QStringLiteral("LD_PRELOAD"), library);
  // A sanitizer would be the first library of all.
  program.SetVariable(
      QStringLiteral("ASAN_OPTIONS"),
      qEnvironmentVariable("ASAN_OPTIONS") + QStringLiteral(":verify_asan_link_order=0"));
}

Faults::~Faults() { ::munmap(plan_, sizeof(FaultPlan)); }

void Faults::FailOne(Attempt attempt, int number, int error) {
  FaultPlan::Entry& entry = plan_->entries[static_cast<int>(attempt)];
  entry.failing = kNoCall;
  entry.error = error;
  entry.failed = 0;
  entry.failing = number;
}

int Faults::Failed(Attempt attempt) const {
  return plan_->entries[static_cast<int>(attempt)].failed;
}

bool Faults::PutClockAhead(std::chrono::seconds time) {
  plan_->clockAhead = time.count();
  return WaitFor([this] { return plan_->clockShown == plan_->clockAhead; });
}

}  // namespace kelvane::desktop
