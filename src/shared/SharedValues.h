#pragma once

#include <QString>
#include <cstdint>

// The module-level values that the windows share. All of them belong to the user-interface thread.
namespace kelvane {

// Short path of the loaded video.
extern QString VideoPath;

// The duration last read, of the main window's video or of the joiner's newest section, as
// "hh:mm:ss" in whole seconds, rounded down. Empty until one is read; the text behind "Duration:"
// if that is no time.
extern QString VideoDuration;

// False while the tools' output is to be read as the size probe's, true while as the duration
// probe's.
extern bool ProbeDimensionsDone;

// The crop region in source pixels. Negative and odd values are passed on as they are.
extern std::int32_t CropWidth;
extern std::int32_t CropHeight;
extern std::int32_t CropLeft;
extern std::int32_t CropTop;

// Those four in that order, separated by colons, as of the last preview or crop command.
extern QString CropFilter;

// The file last chosen in the save dialog.
extern QString OutputPath;

// True while the main window is minimised.
extern bool MainWindowMinimised;

}  // namespace kelvane
