// What the progress bars, the status line and the main window's title show of texts that the crop
// tool prints.
#include <QFile>
#include <new>

#include "cropjob/JobWindowTest.h"

namespace kelvane::testing {
namespace {

std::string Progress(const std::string& figure) {
  return "Progress: " + figure + "% Complete: Status: Cropping Video";
}

struct BlocksAndUpdates {
  const char* name;
  Texts blocks;
  std::vector<std::pair<std::string, float>> updates;  // the figure and the bar's value
  const char* duration = "00:00:10";
};

void PrintTo(const BlocksAndUpdates& tested, std::ostream* out) { *out << tested.name; }

class JobUpdate : public JobWindowTest, public ::testing::WithParamInterface<BlocksAndUpdates> {};

TEST_P(JobUpdate, IsMadeForTheTimeInABlock) {
  LoadJob(GetParam().duration);
  std::vector<std::pair<std::string, float>> updates;
  mainWindow_.TitleSet = [&] {
    updates.emplace_back(Status(), Bar().Value());
    EXPECT_EQ(MainBar().Value(), Bar().Value());
  };
  Run(PrintBlocks(GetParam().blocks));
  auto expected = GetParam().updates;
  for (auto& [figure, value] : expected) figure = Progress(figure);
  EXPECT_EQ(updates, expected);
  EXPECT_EQ(Status(), kSuccessful);
}

const BlocksAndUpdates kCases[] = {
    {"TheFigureIsThatOfTheUpdateBefore",
     {"size=    1024kB time=00:00:01.00 bitrate= 838.9kbits/s speed=2.0x",
      "size=    2048kB time=00:00:05.99 bitrate= 838.9kbits/s speed=2.0x",
      "size=    4096kB time=00:00:10.00 bitrate= 838.9kbits/s speed=2.0x"},
     {{"00.00", 1}, {"10.00", 5}, {"50.00", 10}}},
    {"TheFigureHasTwoDecimals",
     {"time=00:00:01", "time=00:00:02", "time=00:00:07", "time=00:00:07"},
     {{"00.00", 1}, {"14.29", 2}, {"28.57", 7}, {"100.00", 7}},
     "00:00:07"},
    {"TheWordIsFoundInUpperAndLowerCase",
     {"TIME=00:00:02", "Time=00:00:04", "tImE=00:00:06"},
     {{"00.00", 2}, {"20.00", 4}, {"40.00", 6}}},
    {"TheBarGoesBackWithTheTime", {"time=00:00:08", "time=00:00:03"}, {{"00.00", 8}, {"80.00", 3}}},
    {"ABlockWithoutTheWordIsIgnored",
     {"ffmpeg version 5", "size=    1024kB bitrate= 838.9kbits/s speed=2.0x"},
     {}},
    {"TheFirstOfTwoTimesCounts", {"time=00:00:02.00 time=00:00:09.00"}, {{"00.00", 2}}},
    {"ACreationTimeHidesATimeBehindIt",
     {"time=00:00:04.00", "creation_time   : 2020-01-01T00:00:00.0Z time=00:00:08.00"},
     {{"00.00", 4}, {"40.00", 4}}},
    {"ATextThatIsNoTimeUpdatesTheFigureAlone",
     {"time=00:00:04.00", "size=N/A time=N/A bitrate=N/A"},
     {{"00.00", 4}, {"40.00", 4}}},
    {"ANegativeTimeIsNoTime",
     {"time=-00:00:00.02", "time=00:00:02.00"},
     {{"00.00", 0}, {"00.00", 2}}},
    {"ATimeBeyondTheRangeDoesNotMoveTheBar",
     {"time=00:00:04.00", "time=00:00:11.00", "time=00:00:10.00"},
     {{"00.00", 4}, {"40.00", 4}, {"40.00", 10}}},
    {"WithoutADurationASecondIsOnePercent",
     {"time=00:01:39.00", "time=00:01:40.00", "time=00:01:41.00", "time=00:02:00.00"},
     {{"00.00", 99}, {"99.00", 100}, {"100.00", 100}, {"100.00", 100}},
     ""},
    {"ABlockThatEndsWithTheWordIsIgnored", {std::string(252, '.') + "time", "=00:00:04.00"}, {}},
    {"AWordAcrossTwoBlocksIsIgnored", {std::string(254, '.') + "ti", "me=00:00:04.00"}, {}},
    {"ATimeAcrossTwoBlocksIsReadFromTheFirstOne",
     {"time=00:00:35.00", std::string(244, '.') + "time=00:00:3", "6.00 time=00:00:37.00"},
     {{"00.00", 35}, {"58.33", 3}, {"05.00", 37}},
     "00:01:00"},
    {"ATimeWithoutSecondsIsHoursAndMinutes", {"time=00:04"}, {{"00.00", 240}}, "00:05:00"},
};

INSTANTIATE_TEST_SUITE_P(Job, JobUpdate, ::testing::ValuesIn(kCases),
                         [](const auto& tested) { return std::string(tested.param.name); });

class JobProgress : public JobWindowTest {};

TEST_F(JobProgress, ServesEventsBeforeItReadsABlockAndUsesWhatTheyChange) {
  LoadJob("00:00:10");
  AtNextDoEvents([&] {
    EXPECT_EQ(Status(), kCropping);
    EXPECT_EQ(Bar().Value(), 0);
    Bar().setValue(3);
    MainWindowMinimised = true;
  });
  Texts updates;
  mainWindow_.TitleSet = [&] {
    updates.push_back(Status());
    updates.push_back(Title());
  };
  Run(PrintBlocks({"time=00:00:05.00"}));
  EXPECT_EQ(updates, (Texts{Progress("30.00"), "Crop: 30.00%"}));
}

TEST_F(JobProgress, SetsTheMainWindowsBarAtEachUpdate) {
  LoadJob("00:00:10");
  std::vector<float> values;
  mainWindow_.TitleSet = [&] {
    values.push_back(MainBar().Value());
    MainBar().setValue(9);
  };
  Run(PrintBlocks({"time=00:00:04.00", "time=00:00:11.00", "time=N/A"}));
  EXPECT_EQ(values, (std::vector<float>{4, 4, 4}));
}

TEST_F(JobProgress, IsInTheMainWindowsTitleOnlyWhileThatWindowIsMinimised) {
  LoadJob("00:00:10");
  Texts titles;
  mainWindow_.TitleSet = [&] {
    titles.push_back(Title());
    MainWindowMinimised = titles.size() == 1 || titles.size() == 2;
  };
  Run(PrintBlocks(
      {"time=00:00:01.00", "time=00:00:02.00", "nothing", "time=00:00:03.00", "time=00:00:04.00"}));
  EXPECT_EQ(titles, (Texts{"Kelvane", "Crop: 10.00%", "Crop: 20.00%", "Kelvane"}));
}

TEST_F(JobProgress, LeavesItsLastTitleAndTheBarsLastValueAfterTheJob) {
  LoadJob("00:00:10");
  MainWindowMinimised = true;
  Run(PrintBlocks({"time=00:00:05.00", "time=00:00:06.00"}));
  EXPECT_EQ(Title(), "Crop: 50.00%");
  EXPECT_EQ(Bar().Value(), 6);
  EXPECT_EQ(MainBar().Value(), 6);
}

TEST_F(JobProgress, SkipsABlockWhoseUpdateThrowsAndLetsTheToolFinish) {
  const QString whole = tools_.Path() + "/whole";
  LoadJob("00:00:10");
  Texts statuses;
  mainWindow_.TitleSet = [&] {
    statuses.push_back(Status());
    if (statuses.size() == 1) throw std::bad_alloc();
  };
  Run(PrintBlocks({"time=00:00:02.00", "time=00:00:05.00"}) +
      QStringLiteral("echo whole > '%1'\n").arg(whole));
  EXPECT_EQ(statuses, (Texts{Progress("00.00"), Progress("20.00")}));
  EXPECT_TRUE(QFile::exists(whole));
  EXPECT_EQ(Status(), kSuccessful);
  EXPECT_EQ(Job().cursor().shape(), Qt::ArrowCursor);
}

}  // namespace
}  // namespace kelvane::testing
