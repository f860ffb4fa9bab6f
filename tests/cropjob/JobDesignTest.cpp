// The job window as drawn, and what its load makes of it.
#include "cropjob/JobWindowTest.h"
#include "support/WindowText.h"

namespace kelvane::testing {
namespace {

class JobDesign : public JobWindowTest {
 protected:
  JobDesign() { LoadJob(); }
};

class JobLayout : public JobWindowTest {};

TEST_F(JobLayout, IsAsTheWindowTextSays) {
  Form2 job(mainWindow_);
  ExpectWindowText(job);
  job.Unload();
}

TEST_F(JobDesign, TheWindowHasAFixedSize) {
  EXPECT_EQ(Job().minimumSize(), Job().maximumSize());
}

TEST_F(JobDesign, TheProgressBarIsGreyOnSlate) {
  Bar().setValue(5);
  const QImage picture = Bar().grab().toImage();
  const int middle = picture.height() / 2;
  EXPECT_EQ(Hex(picture.pixel(3, middle)), "0x808080");
  EXPECT_EQ(Hex(picture.pixel(picture.width() - 4, middle)), "0x3d464c");
}

TEST_F(JobDesign, TheLoadTakesTheMainWindowsIconAndTheOutputsName) {
  EXPECT_EQ(Job().windowIcon().cacheKey(), mainWindow_.Icon().cacheKey());
  EXPECT_EQ(Get<Label>("Label1(1)").Caption().toStdString(), "/tmp/out.mp4");
  EXPECT_TRUE(JobTimer().Enabled());
}

TEST(JobDesignBeforeTheScreen, TheLoadAloneShowsNothing) {
  ForgetSharedValues();
  MainWindowStandIn mainWindow;
  Form2 job(mainWindow);
  job.Load();
  EXPECT_FALSE(job.isVisible());
  EXPECT_TRUE(job.Find<Timer>(QStringLiteral("Timer1")).Enabled());
  job.Unload();
}

struct DurationAndRange {
  const char* name;
  const char* duration;
  float max;
};

void PrintTo(const DurationAndRange& row, std::ostream* out) { *out << row.name; }

class JobRange : public JobWindowTest, public ::testing::WithParamInterface<DurationAndRange> {};

TEST_P(JobRange, IsThatOfTheDurationOnBothBars) {
  MainBar().setMax(250);
  MainBar().setValue(70);
  MainBar().setMin(5);
  LoadJob(GetParam().duration);
  for (const ProgressBar* bar : {&Bar(), &MainBar()}) {
    EXPECT_EQ(bar->Min(), 0);
    EXPECT_EQ(bar->Max(), GetParam().max);
    EXPECT_EQ(bar->Value(), 0);
  }
}

INSTANTIATE_TEST_SUITE_P(JobDesign, JobRange,
                         ::testing::Values(DurationAndRange{"TenSeconds", "00:00:10", 10},
                                           DurationAndRange{"OneHour", "01:00:00", 3600},
                                           DurationAndRange{"AlmostADay", "23:59:59", 86399},
                                           DurationAndRange{"None", "", 100},
                                           DurationAndRange{"Nought", "00:00:00", 100},
                                           DurationAndRange{"NotAvailable", "N/A, bit", 100},
                                           DurationAndRange{"ADay", "24:00:00", 100},
                                           DurationAndRange{"FourDays", "99:59:59", 100},
                                           DurationAndRange{"NoTime", "soon", 100}),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace kelvane::testing
