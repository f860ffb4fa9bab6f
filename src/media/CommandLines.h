#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Builds and splits the command lines of the media tools. Text is UTF-8 in every locale. The
// comment on a function says what its command line makes the tool do. `toolsFolder` has no
// separator at its end. Paths are inserted without quotes, so a blank cuts a path: a path that must
// reach the tool whole must be one that can go unquoted (see Module1.h).
namespace kelvane {

// Returns the arguments of a command line, the tool's path first. They are separated by blanks and
// tabs that aren't between double quotes. The quotes are removed, so that "" is an empty argument.
// An unclosed quote extends to the end. An empty or blank line has no arguments.
std::vector<std::string> SplitCommandLine(const std::string& commandLine);

// Returns "width:height:left:top" in source pixels, the order of the crop filter's own arguments.
// Negative and odd numbers are passed on as they are.
std::string CropFilterText(std::int32_t width, std::int32_t height, std::int32_t left,
                           std::int32_t top);

// Makes ffprobe print the "width=" and "height=" lines of the file's streams.
std::string SizeProbeCommandLine(const std::string& toolsFolder, const std::string& videoPath);

// Makes ffprobe describe the file, its "Duration:" included.
std::string DurationProbeCommandLine(const std::string& toolsFolder, const std::string& videoPath);

// Makes ffplay play the cropped video. Blanks around `video` are removed.
std::string PreviewCommandLine(const std::string& toolsFolder, const std::string& video,
                               const std::string& cropFilter);

// Makes ffmpeg write the cropped video to `output`. Blanks around `video` are removed.
std::string CropCommandLine(const std::string& toolsFolder, const std::string& video,
                            const std::string& cropFilter, const std::string& output);

// Makes ffmpeg join the files that `listFile` names, without encoding, and overwrite `output`. If
// `output` is empty, nothing follows "-y".
std::string JoinCommandLine(const std::string& toolsFolder, const std::string& listFile,
                            const std::string& output);

// Makes ffmpeg copy a section into a transport stream and overwrite `intermediate`. Blanks around
// that path are removed, and it alone is put in double quotes.
std::string TransportStreamCommandLine(const std::string& toolsFolder, const std::string& section,
                                       const std::string& intermediate);

}  // namespace kelvane
