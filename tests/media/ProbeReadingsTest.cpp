#include "media/ProbeReadings.h"

#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "media/ToolText.h"

namespace kelvane {
namespace {

constexpr std::nullopt_t kNone = std::nullopt;

struct SizeCase {
  const char* name;
  std::string block;
  std::optional<std::string> width;
  std::optional<std::string> height;
  bool usedUp = false;
};

// `usedUp` is true only in blocks whose width has four digits, but not in all of those.
const SizeCase kSizeCases[] = {
    {"width of three digits", "width=720\r\nheight=576\r\n", "720\r\n", "576\r\n"},
    {"height of four digits", "width=640\r\nheight=1080\r\n", "640\r\n", "1080\r\n"},
    {"height of one digit", "width=100\r\nheight=8\r\n", "100\r\n", "8\r\n"},
    {"width of four digits", "width=1920\r\nheight=1080\r\n", "1920\r\n", "1080\r\n", true},
    {"height of three digits", "width=1280\r\nheight=720\r\n", "1280\r\n", "720\r\n", true},
    {"width of five digits", "width=10240\r\nheight=4320\r\n", "10240\r\n", "t=4320\r\n"},
    {"width of two digits", "width=64\r\nheight=48\r\n", "64\r\n", "8\r\n"},
    {"width of one digit", "width=8\r\nheight=480\r\n", "8\r\n", "0\r\n"},
    {"bare line feeds", "width=720\nheight=576\n", "720\n", "76\n"},
    {"bare line feeds after four digits", "width=1920\nheight=1080\n", "1920\n", "1080\n"},
    {"two streams of four digits", "width=1920\r\nheight=1080\r\nwidth=1280\r\nheight=720\r\n",
     "1920\r\n", "1080\r\nwidth1280\r\nheight720\r\n", true},
    {"two streams of three digits", "width=720\r\nheight=576\r\nwidth=640\r\nheight=480\r\n",
     "720\r\n", "576\r\nwidth=640\r\nheight=480\r\n"},
    {"width without a height", "width=1920\r\n", "", kNone},
    {"no digits", "width=", "", kNone},
    {"width and half a word", "width=1920\r\nheigh", "", kNone},
    {"height without a width", "height=1080\r\n", kNone, ""},
    {"height after other words", "some words height=1080\r\n", kNone, "1080\r\n"},
    {"height before the width", "height=1080\r\nwidth=1920\r\n", "", "1920\r\n", true},
    {"nothing", "", kNone, kNone},
    {"no equals signs", "width 1920 height 1080", kNone, kNone},
    {"upper case", "WIDTH=1920\r\nHEIGHT=1080\r\n", "1920\r\n", "1080\r\n", true},
    {"text before the width", "xx width=1920\r\nheight=1080\r\n", "th=1920\r\n", "ght=1080\r\n"},
    {"blanks around the height", "width=720\r\n   height=576   ", "720\r\n   ", "576"},
    {"blanks before line breaks", "width=72 \r\n height=576\r\n ", "72 \r\n ", "576\r\n"},
    {"two line breaks", "width=7200\r\n\r\nheight=576", "7200\r\n\r\n", "ht=576"},
    {"bytes that are no text", "width=\xFF\x80\x01\r\nheight=\xC3\r\n", "\xFF\x80\x01\r\n",
     "\xC3\r\n"},
};

TEST(ReadSize, CutsABlockAtFixedOffsets) {
  for (const auto& [name, block, width, height, usedUp] : kSizeCases) {
    SCOPED_TRACE(name);
    const SizeReading reading = ReadSize(block);
    EXPECT_EQ(reading.width, width);
    EXPECT_EQ(reading.height, height);
    EXPECT_EQ(reading.usedUp, usedUp);
  }
}

using Lengths = std::vector<std::pair<const char*, std::size_t>>;

TEST(EndOfSize, IsAfterTheLineOfTheFirstHeightOrBeforeAWidthThatFollowsOtherText) {
  const Lengths cases = {
      {"width=640\nheight=360\n", 21},
      {"WIDTH=640\r\nHEIGHT=360\r\nwidth=1\nheight=1\n", 23},
      {"x: bad\nheight=1\n\n", 16},
      {"[x] Bad frame.\nwidth=640\nheight=360\n", 15},
      {"[x] Bad frame.\nwidth=", 15},
      {"", 0},
      {"\n", 0},
      {"width=640\n", 0},
      {"width=640\nheight", 0},
      {"width=640\nheight=360", 0},
  };
  for (const auto& [text, length] : cases) EXPECT_EQ(EndOfSize(text), length) << text;
}

TEST(EndOfLine, IsAfterTheFirstLineBreak) {
  const Lengths cases = {{"one\ntwo\n", 4}, {"one\rtwo\n", 4}, {"\n", 1}, {"one", 0}};
  for (const auto& [text, length] : cases) EXPECT_EQ(EndOfLine(text), length) << text;
}

TEST(WidenLineBreaks, PutsACarriageReturnBeforeEachBareLineFeed) {
  const std::vector<std::pair<const char*, const char*>> cases = {
      {"", ""},
      {"a\nb\n", "a\r\nb\r\n"},
      {"\n\n", "\r\n\r\n"},
      {"a\rb\r", "a\rb\r"},
      {"a\r\nb\r\n", "a\r\nb\r\n"},
      {"a\r\r\n\nb", "a\r\r\n\r\nb"},
  };
  for (const auto& [text, wide] : cases) EXPECT_EQ(WidenLineBreaks(text), wide) << text;
}

using Duration = std::optional<std::string>;

struct DurationCase {
  const char* name;
  std::vector<std::string> blocks;
  std::vector<Duration> readings;
};

TEST(DurationReading, IsTheTextAfterTheFirstDurationOfAllBlocks) {
  const std::vector<DurationCase> cases = {
      {"banner", {"Input #0, mov:\n  Duration: 00:01:23.45, start: 0.000000\n"}, {"00:01:23"}},
      {"no word", {"", "a.mp4: No such file\n", "Duration", ""}, {{}, {}, {}, {}}},
      {"word cut in two", {"  Dura", "tion: 00:00:10.00", ""}, {{}, "00:00:10", "00:00:10"}},
      {"value cut in three",
       {"Duration: 00:0", "1:2", "3.45, bitrate", ""},
       {"00:0", "00:01:2", "00:01:23", "00:01:23"}},
      {"word alone", {"Duration:", " ", ""}, {"", "", ""}},
      {"second word in a later block",
       {"Duration: 00:00:10.00\n", "", "Duration: 00:00:20.00\n"},
       {"00:00:10", "00:00:10", "00:00:10"}},
      {"second word in the block",
       {"Duration: 00:00:10.00\nDuration: 00:00:20.00\n"},
       {"00:00:10"}},
      {"unknown duration", {"  Duration: N/A, bitrate: N/A\n"}, {"N/A, bit"}},
      {"upper case", {"DURATION: 00:00:05.00"}, {"00:00:05"}},
      {"lower case", {"duration: 00:00:05.00"}, {"00:00:05"}},
      {"line feed before the value", {"Duration:\n00:00:05.00"}, {"\n00:00:05"}},
      {"blanks around the value", {"Duration:   1:2    x"}, {"1:2"}},
  };
  for (const auto& [name, blocks, readings] : cases) {
    SCOPED_TRACE(name);
    DurationReading reading;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
      EXPECT_EQ(reading.Append(blocks[i]), readings[i]) << blocks[i];
    }
  }
}

TEST(DurationReading, IsTheSameHoweverTheTextIsCut) {
  for (const std::string_view text :
       {"DDuraDuration:  1:2 x", "a\r\nduration: 00:01:23.45, Duration: 7", "on:Duration:",
        "DurDurationDuration:N/A, bitrate: N/A", "Duration :\xC3\xA4 DURATION:00:00:07"}) {
    // After each block, the reading must be that of the same text in a single block.
    const auto append = [text](DurationReading& reading, std::size_t from, std::size_t to) {
      EXPECT_EQ(reading.Append(text.substr(from, to - from)),
                DurationReading().Append(text.substr(0, to)))
          << text << " from " << from << " to " << to;
    };
    DurationReading byteByByte;
    for (std::size_t end = 1; end <= text.size(); ++end) append(byteByByte, end - 1, end);
    for (std::size_t first = 0; first <= text.size(); ++first) {
      for (std::size_t second = first; second <= text.size(); ++second) {
        DurationReading reading;
        append(reading, 0, first);
        append(reading, first, second);
        append(reading, second, text.size());
      }
    }
  }
}

// If each block cost as much as all text before it, 100 MB in small blocks would take longer than
// the time-out of any test.
TEST(DurationReading, CostsTheSameForEachBlock) {
  constexpr int kBlocks = 400'000;
  DurationReading reading;
  const std::string block(256, 'D');
  for (int count = 0; count < kBlocks; ++count) ASSERT_EQ(reading.Append(block), std::nullopt);
  EXPECT_EQ(reading.Append("Duration: 00:00:10"), "00:00:10");
  for (int count = 0; count < kBlocks; ++count) ASSERT_EQ(reading.Append(block), "00:00:10");
}

TEST(ReadPlayedTime, IsTheTimeOfThePictureInALineOfTheStatus) {
  EXPECT_EQ(ReadPlayedTime("   1.25 A-V: -0.500 fd=   0 aq=   12KB vq=  345KB sq=    0B \r"), 1.75);
  EXPECT_EQ(ReadPlayedTime("3661.50 M-V:  0.000 fd=   3 aq=    0KB vq=    0KB sq=    0B \r"),
            3661.5);
  EXPECT_TRUE(std::isnan(*ReadPlayedTime("  93.00 A-V:    nan fd=   0 aq=    0KB vq= 9345KB \r")));
  EXPECT_EQ(ReadPlayedTime("    nan    :  0.000 fd=   0 aq=    0KB vq=    0KB \r"), kNone);
  EXPECT_EQ(ReadPlayedTime("12.34 kb/s"), kNone);
  EXPECT_EQ(ReadPlayedTime("/videos/a fd=1.mp4: Invalid data found when processing input\n"),
            kNone);
  EXPECT_EQ(ReadPlayedTime(""), kNone);
}

TEST(ReadProgress, IsTheTimeOfALineInSeconds) {
  const std::vector<std::pair<const char*, std::optional<double>>> cases = {
      {"frame=   10 fps=0.0 q=-0.0 size=N/A time=00:00:01.23 bitrate=N/A speed=   2x    \r", 1.23},
      {"frame=    1 fps=0.0 q=0.0 size=       0kB time=00:00:00.00 bitrate=N/A speed=   0x", 0},
      {"frame=  180 fps= 10 q=-1.0 Lsize=    2141KiB time=01:02:03.04 bitrate=2923.2kbits/s",
       3723.04},
      {"size=     256kB time=123:00:00.50 bitrate= 128.0kbits/s speed=1e+03x\r", 442800.5},
      {"frame=    3 fps=0.0 q=0.0 size=       0kB time=-00:00:00.04 bitrate=  -0.0kbits/s", 0},
      {"frame=    1 fps=0.0 q=0.0 size=       0kB time=-577014:32:22.77 bitrate=  -0.0kbits/s", 0},
      {"frame=    0 fps=0.0 q=0.0 size=       0KiB time=N/A bitrate=N/A speed=N/A    \r", kNone},
      {"  Duration: 00:00:06.00, start: 0.000000, bitrate: 3891 kb/s\n", kNone},
      {"    creation_time   : 2024-05-01T10:00:00.000000Z\n", kNone},
      {"time=00:00:01.2", kNone},
      {"time=00:00:01 ", kNone},
      {"time=00:-1:01.20 ", kNone},
      {"time=99999999999999999999:00:01.20 ", kNone},
      {"time=", kNone},
      {"", kNone},
  };
  for (const auto& [line, seconds] : cases) EXPECT_EQ(ReadProgress(line), seconds) << line;
}

TEST(ReadProgress, IsTheSameHoweverTheTextArrivesIfItIsReadLineByLine) {
  const std::string printed = "frame=1 time=00:00:01.23 bitrate=N/A\rframe=2 time=00:00:04.56 b\r";
  for (std::size_t cut = 0; cut <= printed.size(); ++cut) {
    ToolText text;
    std::vector<std::optional<double>> readings;
    for (const std::string& part : {printed.substr(0, cut), printed.substr(cut)}) {
      text.Append(part);
      while (const auto block = text.NextBlock(EndOfLine, {})) {
        readings.push_back(ReadProgress(*block));
      }
    }
    EXPECT_EQ(readings, (std::vector<std::optional<double>>{1.23, 4.56})) << cut;
  }
}

struct ComplaintCase {
  const char* name;
  const char* text;
  const char* complaint;
};

TEST(LastComplaint, IsTheLastLineThatSaysWhatWentWrong) {
  // The cases that name a release have what that ffmpeg prints at the end of a run that fails,
  // without some repeated lines.
  const std::vector<ComplaintCase> cases = {
      {"input missing, 5.1",
       "ffmpeg stats and -progress period set to 0.1.\n"
       "a.mp4: No such file or directory\n",
       "a.mp4: No such file or directory"},
      {"input missing, 7.1",
       "[in#0 @ 0x55a2d0f34fc0] Error opening input: No such file or directory\n"
       "Error opening input file a.mp4.\n"
       "Error opening input files: No such file or directory\n",
       "Error opening input: No such file or directory"},
      {"input is no video, 5.1",
       "[mov,mp4,m4a,3gp,3g2,mj2 @ 0x555f911f7480] moov atom not found\n"
       "a.mp4: Invalid data found when processing input\n",
       "a.mp4: Invalid data found when processing input"},
      {"filter missing, 5.1",
       "Press [q] to stop, [?] for help\n"
       "[AVFilterGraph @ 0x55b7f7c8f100] No such filter: 'vidstabdetect'\n"
       "Error reinitializing filters!\n"
       "Failed to inject frame into filter network: Invalid argument\n"
       "Error while processing the decoded data for stream #0:0\n"
       "Conversion failed!\n",
       "No such filter: 'vidstabdetect'"},
      {"filter missing, 7.1",
       "[AVFilterGraph @ 0x56129d0e7380] No such filter: 'vidstabdetect'\n"
       "Error opening output file -.\n"
       "Error opening output files: Filter not found\n",
       "No such filter: 'vidstabdetect'"},
      {"format unknown, 5.1",
       "    Metadata:\n"
       "      handler_name    : SoundHandler\n"
       "[NULL @ 0x55bba2fdd540] Unable to find a suitable output format for 'a.txx'\n"
       "a.txx: Invalid argument\n",
       "Unable to find a suitable output format for 'a.txx'"},
      {"format unknown, 7.1",
       "[AVFormatContext @ 0x55fc27ac4040] Unable to choose an output format for 'a.txx'; use a "
       "standard extension for the filename or specify the format manually.\n"
       "[out#0 @ 0x55fc27a726c0] Error initializing the muxer for a.txx: Invalid argument\n"
       "Error opening output file a.txx.\n"
       "Error opening output files: Invalid argument\n",
       "Unable to choose an output format for 'a.txx'; use a standard extension for the filename "
       "or "
       "specify the format manually."},
      {"encoding doesn't fit the format, 5.1",
       "[webm @ 0x55b06f0a65c0] Only VP8 or VP9 or AV1 video and Vorbis or Opus audio and WebVTT "
       "subtitles are supported for WebM.\n"
       "Could not write header for output file #0 (incorrect codec parameters ?): Invalid "
       "argument\n"
       "Error initializing output stream 0:1 -- \n"
       "Stream mapping:\n"
       "  Stream #0:0 -> #0:0 (copy)\n"
       "    Last message repeated 1 times\n",
       "Only VP8 or VP9 or AV1 video and Vorbis or Opus audio and WebVTT subtitles are supported "
       "for "
       "WebM."},
      {"disk full, 5.1",
       "av_interleaved_write_frame(): No space left on device\n"
       "    Last message repeated 5 times\n"
       "Error writing trailer of a.mp4: No space left on device\n"
       "frame=  109 fps=0.0 q=24.8 Lsize=     100kB time=00:00:03.68 bitrate= 222.4kbits/s    \r"
       "video:225kB audio:29kB subtitle:0kB other streams:0kB muxing overhead: unknown\n"
       "Error closing file a.mp4: No space left on device\n"
       "[libx264 @ 0x55aabe6be3c0] kb/s:776.16\n"
       "[aac @ 0x55aabe6ba2c0] Qavg: 109.716\n"
       "Conversion failed!\n",
       "Error closing file a.mp4: No space left on device"},
      {"disk full, 7.1",
       "[out#0/mp4 @ 0x5625f70b46c0] Error muxing a packet\n"
       "[out#0/mp4 @ 0x5625f70b46c0] Task finished with error code: -28 (No space left on device)\n"
       "[out#0/mp4 @ 0x5625f70b46c0] Error writing trailer: No space left on device\n"
       "[out#0/mp4 @ 0x5625f70b46c0] Error closing file: No space left on device\n"
       "[out#0/mp4 @ 0x5625f70b46c0] video:237KiB audio:42KiB muxing overhead: unknown\n"
       "frame=   55 fps=0.0 q=24.8 Lsize=     100KiB time=00:00:01.80 bitrate= 455.1kbits/s    \n"
       "Conversion failed!\n",
       "Error closing file: No space left on device"},
      {"encoder missing, 7.1",
       "[vost#0:0 @ 0x56b620580] Unknown encoder 'libx264'\n"
       "[vost#0:0 @ 0x56b620580] Error selecting an encoder\n"
       "Error opening output files: Encoder not found\n",
       "Unknown encoder 'libx264'"},
      {"disk full at the beginning, 5.1",
       "Could not write header for output file #0 (incorrect codec parameters ?): No space left on "
       "device\n"
       "Error initializing output stream 0:0 -- \n"
       "[aac @ 0x5647722502c0] 2 frames left in the queue on closing\n"
       "Conversion failed!\n",
       "Could not write header for output file #0 (incorrect codec parameters ?): No space left on "
       "device"},
      {"disk of the transforms full, 7.1",
       "[Parsed_vidstabdetect_0 @ 0x7f9a7c001b80] cannot write to transform fileError while "
       "filtering: No space left on device\n"
       "[vf#0:0 @ 0x561ea79642c0] Task finished with error code: -28 (No space left on device)\n"
       "[vf#0:0 @ 0x561ea79642c0] Terminating thread with return code -28 (No space left on "
       "device)\n"
       "Conversion failed!\n",
       "cannot write to transform fileError while filtering: No space left on device"},
      {"transforms missing, 7.1",
       "[Parsed_vidstabtransform_0 @ 0x7fefe8001b80]     invert    = False\n"
       "[Parsed_vidstabtransform_0 @ 0x7fefe8001b80] cannot open input file a.trf\n"
       "[Parsed_vidstabtransform_0 @ 0x7fefe8001b80] Failed to configure input pad on Parsed_0\n"
       "[vf#0:0 @ 0x55ad3fe2a1c0] Error reinitializing filters!\n"
       "[vf#0:0 @ 0x55ad3fe2a1c0] Task finished with error code: -2 (No such file or directory)\n"
       "[vost#0:0/libx264 @ 0x55ad3fe7c580] Could not open encoder before EOF\n"
       "[out#0/mp4 @ 0x55ad3fe2a6c0] Nothing was written into output file, because at least one of "
       "its streams received no packets.\n"
       "frame=    0 fps=0.0 q=0.0 Lsize=       0KiB time=N/A bitrate=N/A speed=N/A    \n"
       "Conversion failed!\n",
       "cannot open input file a.trf"},
      {"folder in place of the file, 5.1", "a.mp4: Is a directory\n", "a.mp4: Is a directory"},
      {"an earlier complaint about a stream that isn't used",
       "[mov @ 0x1] Unsupported codec with id 0 for input stream 2\n"
       "a.mp4: Permission denied\n",
       "a.mp4: Permission denied"},
      {"library missing",
       "ffmpeg: error while loading shared libraries: libx.so: cannot open shared object file\n",
       "ffmpeg: error while loading shared libraries: libx.so: cannot open shared object file"},
      {"no line break", "Error one\nError two", "Error two"},
      {"killed while it encodes",
       "Input #0, mov,mp4,m4a,3gp,3g2,mj2, from 'failed takes.mp4':\n"
       "    title           : Unknown errors\n"
       "Output #0, mp4, to 'error.mp4':\n"
       "frame=   10 fps=0.0 q=-0.0 size=N/A time=00:00:01.23 bitrate=N/A speed=   2x    \r",
       ""},
      {"ended by a signal",
       "[libx264 @ 0x564353c74a80] kb/s:769.95\n"
       "Exiting normally, received signal 15.\n",
       ""},
      {"consequences without their cause",
       "Failed to inject frame into filter network: Invalid argument\n"
       "Error while processing the decoded data for stream #0:0\n"
       "Conversion failed!\n",
       "Failed to inject frame into filter network: Invalid argument"},
      {"a bracket without its counterpart", "[error\n", "[error"},
      {"nothing", "", ""},
  };
  for (const auto& [name, text, complaint] : cases)
    EXPECT_EQ(LastComplaint(text), complaint) << name;
}

TEST(LastComplaint, IsLookedForInTheLast64Kibibytes) {
  const std::string much(1 << 16, '\n');
  EXPECT_EQ(LastComplaint("Error one\n" + much.substr(10)), "Error one");
  EXPECT_EQ(LastComplaint("Error one\n" + much), "");
}

}  // namespace
}  // namespace kelvane
