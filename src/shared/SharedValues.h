#pragma once

#include <QString>
#include <cstdint>

// Values that the windows share. They belong to the user-interface thread.
namespace kelvane {

// Short path of the loaded video.
extern QString VideoPath;

// The duration last read, of the main window's video or of the joiner's newest section, as
// "hh:mm:ss" in whole seconds, rounded down. Empty until one is read; the text after "Duration:"
// if it isn't a time.
extern QString VideoDuration;

// Whether the tools' output is read as the duration probe's; it is read as the size probe's if not.
extern bool ProbeDimensionsDone;

// The crop region in source pixels. Negative and odd values are passed on as they are.
extern std::int32_t CropWidth;
extern std::int32_t CropHeight;
extern std::int32_t CropLeft;
extern std::int32_t CropTop;

// Those four with colons between, as of the last preview or crop; "0" after a reset.
extern QString CropFilter;

// The new file last chosen for a crop.
extern QString OutputPath;

// True while the main window is minimised.
extern bool MainWindowMinimised;

}  // namespace kelvane
