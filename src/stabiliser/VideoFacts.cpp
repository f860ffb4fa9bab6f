#include "stabiliser/VideoFacts.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace kelvane {
namespace {

// Returns the number at the beginning of the text; 0 if there is none.
double Number(std::string_view text) {
  double number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

// Returns the value of a text such as "30000/1001"; 0 if the divisor isn't positive.
double Ratio(std::string_view text) {
  const std::size_t slash = text.find('/');
  const double divisor = slash == std::string_view::npos ? 1 : Number(text.substr(slash + 1));
  return divisor > 0 ? Number(text) / divisor : 0;
}

// Returns 0 for a rate of a thousand or more: some files state the rate of their clock, not of
// their pictures.
double RateOrZero(double rate) {
  constexpr double kClock = 1000;
  return rate < kClock ? rate : 0;
}

// Returns the seconds in a text such as "01:02:03.5".
double Sexagesimal(std::string_view text) {
  constexpr double kSixty = 60;
  double whole = 0;
  for (std::size_t colon = text.find(':'); colon != std::string_view::npos;
       colon = text.find(':')) {
    whole = (whole + Number(text)) * kSixty;
    text.remove_prefix(colon + 1);
  }
  return whole + Number(text);
}

// Takes one line into `facts`. The streams' lines come before the file's, which begin with the
// format's name: until then, startTime and duration hold the stream's values.
void Take(VideoFacts& facts, std::string_view key, std::string_view value) {
  if (key == "width") facts.width = static_cast<int>(Number(value));
  if (key == "height") facts.height = static_cast<int>(Number(value));
  if (key == "avg_frame_rate") facts.rate = RateOrZero(Ratio(value));
  if (key == "field_order") {
    facts.interlaced = value == "tt" || value == "bb" || value == "tb" || value == "bt";
  }
  if (key == "pix_fmt") facts.plain = value == "yuv420p" || value == "yuvj420p";
  if (key == "format_name") {
    facts.still = value == "image2" || value.ends_with("_pipe");
    facts.seeksLate = value == "mpegts" || value == "mpeg";
    facts.videoDuration = std::exchange(facts.duration, 0);
    facts.videoStart = std::exchange(facts.startTime, 0);
  }
  if (key == "start_time") facts.startTime = Number(value);
  if (key == "duration") facts.duration = Number(value);
  if (key == "TAG:DURATION") facts.duration = Sexagesimal(value);  // of a Matroska stream
}

}  // namespace

VideoFacts ReadVideoFacts(std::string_view output) {
  VideoFacts facts;
  bool isFurther = false;  // whether the lines are those of a further stream
  while (!output.empty()) {
    const std::string_view line = output.substr(0, output.find('\n'));
    output.remove_prefix(std::min(line.size() + 1, output.size()));
    if (line.starts_with("width=") && facts.HasVideo()) isFurther = facts.severalVideos = true;
    if (line.starts_with("format_name=")) isFurther = false;
    const std::size_t sign = line.find('=');
    if (isFurther || sign == std::string_view::npos) continue;
    Take(facts, line.substr(0, sign), line.substr(sign + 1));
  }
  facts.videoStart = std::max(facts.videoStart - facts.startTime, 0.0);
  facts.plain = facts.plain && facts.width % 2 == 0 && facts.height % 2 == 0;
  return facts;
}

}  // namespace kelvane
