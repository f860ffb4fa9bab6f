#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The command lines of the media tools, put together and taken apart. Text is bytes in the system's
// narrow encoding. Paths go on the lines as they are, a blank in one cuts it: what must arrive
// whole must be able to stand bare (see Module1.h).
namespace kelvane {

// The arguments of a command line, the tool's path first: cut at blanks and tabs; a double quote
// groups what follows up to the next one and vanishes, so that "" gives an empty argument. An open
// quote groups to the end. An empty or blank line gives no argument.
std::vector<std::string> SplitCommandLine(const std::string& commandLine);

// "width:height:left:top" in source pixels, the order of the crop filter's own arguments. Negative
// and odd numbers go out as they are.
std::string CropFilterText(std::int32_t width, std::int32_t height, std::int32_t left,
                           std::int32_t top);

// Prints "width=" and "height=" lines of the video's streams.
std::string SizeProbeCommandLine(const std::string& toolsFolder, const std::string& videoPath);

// Prints the banner with its "Duration:" text.
std::string DurationProbeCommandLine(const std::string& toolsFolder, const std::string& videoPath);

// Plays the cropped picture. The blanks round `video` are dropped.
std::string PreviewCommandLine(const std::string& toolsFolder, const std::string& video,
                               const std::string& cropFilter);

// Writes the cropped picture to `output`, which goes on the line as it is: a blank in it cuts it.
// The blanks round `video` are dropped.
std::string CropCommandLine(const std::string& toolsFolder, const std::string& video,
                            const std::string& cropFilter, const std::string& output);

// Copies the files that `listFile` names into one. An empty `output` leaves nothing behind "-y".
std::string JoinCommandLine(const std::string& toolsFolder, const std::string& listFile,
                            const std::string& output);

// Wraps a section anew as a transport stream. The blanks round `intermediate` are dropped, and it
// is the one path of all that stands in double quotes.
std::string TransportStreamCommandLine(const std::string& toolsFolder, const std::string& section,
                                       const std::string& intermediate);

}  // namespace kelvane
