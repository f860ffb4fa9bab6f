// The command lines of the stabiliser's tools, and what a probe's output says.
#include "stabiliser/ToolLines.h"

#include <gtest/gtest.h>

namespace kelvane {
namespace {

constexpr StabiliserOptions kOptions = {4, 3, 5, 10, 25, 7, 7};
constexpr VideoFacts kPlain = {
    .duration = 60, .width = 640, .height = 360, .rate = 25, .plain = true};
constexpr VideoFacts kOdd = {
    .duration = 60, .width = 641, .height = 361, .rate = 25, .interlaced = true};

TEST(StabiliserLines, ExtractTheSpan) {
  EXPECT_EQ(ExtractLine("/t", "in.mp4", kPlain, {.start = 12.5, .length = 3}, "out.mp4"),
            "/t/ffmpeg -hide_banner -stats_period 0.1 -ss 12.5 -i in.mp4 -t 3 -sn -dn -y out.mp4");
}

TEST(StabiliserLines, ReadTheBeginningWithoutASeek) {
  EXPECT_EQ(ExtractLine("/t", "in.avi", kPlain, {.start = 0.1, .length = 3}, "out.mp4"),
            "/t/ffmpeg -hide_banner -stats_period 0.1 -i in.avi -ss 0.1 -t 3 -sn -dn -y out.mp4");
  EXPECT_TRUE(ViewLine("/t", "in.avi", kPlain, {.start = 0.1, .length = 3})
                  .starts_with("/t/ffplay -hide_banner -t 5.1 -autoexit "));
}

TEST(StabiliserLines, ViewTheSpanFromItsFirstPictureOn) {
  VideoFacts facts = kPlain;
  facts.startTime = 1.4;
  EXPECT_EQ(ViewLine("/t", "in.ts", facts, {.start = 12, .length = 0.3}),
            "/t/ffplay -hide_banner -ss 12 -t 2.3 -autoexit -vf trim=start=13.4:end=13.7 "
            "-af atrim=start=13.4:end=13.7 -i in.ts");
}

TEST(StabiliserLines, ReadTheFirstOfSeveralStreams) {
  VideoFacts facts = kPlain;
  facts.severalVideos = true;
  EXPECT_EQ(ExtractLine("/t", "in.mp4", facts, {.start = 12.5, .length = 3}, "out.mp4"),
            "/t/ffmpeg -hide_banner -stats_period 0.1 -discard:v all -discard:V:0 default "
            "-ss 12.5 -i in.mp4 -t 3 -sn -dn -y out.mp4");
  EXPECT_NE(ViewLine("/t", "in.mp4", facts, {.start = 12, .length = 3}).find(" -vst V:0 -ss "),
            std::string::npos);
}

// In a transport stream a tool that seeks between two key frames begins at the later one.
TEST(StabiliserLines, SeekEarlierIfASeekMayMissTheKeyFrameBeforeTheStart) {
  VideoFacts facts = kPlain;
  facts.seeksLate = true;
  const auto extract = [&facts](const Span& span) {
    return ExtractLine("/t", "i.ts", facts, span, "o");
  };
  EXPECT_NE(extract({80.5, 2}).find(" -copyts -ss 20.5 -i i.ts -ss 80.5 -t 2 "), std::string::npos);
  facts.startTime = 1.4;
  EXPECT_NE(extract({6.5, 2}).find(" -copyts -ss 0 -i i.ts -ss 7.9 -t 2 "), std::string::npos);
  facts.startTime = 0;
  EXPECT_NE(ViewLine("/t", "i.ts", facts, {80.5, 2})
                .find(" -ss 20.5 -t 64 -autoexit -vf trim=start=80.5:end=82.5 "),
            std::string::npos);
}

TEST(StabiliserLines, KeepTheTimesOfPicturesThatHaveNoRate) {
  VideoFacts facts = kPlain;
  facts.rate = 0;
  const std::string kept = " -fps_mode vfr -sn -dn -y o.mp4";
  EXPECT_TRUE(ExtractLine("/t", "i", facts, {.start = 0, .length = 1}, "o.mp4").ends_with(kept));
  EXPECT_TRUE(
      TransformLine("/t", "i", facts, std::nullopt, kOptions, "x", "o.mp4").ends_with(kept));
}

TEST(StabiliserLines, DetectTheMotionsAndTakeThemAway) {
  EXPECT_EQ(DetectLine("/t", "in.mp4", kPlain, std::nullopt, kOptions, "x.trf"),
            "/t/ffmpeg -hide_banner -stats_period 0.1 -i in.mp4 -an -sn -dn "
            "-vf vidstabdetect=stepsize=4:shakiness=3:accuracy=5:result=x.trf -f null -");
  EXPECT_EQ(
      TransformLine("/t", "in.mp4", kPlain, std::nullopt, kOptions, "x.trf", "out.mp4"),
      "/t/ffmpeg -hide_banner -stats_period 0.1 -i in.mp4 "
      "-vf copy,vidstabtransform=input=x.trf:zoom=10:optzoom=0:smoothing=25,unsharp=lx=7:ly=7 "
      "-sn -dn -y out.mp4");
}

TEST(StabiliserLines, HaveBothPassesReadTheSameSpan) {
  const Span span = {.start = 2, .length = 5};
  const std::string part = " -ss 2 -i in.mp4 -t 5 ";
  EXPECT_NE(DetectLine("/t", "in.mp4", kPlain, span, kOptions, "x.trf").find(part),
            std::string::npos);
  EXPECT_NE(TransformLine("/t", "in.mp4", kPlain, span, kOptions, "x.trf", "o.mp4").find(part),
            std::string::npos);
}

TEST(StabiliserLines, TurnOddSizesAndInterlacedPicturesIntoWhatEveryPlayerShows) {
  const std::string plain = " -vf yadif,crop=trunc(iw/2)*2:trunc(ih/2)*2,format=yuv420p";
  EXPECT_NE(ExtractLine("/t", "i", kOdd, {0, 1}, "o.mp4").find(plain + " -sn"), std::string::npos);
  EXPECT_NE(DetectLine("/t", "i", kOdd, std::nullopt, kOptions, "x").find(plain + ",vidstabdetect"),
            std::string::npos);
  EXPECT_NE(TransformLine("/t", "i", kOdd, std::nullopt, kOptions, "x", "o")
                .find(plain + ",copy,vidstabtransform"),
            std::string::npos);
}

TEST(VideoFacts, AreReadFromAProbe) {
  const VideoFacts facts = ReadVideoFacts(
      "width=1920\nheight=1080\npix_fmt=yuv420p\nfield_order=progressive\n"
      "avg_frame_rate=30000/1001\nstart_time=1.900000\nduration=12.000000\nformat_name=mpegts\n"
      "start_time=1.400000\nduration=12.523222\n");
  EXPECT_EQ(facts.width, 1920);
  EXPECT_EQ(facts.height, 1080);
  EXPECT_TRUE(facts.plain);
  EXPECT_FALSE(facts.interlaced);
  EXPECT_FALSE(facts.still);
  EXPECT_FALSE(facts.severalVideos);
  EXPECT_NEAR(facts.rate, 29.97, 0.001);
  EXPECT_TRUE(facts.seeksLate);
  EXPECT_EQ(facts.startTime, 1.4);
  EXPECT_EQ(facts.videoStart, 0.5);
  EXPECT_EQ(facts.duration, 12.523222);
  EXPECT_EQ(facts.videoDuration, 12);
  EXPECT_EQ(ReadVideoFacts("duration=N/A\nTAG:DURATION=01:02:03.500000000\nformat_name=matroska\n")
                .videoDuration,
            3723.5);
}

TEST(VideoFacts, HaveNoRateIfTheFileStatesAThousandPicturesASecond) {
  EXPECT_EQ(ReadVideoFacts("width=8\navg_frame_rate=1000/1\nformat_name=flv\n").rate, 0);
  EXPECT_EQ(ReadVideoFacts("width=8\navg_frame_rate=240/1\nformat_name=mp4\n").rate, 240);
}

TEST(VideoFacts, AreOfTheFirstOfSeveralStreams) {
  const VideoFacts facts = ReadVideoFacts(
      "width=64\nheight=48\npix_fmt=yuv420p\nduration=5\n"
      "width=101\nheight=77\npix_fmt=yuv444p\nduration=6\nformat_name=mov\nduration=7\n");
  EXPECT_TRUE(facts.severalVideos);
  EXPECT_TRUE(facts.plain);
  EXPECT_EQ(facts.width, 64);
  EXPECT_EQ(facts.videoDuration, 5);
  EXPECT_EQ(facts.duration, 7);
}

TEST(VideoFacts, TellWhatCanNotBeStabilised) {
  EXPECT_FALSE(ReadVideoFacts("format_name=mp3\nduration=3.0\n").HasVideo());
  EXPECT_TRUE(ReadVideoFacts("width=8\nheight=8\nformat_name=png_pipe\nduration=N/A\n").still);
  EXPECT_TRUE(ReadVideoFacts("width=8\nheight=8\nformat_name=image2\nduration=0.04\n").still);
  EXPECT_EQ(ReadVideoFacts("width=8\nheight=8\nformat_name=h264\nduration=N/A\n").duration, 0);
  EXPECT_FALSE(ReadVideoFacts("").HasVideo());
}

TEST(VideoFacts, TellWhichPicturesEveryPlayerShows) {
  const auto plain = [](const std::string& lines) { return ReadVideoFacts(lines).plain; };
  EXPECT_TRUE(plain("width=640\nheight=360\npix_fmt=yuvj420p\n"));
  EXPECT_FALSE(plain("width=641\nheight=360\npix_fmt=yuv420p\n"));
  EXPECT_FALSE(plain("width=640\nheight=361\npix_fmt=yuv420p\n"));
  EXPECT_FALSE(plain("width=640\nheight=360\npix_fmt=yuv422p\n"));
  EXPECT_FALSE(plain("width=640\nheight=360\npix_fmt=yuv420p10le\n"));
  EXPECT_TRUE(ReadVideoFacts("field_order=tt\n").interlaced);
  EXPECT_TRUE(ReadVideoFacts("field_order=bb\n").interlaced);
}

}  // namespace
}  // namespace kelvane
