// A command line is cut into arguments: by a machine of pieces, and back again from arguments that
// are known.
#include "media/CommandLines.h"

#include "Input.h"
#include "PlainText.h"
#include "Target.h"

namespace kelvane::fuzz {
namespace {

using Arguments = std::vector<std::string>;

bool Cuts(char c) { return c == ' ' || c == '\t'; }

// The arguments as they are read by eye: from what doesn't cut, pieces in quotes and pieces
// without.
Arguments Cut(std::string_view line) {
  Arguments arguments;
  std::size_t place = 0;
  while (true) {
    while (place < line.size() && Cuts(line[place])) ++place;
    if (place == line.size()) return arguments;
    std::string argument;
    while (place < line.size() && !Cuts(line[place])) {
      if (line[place] != '"') {
        argument += line[place++];
        continue;
      }
      const std::size_t end = std::min(line.find('"', place + 1), line.size());
      argument += line.substr(place + 1, end - place - 1);
      place = std::min(end + 1, line.size());
    }
    arguments.push_back(argument);
  }
}

std::string Listed(const Arguments& arguments) {
  std::string list;
  for (const std::string& argument : arguments) list += '[' + Readable(argument) + ']';
  return list;
}

void AgreeOnArguments(const std::string& line, const Arguments& expected) {
  AgreeOn("arguments of " + Readable(line), Listed(SplitCommandLine(line)), Listed(expected));
}

// Quoted or not, with one cut or several between: what went on the line comes off it.
void PutTogetherAndCut(std::string_view bytes) {
  Input input(bytes);
  std::string line;
  Arguments arguments;
  while (!input.AtEnd()) {
    const unsigned look = input.Byte();
    std::string argument(input.Take(look % 16));
    std::erase(argument, '"');
    const bool bare = argument.find_first_of(" \t") == std::string::npos && !argument.empty();
    line += std::string(1 + look / 16 % 3, look % 2 == 0 ? ' ' : '\t');
    line += bare && look < 128 ? argument : '"' + argument + '"';
    arguments.push_back(argument);
  }
  AgreeOnArguments(line, arguments);
}

// A path that stands bare is the argument behind "-i", and the blanks round it are dropped.
void PreviewOf(std::string_view bytes) {
  std::string video(bytes);
  std::erase_if(video, [](char c) { return c == '\t' || c == '"'; });
  const std::string trimmed = TrimBlanks(video);
  if (trimmed.empty() || trimmed.find(' ') != std::string::npos) return;
  AgreeOnArguments(PreviewCommandLine("/t", video, "1:2:3:4"),
                   {"/t/ffplay", "-i", trimmed, "-vf", "crop=1:2:3:4"});
  AgreeOnArguments(CropCommandLine("/t", video, "1:2:3:4", "/o.mp4"),
                   {"/t/ffmpeg", "-i", trimmed, "-vf", "crop=1:2:3:4", "/o.mp4"});
  AgreeOnArguments(TransportStreamCommandLine("/t", "/s.mp4", video),
                   {"/t/ffmpeg", "-i", "/s.mp4", "-c", "copy", "-bsf:v", "h264_mp4toannexb", "-f",
                    "mpegts", "-y", trimmed});
}

void Run(std::string_view input) {
  AgreeOnArguments(std::string(input), Cut(input));
  PutTogetherAndCut(input);
  PreviewOf(input);
}

}  // namespace

const Target kCommandLine = {"CommandLine", Run};

}  // namespace kelvane::fuzz
