#include "stabiliser/ToolLines.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace kelvane {
namespace {

// Returns `seconds` with at most six decimals, after a point in every locale; no trailing zeros.
std::string Seconds(double seconds) {
  std::array<char, 64> text{};
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), seconds, std::chars_format::fixed, 6)
          .ptr;
  std::string digits(text.data(), end);
  digits.erase(digits.find_last_not_of('0') + 1);
  if (digits.ends_with('.')) digits.pop_back();
  return digits;
}

// Returns where a tool must seek so that it doesn't miss the key frame before `start`; 0 for the
// beginning. A start near the first picture counts as the beginning: if pictures are stored out of
// order, the tool seeks a little earlier than it is told, and a seek to a time before the first key
// frame may land after it.
double SeekFor(double start, const VideoFacts& facts) {
  constexpr double kLongestGroup = 60;  // seconds between key frames
  constexpr double kNear = 1;           // second
  if (facts.seeksLate) return std::max(start - kLongestGroup, 0.0);
  return start < facts.videoStart + kNear ? 0 : start;
}

// Returns the beginning of a line for ffmpeg, up to the input and the part of it that is read. For
// a file in which a tool may seek too far, the line keeps the file's own time stamps. By default
// the tool counts from the first stream that it uses, which may begin later than the file.
std::string FfmpegOn(const std::string& toolsFolder, const std::string& video,
                     const VideoFacts& facts, const std::optional<Span>& span) {
  // Of several video streams the tool would take the largest, not the first.
  const std::string line = toolsFolder + "/ffmpeg -hide_banner -stats_period 0.1" +
                           (facts.severalVideos ? " -discard:v all -discard:V:0 default" : "");
  if (!span) return line + " -i " + video;
  const double seek = SeekFor(span->start, facts);
  const std::string input = " -i " + video;
  const std::string length = " -t " + Seconds(span->length);
  if (facts.seeksLate) {
    return line + " -copyts -ss " + Seconds(seek) + input + " -ss " +
           Seconds(facts.startTime + span->start) + length;
  }
  const std::string start = " -ss " + Seconds(span->start);
  return line + (seek > 0 ? start + input : input + start) + length;
}

// Returns filters, each with a comma behind it, that join the two fields of an interlaced picture
// and give the pictures a format and a size that every player shows. If the size is odd, the
// stabilising filter of FFmpeg 7.1 ends the tool.
std::string Preparing(const VideoFacts& facts) {
  std::string filters = facts.interlaced ? "yadif," : "";
  if (!facts.plain) filters += "crop=trunc(iw/2)*2:trunc(ih/2)*2,format=yuv420p,";
  return filters;
}

// Returns the option with which the pictures keep their times, for a video that states no rate.
// FFmpeg 5.1 would assume 1,000 pictures a second, and fill an MP4 file up with copies.
std::string Timing(const VideoFacts& facts) { return facts.rate > 0 ? "" : " -fps_mode vfr"; }

}  // namespace

std::string VideoProbeLine(const std::string& toolsFolder, const std::string& video) {
  return toolsFolder +
         "/ffprobe -v error -select_streams V -show_entries "
         "stream=width,height,pix_fmt,field_order,avg_frame_rate,start_time,duration:"
         "stream_tags=DURATION:"
         "format=format_name,start_time,duration -of default=noprint_wrappers=1 " +
         video;
}

// The player begins at the key frame before the start, so the filters cut off what comes before the
// start. They reach the end only if the player reads a little beyond it.
std::string ViewLine(const std::string& toolsFolder, const std::string& video,
                     const VideoFacts& facts, const Span& span) {
  constexpr double kBeyond = 2;  // seconds
  const std::string cut = "trim=start=" + Seconds(facts.startTime + span.start) +
                          ":end=" + Seconds(facts.startTime + span.start + span.length);
  const double seek = SeekFor(span.start, facts);
  return toolsFolder + "/ffplay -hide_banner" + (facts.severalVideos ? " -vst V:0" : "") +
         (seek > 0 ? " -ss " + Seconds(seek) : "") + " -t " +
         Seconds(span.start - seek + span.length + kBeyond) + " -autoexit -vf " + cut + " -af a" +
         cut + " -i " + video;
}

std::string ExtractLine(const std::string& toolsFolder, const std::string& video,
                        const VideoFacts& facts, const Span& span, const std::string& output) {
  std::string filters = Preparing(facts);
  if (!filters.empty()) filters.pop_back();
  return FfmpegOn(toolsFolder, video, facts, span) + (filters.empty() ? "" : " -vf " + filters) +
         Timing(facts) + " -sn -dn -y " + output;
}

std::string DetectLine(const std::string& toolsFolder, const std::string& video,
                       const VideoFacts& facts, const std::optional<Span>& span,
                       const StabiliserOptions& options, const std::string& transforms) {
  return FfmpegOn(toolsFolder, video, facts, span) + " -an -sn -dn -vf " + Preparing(facts) +
         "vidstabdetect=stepsize=" + std::to_string(options.stepsize) +
         ":shakiness=" + std::to_string(options.shakiness) +
         ":accuracy=" + std::to_string(options.accuracy) + ":result=" + transforms + " -f null -";
}

// FFmpeg 7.1's filter writes into pictures that the decoder still needs, unless it gets copies.
std::string TransformLine(const std::string& toolsFolder, const std::string& video,
                          const VideoFacts& facts, const std::optional<Span>& span,
                          const StabiliserOptions& options, const std::string& transforms,
                          const std::string& output) {
  return FfmpegOn(toolsFolder, video, facts, span) + " -vf " + Preparing(facts) +
         "copy,vidstabtransform=input=" + transforms + ":zoom=" + std::to_string(options.zoom) +
         ":optzoom=0:smoothing=" + std::to_string(options.smoothing) +
         ",unsharp=lx=" + std::to_string(options.lx) + ":ly=" + std::to_string(options.ly) +
         Timing(facts) + " -sn -dn -y " + output;
}

}  // namespace kelvane
