#pragma once

#include <optional>
#include <string>

#include "stabiliser/Options.h"
#include "stabiliser/VideoFacts.h"

// Builds the command lines of the stabiliser's tools. All paths must be ones that can go unquoted
// (see media/Module1.h), and `transforms` must have none of \ ' : , ; [ ], like the paths that
// PrivateWorkFile returns. `toolsFolder` has no trailing separator. Spans must start in the video
// and must not be empty. The comment on each function says what its command line makes the tool do.
namespace kelvane {

// A part of a video, in seconds from its beginning.
struct Span {
  double start;
  double length;
};

// Makes ffprobe print the lines that ReadVideoFacts reads.
std::string VideoProbeLine(const std::string& toolsFolder, const std::string& video);

// Makes ffplay play the part and end.
std::string ViewLine(const std::string& toolsFolder, const std::string& video,
                     const VideoFacts& facts, const Span& span);

// Makes ffmpeg write the part to `output`, encoded anew.
std::string ExtractLine(const std::string& toolsFolder, const std::string& video,
                        const VideoFacts& facts, const Span& span, const std::string& output);

// Makes ffmpeg write the motions of the pictures to `transforms`: of those in `span` if there is
// one.
std::string DetectLine(const std::string& toolsFolder, const std::string& video,
                       const VideoFacts& facts, const std::optional<Span>& span,
                       const StabiliserOptions& options, const std::string& transforms);

// Makes ffmpeg write the video without the motions in `transforms` to `output`: the part `span` if
// there is one.
std::string TransformLine(const std::string& toolsFolder, const std::string& video,
                          const VideoFacts& facts, const std::optional<Span>& span,
                          const StabiliserOptions& options, const std::string& transforms,
                          const std::string& output);

}  // namespace kelvane
