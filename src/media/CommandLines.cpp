#include "media/CommandLines.h"

#include "media/Trim.h"

namespace kelvane {

std::vector<std::string> SplitCommandLine(const std::string& commandLine) {
  std::vector<std::string> arguments;
  bool inArgument = false;
  bool inQuotes = false;
  for (const char c : commandLine) {
    if (!inQuotes && (c == ' ' || c == '\t')) {
      inArgument = false;
      continue;
    }
    if (!inArgument) {
      arguments.emplace_back();
      inArgument = true;
    }
    if (c == '"') {
      inQuotes = !inQuotes;
    } else {
      arguments.back() += c;
    }
  }
  return arguments;
}

std::string CropFilterText(std::int32_t width, std::int32_t height, std::int32_t left,
                           std::int32_t top) {
  return std::to_string(width) + ':' + std::to_string(height) + ':' + std::to_string(left) + ':' +
         std::to_string(top);
}

std::string SizeProbeCommandLine(const std::string& toolsFolder, const std::string& videoPath) {
  return toolsFolder +
         "/ffprobe -v error -show_entries stream=width,height -of default=noprint_wrappers=1 " +
         videoPath;
}

std::string DurationProbeCommandLine(const std::string& toolsFolder, const std::string& videoPath) {
  return toolsFolder + "/ffprobe -hide_banner -stats -i " + videoPath;
}

std::string PreviewCommandLine(const std::string& toolsFolder, const std::string& video,
                               const std::string& cropFilter) {
  return toolsFolder + "/ffplay -i " + std::string(Trim(video)) + " -vf crop=" + cropFilter;
}

std::string CropCommandLine(const std::string& toolsFolder, const std::string& video,
                            const std::string& cropFilter, const std::string& output) {
  return toolsFolder + "/ffmpeg -i " + std::string(Trim(video)) + " -vf crop=" + cropFilter + ' ' +
         output;
}

std::string JoinCommandLine(const std::string& toolsFolder, const std::string& listFile,
                            const std::string& output) {
  return toolsFolder + "/ffmpeg -f concat -safe 0 -i " + listFile + " -c copy -y " + output;
}

std::string TransportStreamCommandLine(const std::string& toolsFolder, const std::string& section,
                                       const std::string& intermediate) {
  return toolsFolder + "/ffmpeg -i " + section +
         " -c copy -bsf:v h264_mp4toannexb -f mpegts -y \"" + std::string(Trim(intermediate)) + '"';
}

}  // namespace kelvane
