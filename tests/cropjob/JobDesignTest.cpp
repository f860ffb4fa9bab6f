// The job window as drawn, and what its load makes of it.
#include <algorithm>
#include <array>

#include "cropjob/JobWindowTest.h"
#include "platform/PictureBox.h"
#include "platform/Shapes.h"

namespace kelvane::testing {
namespace {

class JobDesign : public JobWindowTest {
 protected:
  JobDesign() { LoadJob(); }
};

struct Row {
  const char* name;
  const char* container;
  float left, top, width, height;  // twips
};

constexpr auto kRows = std::to_array<Row>({{"Label1(0)", "", 240, 240, 975, 255},
                                           {"Label1(1)", "", 240, 600, 4815, 255},
                                           {"Label3", "", 5160, 240, 1455, 375},
                                           {"Label2", "", 5160, 330, 1455, 255},
                                           {"Line1", "", 240, 960, 6600 - 240, 0},
                                           {"Picture1", "", 120, 1080, 6735, 855},
                                           {"Label1(2)", "Picture1", 240, 120, 3735, 255},
                                           {"Shape1", "Picture1", 120, 240, 6375, 495},
                                           {"pbar", "Picture1", 240, 440, 6135, 135},
                                           {"Picture2", "", 240, 2400, 2175, 1335}});

TEST_F(JobDesign, EveryControlStandsAtItsPlaceInItsContainer) {
  for (const auto& [name, container, left, top, width, height] : kRows) {
    const auto& control = Get<Control>(name);
    EXPECT_EQ(control.parent()->objectName().toStdString(), container) << name;
    EXPECT_EQ(control.Left(), left) << name;
    EXPECT_EQ(control.Top(), top) << name;
    EXPECT_EQ(control.Width(), width) << name;
    EXPECT_EQ(control.Height(), height) << name;
    EXPECT_TRUE(control.Visible()) << name;
  }
}

TEST_F(JobDesign, NoControlIsThereBesides) {
  std::vector<std::string> expected;
  expected.reserve(kRows.size());
  for (const Row& row : kRows) expected.emplace_back(row.name);
  std::vector<std::string> found;
  for (const Control* control : Job().findChildren<Control*>()) {
    if (!control->objectName().isEmpty()) found.push_back(control->objectName().toStdString());
  }
  std::sort(expected.begin(), expected.end());
  std::sort(found.begin(), found.end());
  EXPECT_EQ(found, expected);
}

TEST_F(JobDesign, OnTheScreenAPixelIsFifteenTwips) {
  EXPECT_EQ(Get<Control>("Label1(1)").geometry(), QRect(16, 40, 321, 17));
  EXPECT_EQ(Get<Control>("Label2").geometry(), QRect(344, 22, 97, 17));
  EXPECT_EQ(Get<Control>("Picture1").geometry(), QRect(8, 72, 449, 57));
  EXPECT_EQ(Get<Control>("pbar").geometry(), QRect(16, 29, 409, 9));
  EXPECT_EQ(Get<Control>("Line1").geometry(), QRect(16, 64, 424, 1));
}

TEST_F(JobDesign, CaptionsAreTheDesigns) {
  EXPECT_EQ(Job().Caption().toStdString(), "Saving Video");
  EXPECT_EQ(Get<Label>("Label1(0)").Caption().toStdString(), "Saving As");
  EXPECT_EQ(Get<Label>("Label2").Caption().toStdString(), "Cancel");
  EXPECT_EQ(Get<Label>("Label3").Caption().toStdString(), "");
  EXPECT_EQ(Status(), kGettingCropRegions);
}

TEST_F(JobDesign, BeforeItsLoadItNamesNoVideo) {
  const Form2 other(mainWindow_);
  EXPECT_EQ(other.Find<Label>(QStringLiteral("Label1(1)")).Caption().toStdString(), "No Video");
  EXPECT_EQ(other.Find<ProgressBar>(QStringLiteral("pbar")).Max(), 100);
  EXPECT_EQ(other.Find<ProgressBar>(QStringLiteral("pbar")).Min(), 0);
  EXPECT_EQ(other.Find<Timer>(QStringLiteral("Timer1")).Interval(), 1000);
}

TEST_F(JobDesign, ColoursAreTheDesigns) {
  for (const char* name : {"Label1(0)", "Label1(1)", "Label1(2)", "Label2"}) {
    EXPECT_EQ(Hex(Get<Label>(name).ForeColor()), "0xc0c0c0") << name;
  }
  EXPECT_EQ(Hex(Get<Label>("Label2").BackColor()), "transparent");
  EXPECT_EQ(Hex(Get<Label>("Label3").BackColor()), "0x232323");
  EXPECT_EQ(Hex(Get<PictureBox>("Picture1").BackColor()), "0x232323");
  EXPECT_EQ(Hex(Get<Line>("Line1").BorderColor()), "0x808080");
  EXPECT_EQ(Hex(Get<Shape>("Shape1").BorderColor()), "0x808080");
  EXPECT_EQ(Hex(Job().findChild<ContentArea*>(QString(), Qt::FindDirectChildrenOnly)->BackColor()),
            "0x232323");
}

TEST_F(JobDesign, TheCancelTextLiesOverItsPlateAndTheBarOverItsFrame) {
  const auto isOver = [this](const char* front, const char* behind) {
    const QObjectList& children = Get<Control>(front).parent()->children();
    return children.indexOf(&Get<Control>(front)) > children.indexOf(&Get<Control>(behind));
  };
  EXPECT_TRUE(isOver("Label2", "Label3"));
  EXPECT_TRUE(isOver("pbar", "Shape1"));
  EXPECT_TRUE(isOver("Label1(2)", "Shape1"));
}

TEST_F(JobDesign, TheTimersHolderLiesBelowThePartOnShow) {
  EXPECT_GE(Get<Control>("Picture2").y(), Job().height());
}

TEST_F(JobDesign, TheWindowHasAFixedSizeAndTheDesignsWidthAnd2400TwipsOfHeight) {
  EXPECT_EQ(Job().size(), QSize(466, 160));
  EXPECT_EQ(Job().Height(), 2400);
  EXPECT_EQ(Job().minimumSize(), Job().maximumSize());
}

TEST_F(JobDesign, TheFontIsArial) {
  EXPECT_EQ(Get<Label>("Label1(2)").font().family().toStdString(), "Arial");
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

TEST_F(JobDesign, OnlyTheCommandIsCentred) {
  LoadJob();
  EXPECT_EQ(Get<Label>("Label2").Alignment(), Qt::AlignHCenter);
  for (const char* name : {"Label1(0)", "Label1(1)", "Label1(2)"}) {
    EXPECT_EQ(Get<Label>(name).Alignment(), Qt::AlignLeft);
  }
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
