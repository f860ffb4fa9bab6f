// These tests check what the job window shows when it is loaded.
#include <utility>

#include "cropjob/JobWindowTest.h"
#include "support/WindowText.h"

namespace kelvane::testing {
namespace {

class JobLayout : public JobWindowTest {};

TEST_F(JobLayout, IsAsTheWindowTextSays) {
  Form2 job(mainWindow_);
  ExpectWindowText(job);
  job.Unload();
}

class JobLoad : public JobWindowTest {};

TEST_F(JobLoad, MakesTheProgressBarGreyOnSlate) {
  LoadJob();
  Bar().setValue(5);
  const QImage picture = Bar().grab().toImage();
  const int middle = picture.height() / 2;
  EXPECT_EQ(Hex(picture.pixel(3, middle)), "0x808080");
  EXPECT_EQ(Hex(picture.pixel(picture.width() - 4, middle)), "0x3d464c");
}

TEST_F(JobLoad, TakesTheMainWindowsIcon) {
  LoadJob();
  EXPECT_EQ(Job().windowIcon().cacheKey(), mainWindow_.Icon().cacheKey());
}

TEST_F(JobLoad, SetsBothProgressBarsToZeroAndTheirRangeToTheVideosSeconds) {
  const std::pair<const char*, float> cases[] = {
      {"00:00:10", 10},  {"23:59:59", 86399}, {"", 100},     {"00:00:00", 100},
      {"N/A, bit", 100}, {"24:00:00", 100},   {"soon", 100},
  };
  for (const auto& [duration, max] : cases) {
    MainBar().setMax(250);
    MainBar().setValue(70);
    MainBar().setMin(5);
    LoadJob(duration);
    for (const ProgressBar* bar : {&Bar(), &MainBar()}) {
      EXPECT_EQ(bar->Min(), 0) << duration;
      EXPECT_EQ(bar->Max(), max) << duration;
      EXPECT_EQ(bar->Value(), 0) << duration;
    }
    Cancel();
  }
}

}  // namespace
}  // namespace kelvane::testing
