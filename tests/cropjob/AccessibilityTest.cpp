// The job's window as a screen reader finds it.
#include "cropjob/JobWindowTest.h"
#include "support/ScreenReader.h"

namespace kelvane::testing {
namespace {

class JobWindowReading : public JobWindowTest {};

TEST_F(JobWindowReading, TellsHowFarTheJobHasCome) {
  LoadJob();
  Run(PrintBlocks({"time=00:00:02.00", "time=00:00:05.00"}));
  EXPECT_NE(FindHeard(Job(), "ProgressBar \"Progress of the crop\" = 50000"), nullptr)
      << HeardIn(Job());
  EXPECT_NE(FindHeard(Job(), std::string("StaticText \"") + kSuccessful + '"'), nullptr);
}

TEST_F(JobWindowReading, ClosesTheWindowByThePressOfCancel) {
  LoadJob();
  FindHeard(Job(), "Button \"Cancel\"")
      ->actionInterface()
      ->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(WaitFor([this] { return !JobIsThere(); }));
}

}  // namespace
}  // namespace kelvane::testing
