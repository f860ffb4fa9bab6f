#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Builds and splits the command lines of the media tools. Text is bytes in the system's narrow
// encoding. `toolsFolder` has no separator at its end. A path is inserted as it is and a blank cuts
// it, so one that must arrive whole must be able to go unquoted (see Module1.h).
namespace kelvane {

// Returns the arguments of a command line, the tool's path first. They are separated by blanks and
// tabs that aren't between double quotes. The quotes are removed, so that "" is an empty argument.
// An open quote reaches to the end. An empty or blank line has no arguments.
std::vector<std::string> SplitCommandLine(const std::string& commandLine);

// Returns "width:height:left:top" in source pixels, the order of the crop filter's own arguments.
// Negative and odd numbers are passed on as they are.
std::string CropFilterText(std::int32_t width, std::int32_t height, std::int32_t left,
                           std::int32_t top);

// Makes ffprobe print the "width=" and "height=" lines of the file's streams.
std::string SizeProbeCommandLine(const std::string& toolsFolder, const std::string& videoPath);

// Makes ffprobe describe the file, its "Duration:" included.
std::string DurationProbeCommandLine(const std::string& toolsFolder, const std::string& videoPath);

// Makes ffplay play the cropped video. `video` is trimmed.
std::string PreviewCommandLine(const std::string& toolsFolder, const std::string& video,
                               const std::string& cropFilter);

// Makes ffmpeg write the cropped video to `output`. `video` is trimmed.
std::string CropCommandLine(const std::string& toolsFolder, const std::string& video,
                            const std::string& cropFilter, const std::string& output);

// Makes ffmpeg copy the files that `listFile` names into one, which replaces `output`. If `output`
// is empty, nothing follows "-y".
std::string JoinCommandLine(const std::string& toolsFolder, const std::string& listFile,
                            const std::string& output);

// Makes ffmpeg copy a section into a transport stream, which replaces `intermediate`. That path is
// trimmed, and is the only one in double quotes.
std::string TransportStreamCommandLine(const std::string& toolsFolder, const std::string& section,
                                       const std::string& intermediate);

}  // namespace kelvane
