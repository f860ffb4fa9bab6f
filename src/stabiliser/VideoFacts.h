#pragma once

#include <string_view>

namespace kelvane {

// What a probe tells about a video file.
struct VideoFacts {
  double duration = 0;       // seconds; 0 if the file has none
  double videoDuration = 0;  // of the video stream alone; 0 if the file doesn't state it
  double startTime = 0;      // the time stamp of its beginning, in seconds
  double videoStart = 0;     // when its first picture is shown, in seconds after startTime
  int width = 0;             // pixels; 0 if the file has no video stream
  int height = 0;
  double rate = 0;          // pictures a second; 0 if unknown
  bool interlaced = false;  // its pictures are made of two fields
  // Its pictures are 4:2:0 with 8 bits and of even size, so that every player shows them.
  bool plain = false;
  bool still = false;  // a picture file
  // A tool that seeks in it may begin at the key frame after the requested time.
  bool seeksLate = false;
  // The probe lists more than one video stream, or one twice. The facts are of the first.
  bool severalVideos = false;

  bool HasVideo() const { return width > 0 && height > 0; }
};

// Reads the output of VideoProbeLine. Ignores lines that it doesn't know.
VideoFacts ReadVideoFacts(std::string_view output);

}  // namespace kelvane
