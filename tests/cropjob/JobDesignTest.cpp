// The job window as drawn, and what its load makes of it.
#include <sstream>
#include <string>

#include "cropjob/JobWindowTest.h"
#include "platform/Shapes.h"

namespace kelvane::testing {
namespace {

// A control as a line: its place in its container in twips, its text and its colours.
std::string Described(const Control& control) {
  std::ostringstream line;
  line << control.objectName().toStdString() << " at " << control.Left() << ", " << control.Top()
       << ", " << control.Width() << " by " << control.Height();
  if (const auto* label = qobject_cast<const Label*>(&control)) {
    line << " \"" << label->Caption().toStdString() << "\" " << Hex(label->ForeColor()) << " on "
         << Hex(label->BackColor())
         << (label->Alignment() == Qt::AlignHCenter ? ", centred" : ", left");
  } else if (const auto* container = qobject_cast<const Container*>(&control)) {
    line << ' ' << Hex(container->BackColor());
  } else if (const auto* drawn = qobject_cast<const Line*>(&control)) {
    line << ' ' << Hex(drawn->BorderColor());
  } else if (const auto* shape = qobject_cast<const Shape*>(&control)) {
    line << ' ' << Hex(shape->BorderColor());
  }
  if (!control.Visible()) line << ", hidden";
  line << '\n';
  return line.str();
}

// All that stands in a control, front to back, indented by two blanks to the level.
std::string DescribedIn(const QObject& container, const std::string& indent = {}) {
  std::string lines;
  for (const QObject* child : container.children()) {
    const auto* control = qobject_cast<const Control*>(child);
    if (control == nullptr) continue;
    lines.insert(0, indent + Described(*control) + DescribedIn(*control, indent + "  "));
  }
  return lines;
}

class JobDesign : public JobWindowTest {
 protected:
  JobDesign() { LoadJob(); }
  const Container& Area() const {
    return *Job().findChild<Container*>(QString(), Qt::FindDirectChildrenOnly);
  }
};

TEST_F(JobDesign, IsThis) {
  EXPECT_EQ('\n' + DescribedIn(Area()), R"(
Label2 at 5160, 330, 1455 by 255 "Cancel" 0xc0c0c0 on transparent, centred
Label3 at 5160, 240, 1455 by 375 "" 0xc0c0c0 on 0x232323, left
Picture2 at 240, 2400, 2175 by 1335 0x232323
Picture1 at 120, 1080, 6735 by 855 0x232323
  pbar at 240, 440, 6135 by 135
  Label1(2) at 240, 120, 3735 by 255 "Progress: 00.00 % Complete: Status: Getting Crop Regions" 0xc0c0c0 on 0x232323, left
  Shape1 at 120, 240, 6375 by 495 0x808080
Label1(1) at 240, 600, 4815 by 255 "/tmp/out.mp4" 0xc0c0c0 on transparent, left
Label1(0) at 240, 240, 975 by 255 "Saving As" 0xc0c0c0 on transparent, left
Line1 at 240, 960, 6360 by 0 0x808080
)");
}

TEST_F(JobDesign, HasAFixedSizeWithoutThePartOfTheTimersHolder) {
  EXPECT_EQ(Job().size(), QSize(466, 160));
  EXPECT_EQ(Job().Height(), 2400);
  EXPECT_EQ(Job().minimumSize(), Job().maximumSize());
  EXPECT_GE(Get<Control>("Picture2").y(), Job().height());
}

TEST_F(JobDesign, HasItsTitleColoursAndFont) {
  EXPECT_EQ(Job().Caption().toStdString(), "Saving Video");
  EXPECT_EQ(Hex(Area().BackColor()), "0x232323");
  EXPECT_EQ(Get<Label>("Label1(2)").font().family().toStdString(), "Arial");
  Bar().setValue(5);
  const QImage picture = Bar().grab().toImage();
  const int middle = picture.height() / 2;
  EXPECT_EQ(Hex(picture.pixel(3, middle)), "0x808080");
  EXPECT_EQ(Hex(picture.pixel(picture.width() - 4, middle)), "0x3d464c");
}

TEST_F(JobDesign, TakesTheMainWindowsIconAndTheOutputsNameAtItsLoad) {
  EXPECT_EQ(Job().windowIcon().cacheKey(), mainWindow_.Icon().cacheKey());
  EXPECT_EQ(Get<Label>("Label1(1)").Caption().toStdString(), "/tmp/out.mp4");
}

TEST(JobDesignBeforeTheScreen, NamesNoVideoBeforeTheLoadWhichAloneShowsNothing) {
  ForgetSharedValues();
  MainWindowStandIn mainWindow;
  Form2 job(mainWindow);
  EXPECT_EQ(job.Find<Label>(QStringLiteral("Label1(1)")).Caption().toStdString(), "No Video");
  EXPECT_EQ(job.Find<ProgressBar>(QStringLiteral("pbar")).Max(), 100);
  EXPECT_EQ(job.Find<ProgressBar>(QStringLiteral("pbar")).Min(), 0);
  const auto& timer = job.Find<Timer>(QStringLiteral("Timer1"));
  EXPECT_EQ(timer.Interval(), 1000);
  EXPECT_FALSE(timer.Enabled());
  job.Load();
  EXPECT_FALSE(job.isVisible());
  EXPECT_TRUE(timer.Enabled());
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

const DurationAndRange kDurations[] = {
    {"TenSeconds", "00:00:10", 10},    {"OneHour", "01:00:00", 3600},
    {"AlmostADay", "23:59:59", 86399}, {"None", "", 100},
    {"Nought", "00:00:00", 100},       {"NotAvailable", "N/A, bit", 100},
    {"ADay", "24:00:00", 100},         {"FourDays", "99:59:59", 100},
    {"NoTime", "soon", 100},
};

INSTANTIATE_TEST_SUITE_P(JobDesign, JobRange, ::testing::ValuesIn(kDurations),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace kelvane::testing
