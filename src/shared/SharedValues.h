#pragma once

#include <QString>
#include <cstdint>

// Values that the windows share. They belong to the user-interface thread.
namespace kelvane {

// The path of the loaded video as GetShortFileName returns it.
extern QString VideoPath;

// The duration last read, as "hh:mm:ss" in whole seconds, rounded down; if the text after
// "Duration:" isn't a time, the beginning of that text. The joiner sets it to the duration of the
// section added last. The main window sets it to the first duration that its tools have printed
// since the window was made, even if another video is loaded later. Empty until one is read, and
// after a reset.
extern QString VideoDuration;

// Whether the main window reads its tools' output as the duration probe's, not the size probe's.
extern bool ProbeDimensionsDone;

// The crop region in source pixels. Negative and odd values are passed on as they are.
extern std::int32_t CropWidth;
extern std::int32_t CropHeight;
extern std::int32_t CropLeft;
extern std::int32_t CropTop;

// "width:height:left:top" of the crop region at the last preview or crop; "0" after a reset.
extern QString CropFilter;

// The path of the new file last chosen for a crop.
extern QString OutputPath;

// True while the main window is minimised.
extern bool MainWindowMinimised;

}  // namespace kelvane
