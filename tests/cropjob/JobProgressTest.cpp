// What the tool prints, and what of it reaches the two bars, the status line and the titles.
#include <QFile>
#include <QLocale>
#include <new>

#include "cropjob/JobWindowTest.h"

namespace kelvane::testing {
namespace {

// The state after one update. A block that updates nothing leaves none.
struct Update {
  std::string status;
  float value;
};

bool operator==(const Update& one, const Update& other) {
  return one.status == other.status && one.value == other.value;
}
void PrintTo(const Update& update, std::ostream* out) {
  *out << update.status << " at " << update.value;
}

// "Progress: 12.34% Complete: Status: Cropping Video"
std::string Progress(const char* figure) {
  return std::string("Progress: ") + figure + "% Complete: Status: Cropping Video";
}

struct BlocksAndUpdates {
  const char* name;
  Texts blocks;
  std::vector<std::pair<const char*, float>> updates;  // figure, value
  const char* duration = "00:00:10";
};

void PrintTo(const BlocksAndUpdates& row, std::ostream* out) { *out << row.name; }

class JobUpdates : public JobWindowTest, public ::testing::WithParamInterface<BlocksAndUpdates> {};

TEST_P(JobUpdates, ComeFromTheTimeInEachBlock) {
  std::vector<Update> expected;
  for (const auto& [figure, value] : GetParam().updates) {
    expected.push_back({Progress(figure), value});
  }
  LoadJob(GetParam().duration);
  std::vector<Update> updates;
  mainWindow_.TitleSet = [&] {
    updates.push_back({Status(), Bar().Value()});
    EXPECT_EQ(MainBar().Value(), Bar().Value());
  };
  Run(PrintBlocks(GetParam().blocks));
  EXPECT_EQ(updates, expected);
  EXPECT_EQ(Status(), kSuccessful);
}

const BlocksAndUpdates kCases[] = {
    {"TheFigureTrailsTheBarByOne",
     {"size=    1024kB time=00:00:01.00 bitrate= 838.9kbits/s speed=2.0x",
      "size=    2048kB time=00:00:05.99 bitrate= 838.9kbits/s speed=2.0x",
      "size=    4096kB time=00:00:10.00 bitrate= 838.9kbits/s speed=2.0x"},
     {{"00.00", 1}, {"10.00", 5}, {"50.00", 10}}},
    {"FiguresHaveTwoDecimals",
     {"time=00:00:01", "time=00:00:02", "time=00:00:07", "time=00:00:07"},
     {{"00.00", 1}, {"14.29", 2}, {"28.57", 7}, {"100.00", 7}},
     "00:00:07"},
    {"AHalfOfAHundredthIsRoundedUp",
     {"time=00:00:07", "time=00:00:08"},
     {{"00.00", 7}, {"00.18", 8}},
     "01:06:40"},
    {"HoursAndMinutesCount",
     {"time=01:00:00.00", "time=01:30:00.00"},
     {{"00.00", 3600}, {"50.00", 5400}},
     "02:00:00"},
    {"TheWordInAnyCase",
     {"TIME=00:00:02", "Time=00:00:04", "tImE=00:00:06"},
     {{"00.00", 2}, {"20.00", 4}, {"40.00", 6}}},
    {"TheBarGoesBackWithTheTime", {"time=00:00:08", "time=00:00:03"}, {{"00.00", 8}, {"80.00", 3}}},
    {"BlocksWithoutTheWordPassThrough",
     {"ffmpeg version 5", "size=    1024kB bitrate= 838.9kbits/s speed=2.0x"},
     {}},
    {"OfTwoTimesInABlockTheFirstCounts", {"time=00:00:02.00 time=00:00:09.00"}, {{"00.00", 2}}},
    {"ACreationTimeIsNoTimeAndHidesOneBehindIt",
     {"time=00:00:04.00", "creation_time   : 2020-01-01T00:00:00.0Z time=00:00:08.00"},
     {{"00.00", 4}, {"40.00", 4}}},
    {"NotAvailableIsNoTime",
     {"time=00:00:04.00", "size=N/A time=N/A bitrate=N/A"},
     {{"00.00", 4}, {"40.00", 4}}},
    {"ATimeBeyondTheRangeLeavesTheBar",
     {"time=00:00:04.00", "time=00:00:11.00", "time=00:00:10.00"},
     {{"00.00", 4}, {"40.00", 4}, {"40.00", 10}}},
    {"WithoutADurationASecondIsAHundredth",
     {"time=00:00:01.00", "time=00:01:39.00", "time=00:01:40.00", "time=00:01:41.00",
      "time=00:02:00.00"},
     {{"00.00", 1}, {"01.00", 99}, {"99.00", 100}, {"100.00", 100}, {"100.00", 100}},
     ""},
    {"ANegativeTimeIsNoTime",
     {"time=-00:00:00.02", "time=00:00:02.00"},
     {{"00.00", 0}, {"00.00", 2}}},
    {"TheBlockEndsBehindTheWord", {std::string(252, '.') + "time", "=00:00:04.00"}, {}},
    {"TheBlockEndsBehindTheEqualsSign", {std::string(251, '.') + "time=", "00:00:04.00"}, {}},
    {"TheBlockEndsInTheWord", {std::string(254, '.') + "ti", "me=00:00:04.00"}, {}},
    {"TheBlockEndsBehindTheFirstDigit",
     {std::string(250, '.') + "time=0", "0:00:04.00"},
     {{"00.00", 0}}},
    {"TheBlockEndsBeforeTheLastDigitAndTheNextPutsItRight",
     {"time=00:00:35.00", std::string(244, '.') + "time=00:00:3", "6.00 time=00:00:37.00"},
     {{"00.00", 35}, {"58.33", 3}, {"05.00", 37}},
     "00:01:00"},
};

INSTANTIATE_TEST_SUITE_P(Job, JobUpdates, ::testing::ValuesIn(kCases),
                         [](const auto& row) { return std::string(row.param.name); });

class JobProgress : public JobWindowTest {};

TEST_F(JobProgress, TheFigureHasTheLocalesDecimalSign) {
  QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
  LoadJob("00:00:10");
  Texts statuses;
  mainWindow_.TitleSet = [&] { statuses.push_back(Status()); };
  Run(PrintBlocks({"time=00:00:05.00", "time=00:00:06.00"}));
  QLocale::setDefault(QLocale::c());
  EXPECT_EQ(statuses, (Texts{Progress("00,00"), Progress("50,00")}));
}

TEST_F(JobProgress, WhatHappensWhileABlocksEventsAreServedCountsForThatBlock) {
  LoadJob("00:00:10");
  bool served = false;
  AtNextDoEvents([&] {
    served = true;
    EXPECT_EQ(Status(), kCropping);
    EXPECT_EQ(Bar().Value(), 0);
    Bar().setValue(3);
    MainWindowMinimised = true;
  });
  std::vector<Update> updates;
  Texts titles;
  mainWindow_.TitleSet = [&] {
    updates.push_back({Status(), Bar().Value()});
    titles.push_back(Title());
  };
  Run(PrintBlocks({"time=00:00:05.00"}));
  EXPECT_TRUE(served);
  EXPECT_EQ(updates, (std::vector<Update>{{Progress("30.00"), 5}}));
  EXPECT_EQ(titles, Texts{"Crop: 30.00%"});
}

TEST_F(JobProgress, TheMainWindowsBarGetsWhatTheJobsBarShowsAtEachTime) {
  LoadJob("00:00:10");
  MainBar().setMax(20);
  std::vector<float> values;
  mainWindow_.TitleSet = [&] {
    values.push_back(MainBar().Value());
    MainBar().setValue(9);
  };
  Run(PrintBlocks({"time=00:00:04.00", "time=00:00:11.00", "time=N/A"}));
  EXPECT_EQ(values, (std::vector<float>{4, 4, 4}));
}

TEST_F(JobProgress, TheMainWindowsTitleTellsTheFigureOnlyWhileItIsMinimised) {
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

TEST_F(JobProgress, ItsLastTitleAndTheBarsLastValuesStayAfterTheJob) {
  LoadJob("00:00:10");
  MainWindowMinimised = true;
  Run(PrintBlocks({"time=00:00:05.00", "time=00:00:06.00"}));
  EXPECT_EQ(Title(), "Crop: 50.00%");
  EXPECT_EQ(Bar().Value(), 6);
  EXPECT_EQ(MainBar().Value(), 6);
  EXPECT_EQ(Status(), kSuccessful);
}

TEST_F(JobProgress, ATitleOfItsOwnStaysWhereNothingIsUpdated) {
  LoadJob();
  mainWindow_.setCaption(QStringLiteral("as before"));
  MainWindowMinimised = true;
  Run(PrintBlocks({"no word in here"}));
  EXPECT_EQ(Title(), "as before");
}

TEST_F(JobProgress, AnErrorWhileABlockIsTakenIsSkippedAndTheToolRunsToItsEnd) {
  const QString whole = tools_.Path() + QLatin1String("/whole");
  LoadJob("00:00:10");
  Texts statuses;
  mainWindow_.TitleSet = [&] {
    statuses.push_back(Status());
    if (statuses.size() == 1) throw std::bad_alloc();
  };
  Run(PrintBlocks({"time=00:00:02.00", "time=00:00:05.00"}) +
      QStringLiteral("echo whole > '%1'\n").arg(whole));
  EXPECT_EQ(statuses, (Texts{Progress("00.00"), Progress("20.00")}));
  EXPECT_EQ(Bar().Value(), 5);
  EXPECT_EQ(MainBar().Value(), 5);
  EXPECT_TRUE(QFile::exists(whole));
  EXPECT_EQ(Status(), kSuccessful);
  EXPECT_EQ(Job().cursor().shape(), Qt::ArrowCursor);
}

TEST_F(JobProgress, TheLineOfAShortTimeAtTheEndOfTheStreamCounts) {
  LoadJob("00:05:00");
  Run(Print(QStringLiteral("time=00:04")));
  EXPECT_EQ(Bar().Value(), 240);
}

}  // namespace
}  // namespace kelvane::testing
