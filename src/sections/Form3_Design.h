#pragma once

#include <array>

#include "platform/Form.h"
#include "shared/Colours.h"

// The section window as designed. Places are in twips. Form_Load changes those of the strip
// Picture3(1) and of Picture6, and sets the ends of Line7 and Line8; drags set Line8 as well.
// Form_Resize sets the ends of Line4 to Line6.
namespace kelvane {

constexpr QRgb kPale = 0xE0E0E0;
constexpr QRgb kNeedleGreen = 0x00C000;
constexpr QRgb kNeedleRed = 0xC00000;
constexpr QRgb kTimeLineOrange = 0xC04000;

constexpr FormDesign kForm3 = {.name = "Form3",
                               .caption = "Advanced 2-Pass Video Stabilization",
                               .clientWidth = 16080,
                               .clientHeight = 14445,
                               .backColor = kDark,
                               .labelColor = kLight,
                               .scale = ScaleMode::kPixels};

// Front to back.
// clang-format off
using enum ControlClass;
constexpr auto kForm3Controls = std::to_array<ControlDesign>({
    {.name = "Text1", .controlClass = kTextBox, .place = {4200, 240, 9615, 375}, .color = kDark, .bordered = true, .editable = true, .meaning = "Video to extract a section from"},

    {.name = "Picture1", .controlClass = kPictureBox, .place = {2040, 9000, 6135, 3015}, .visible = false, .color = kNeedleGreen, .bordered = true},
    {.name = "Text4", .controlClass = kTextBox, .place = {2040, 600, 1215, 315}, .caption = "4825", .container = "Picture1", .color = kDark},
    {.name = "Text3", .controlClass = kTextBox, .place = {2040, 1080, 1215, 315}, .container = "Picture1", .color = kDark},
    {.name = "Text2", .controlClass = kTextBox, .place = {2040, 1560, 1215, 315}, .caption = "00:00:00", .container = "Picture1", .color = kDark},
    {.name = "Label5", .controlClass = kLabel, .place = {240, 2040, 3495, 255}, .caption = "01:20:25   = 4,825 seconds\t", .container = "Picture1"},
    {.name = "Label4(0)", .controlClass = kLabel, .place = {240, 600, 1695, 255}, .caption = "video duration", .container = "Picture1"},
    {.name = "Label4(1)", .controlClass = kLabel, .place = {240, 1080, 1695, 255}, .caption = "time line width", .container = "Picture1"},

    {.name = "Picture3(0)", .controlClass = kPictureBox, .place = {600, 840, 13215, 1095}, .color = kDark, .bordered = true, .meaning = "Time line"},
    {.name = "HScroll1", .controlClass = kHScrollBar, .place = {0, 1560, 12135, 255}, .container = "Picture3(0)", .role = SpokenRole::kNothing},
    {.name = "Picture3(1)", .controlClass = kPictureBox, .place = {0, 0, 13215, 615}, .container = "Picture3(0)", .color = kCanvasGrey},
    {.name = "Picture4(0)", .controlClass = kPictureBox, .place = {120, 300, 75, 225}, .container = "Picture3(1)", .color = kNeedleGreen, .pointer = MousePointer::kSizeWestEast, .meaning = "Start of the section", .role = SpokenRole::kHorizontalBar},
    {.name = "Picture4(1)", .controlClass = kPictureBox, .place = {2040, 300, 75, 225}, .container = "Picture3(1)", .color = kNeedleRed, .pointer = MousePointer::kSizeWestEast, .meaning = "End of the section", .role = SpokenRole::kHorizontalBar},
    {.name = "Line8", .controlClass = kLine, .place = {0, 0, 0, 0}, .container = "Picture3(1)", .color = kPale},
    {.name = "Line7", .controlClass = kLine, .place = {0, 0, 0, 0}, .container = "Picture3(1)", .color = kTimeLineOrange},
    {.name = "Line3(0)", .controlClass = kLine, .place = {150, 0, 0, 600}, .container = "Picture3(1)", .color = kGrey},
    {.name = "Line3(1)", .controlClass = kLine, .place = {2070, 0, 0, 600}, .container = "Picture3(1)", .color = kGrey},
    {.name = "Picture5", .controlClass = kPictureBox, .place = {0, 600, 13215, 375}, .container = "Picture3(0)", .color = kDark},
    {.name = "Picture6", .controlClass = kPictureBox, .place = {6480, 120, 135, 255}, .container = "Picture5", .visible = false, .color = kCanvasGrey, .pointer = MousePointer::kSizeWestEast},
    {.name = "Label7(0)", .controlClass = kLabel, .place = {120, 120, 255, 255}, .caption = "<", .container = "Picture5", .color = kCanvasGrey, .centred = true, .bordered = true, .meaning = "Towards the start of the time line", .role = SpokenRole::kCommand},
    {.name = "Label7(1)", .controlClass = kLabel, .place = {12840, 120, 255, 255}, .caption = ">", .container = "Picture5", .color = kCanvasGrey, .centred = true, .bordered = true, .meaning = "Towards the end of the time line", .role = SpokenRole::kCommand},
    {.name = "Shape3", .controlClass = kShape, .place = {105, 120, 13005, 255}, .container = "Picture5", .color = kGrey},

    {.name = "Picture8", .controlClass = kPictureBox, .place = {600, 2400, 13215, 855}, .color = kDark, .bordered = true},
    {.name = "pbar(2)", .controlClass = kProgressBar, .place = {5640, 480, 7335, 180}, .container = "Picture8", .meaning = "Extracting Video Section"},
    {.name = "Label13", .controlClass = kLabel, .place = {120, 0, 4935, 255}, .caption = "Extract short section of Video to test Stabilization Settings", .container = "Picture8"},
    {.name = "Label14(1)", .controlClass = kLabel, .place = {120, 360, 2415, 255}, .caption = "View Selected Region ", .container = "Picture8", .centred = true, .bordered = true},
    {.name = "Label14(0)", .controlClass = kLabel, .place = {2880, 360, 2415, 255}, .caption = "Extract Selected Region ", .container = "Picture8", .centred = true, .bordered = true},
    {.name = "Label15(0)", .controlClass = kLabel, .place = {5640, 240, 2655, 255}, .caption = "Extracting Video Section Progress:", .container = "Picture8"},
    {.name = "Label15(1)", .controlClass = kLabel, .place = {8280, 240, 855, 255}, .caption = "00.00%", .container = "Picture8", .meaning = "Extracting Video Section"},

    // The options: track, thumb and outline.
    {.name = "Picture2(0)", .controlClass = kPictureBox, .place = {3120, 3600, 8055, 375}, .color = kDark, .twips = true},
    {.name = "Shape2(0)", .controlClass = kShape, .place = {719, -1, 137, 377}, .container = "Picture2(0)", .color = kPale},
    {.name = "Label1(0)", .controlClass = kLabel, .place = {720, 0, 135, 375}, .container = "Picture2(0)", .color = kCanvasGrey, .meaning = "Step Size", .role = SpokenRole::kThumb, .readOut = "Label2(1)"},
    {.name = "Picture2(1)", .controlClass = kPictureBox, .place = {3120, 4080, 8055, 375}, .color = kDark, .twips = true},
    {.name = "Shape2(1)", .controlClass = kShape, .place = {719, -1, 137, 377}, .container = "Picture2(1)", .color = kPale},
    {.name = "Label1(1)", .controlClass = kLabel, .place = {720, 0, 135, 375}, .container = "Picture2(1)", .color = kCanvasGrey, .meaning = "Shakiness", .role = SpokenRole::kThumb, .readOut = "Label2(3)"},
    {.name = "Picture2(2)", .controlClass = kPictureBox, .place = {3120, 4560, 8055, 375}, .color = kDark, .twips = true},
    {.name = "Shape2(2)", .controlClass = kShape, .place = {719, -1, 137, 377}, .container = "Picture2(2)", .color = kPale},
    {.name = "Label1(2)", .controlClass = kLabel, .place = {720, 0, 135, 375}, .container = "Picture2(2)", .color = kCanvasGrey, .meaning = "Accuracy", .role = SpokenRole::kThumb, .readOut = "Label2(5)"},
    {.name = "Picture2(3)", .controlClass = kPictureBox, .place = {3120, 5040, 8055, 375}, .color = kDark, .twips = true},
    {.name = "Shape2(3)", .controlClass = kShape, .place = {719, -1, 137, 377}, .container = "Picture2(3)", .color = kPale},
    {.name = "Label1(3)", .controlClass = kLabel, .place = {720, 0, 135, 375}, .container = "Picture2(3)", .color = kCanvasGrey, .meaning = "Zoom", .role = SpokenRole::kThumb, .readOut = "Label2(7)"},
    {.name = "Picture2(4)", .controlClass = kPictureBox, .place = {3120, 5520, 8055, 375}, .color = kDark, .twips = true},
    {.name = "Shape2(4)", .controlClass = kShape, .place = {719, -1, 137, 377}, .container = "Picture2(4)", .color = kPale},
    {.name = "Label1(4)", .controlClass = kLabel, .place = {720, 0, 135, 375}, .container = "Picture2(4)", .color = kCanvasGrey, .meaning = "Smoothing", .role = SpokenRole::kThumb, .readOut = "Label2(9)"},
    {.name = "Picture2(5)", .controlClass = kPictureBox, .place = {3120, 6000, 8055, 375}, .color = kDark, .twips = true},
    {.name = "Shape2(5)", .controlClass = kShape, .place = {719, -1, 137, 377}, .container = "Picture2(5)", .color = kPale},
    {.name = "Label1(5)", .controlClass = kLabel, .place = {720, 0, 135, 375}, .container = "Picture2(5)", .color = kCanvasGrey, .meaning = "UnSharp LX", .role = SpokenRole::kThumb, .readOut = "Label2(11)"},
    {.name = "Picture2(6)", .controlClass = kPictureBox, .place = {3120, 6480, 8055, 375}, .color = kDark, .twips = true},
    {.name = "Shape2(6)", .controlClass = kShape, .place = {719, -1, 137, 377}, .container = "Picture2(6)", .color = kPale},
    {.name = "Label1(6)", .controlClass = kLabel, .place = {720, 0, 135, 375}, .container = "Picture2(6)", .color = kCanvasGrey, .meaning = "UnSharp LY", .role = SpokenRole::kThumb, .readOut = "Label2(13)"},

    {.name = "Picture7(0)", .controlClass = kPictureBox, .place = {600, 7320, 13215, 3735}, .color = kDark, .bordered = true},
    {.name = "Picture7(1)", .controlClass = kPictureBox, .place = {120, 120, 4935, 3135}, .container = "Picture7(0)", .color = kDark, .bordered = true},
    {.name = "wmp", .controlClass = kWindowsMediaPlayer, .place = {120, 120, 4695, 2775}, .container = "Picture7(1)", .meaning = "Video"},
    {.name = "Label10(0)", .controlClass = kLabel, .place = {120, 3360, 1095, 255}, .caption = "Play", .container = "Picture7(0)", .centred = true, .bordered = true},
    {.name = "Label10(1)", .controlClass = kLabel, .place = {1320, 3360, 1095, 255}, .caption = "Pause", .container = "Picture7(0)", .centred = true, .bordered = true},
    {.name = "Label10(2)", .controlClass = kLabel, .place = {2520, 3360, 1095, 255}, .caption = "Stop", .container = "Picture7(0)", .centred = true, .bordered = true},
    {.name = "Label10(3)", .controlClass = kLabel, .place = {4200, 3360, 855, 255}, .caption = "Rewind", .container = "Picture7(0)", .centred = true, .bordered = true},
    {.name = "Picture7(3)", .controlClass = kPictureBox, .place = {5280, 120, 7815, 2175}, .container = "Picture7(0)", .color = kDark, .bordered = true},
    {.name = "Text5", .controlClass = kTextBox, .place = {1560, 420, 6135, 315}, .container = "Picture7(3)", .color = kDark, .bordered = true, .editable = true, .meaning = "Video that needs to be Stabilized"},
    {.name = "Label11(1)", .controlClass = kLabel, .place = {120, 120, 4335, 255}, .caption = "Select Video that needs to be Stabilized", .container = "Picture7(3)"},
    {.name = "Label11(0)", .controlClass = kLabel, .place = {120, 1200, 2295, 255}, .caption = "De-Shake && Stabilize Options", .container = "Picture7(3)"},
    {.name = "Label12(4)", .controlClass = kLabel, .place = {120, 480, 1335, 255}, .caption = "Load Video", .container = "Picture7(3)", .centred = true, .bordered = true},
    {.name = "Label12(2)", .controlClass = kLabel, .place = {120, 1680, 1695, 255}, .caption = "Test Settings", .container = "Picture7(3)", .centred = true, .bordered = true},
    {.name = "Label12(0)", .controlClass = kLabel, .place = {2640, 1680, 3135, 255}, .caption = "Apply De-Shake && Stabilize Settings", .container = "Picture7(3)", .centred = true, .bordered = true},
    {.name = "Label12(3)", .controlClass = kLabel, .place = {5880, 1680, 1695, 255}, .caption = "Reset All Settings", .container = "Picture7(3)", .centred = true, .bordered = true},
    {.name = "Line1", .controlClass = kLine, .place = {0, 1080, 7800, 0}, .container = "Picture7(3)", .color = kGrey},
    {.name = "Picture7(2)", .controlClass = kPictureBox, .place = {5280, 2400, 7815, 1215}, .container = "Picture7(0)", .color = kDark, .bordered = true},
    {.name = "pbar(0)", .controlClass = kProgressBar, .place = {120, 360, 7455, 180}, .container = "Picture7(2)", .meaning = "Mapping Vectors"},
    {.name = "pbar(1)", .controlClass = kProgressBar, .place = {120, 840, 7455, 180}, .container = "Picture7(2)", .meaning = "Applying Corrections"},
    {.name = "Label9(0)", .controlClass = kLabel, .place = {120, 120, 1575, 255}, .caption = "Mapping Vectors", .container = "Picture7(2)"},
    {.name = "Label9(2)", .controlClass = kLabel, .place = {2040, 120, 1575, 255}, .caption = "Progress 00.00%", .container = "Picture7(2)", .meaning = "Mapping Vectors"},
    {.name = "Label9(4)", .controlClass = kLabel, .place = {6600, 120, 975, 255}, .caption = "Pass 1 of 2", .container = "Picture7(2)", .rightAligned = true},
    {.name = "Label9(1)", .controlClass = kLabel, .place = {120, 600, 1575, 255}, .caption = "Applying Corrections", .container = "Picture7(2)"},
    {.name = "Label9(3)", .controlClass = kLabel, .place = {2040, 600, 1575, 255}, .caption = "Progress 00.00%", .container = "Picture7(2)", .meaning = "Applying Corrections"},
    {.name = "Label9(5)", .controlClass = kLabel, .place = {6600, 600, 975, 255}, .caption = "Pass 2 of 2", .container = "Picture7(2)", .rightAligned = true},

    {.name = "Label6(0)", .controlClass = kLabel, .place = {600, 300, 3495, 255}, .caption = "Select Video To Extract Section From", .centred = true, .role = SpokenRole::kCommand},
    {.name = "Label6(1)", .controlClass = kLabel, .place = {600, 240, 3495, 375}, .color = kDark, .bordered = true},
    {.name = "Label16(0)", .controlClass = kLabel, .place = {7920, 600, 2775, 255}, .caption = "Video Duration hh:mm:ss: 00:00:00", .rightAligned = true},
    {.name = "Label16(1)", .controlClass = kLabel, .place = {11280, 600, 1935, 255}, .caption = "Video Duration Seconds:", .rightAligned = true},
    {.name = "Label16(2)", .controlClass = kLabel, .place = {13200, 600, 615, 255}, .caption = "1825", .rightAligned = true, .meaning = "Video Duration in seconds"},
    {.name = "Label8(0)", .controlClass = kLabel, .place = {5280, 2040, 1200, 255}, .caption = " Video first cut"},
    {.name = "Label8(1)", .controlClass = kLabel, .place = {6480, 2040, 1200, 255}, .caption = "00:00:00", .meaning = "Video first cut"},
    {.name = "Label8(2)", .controlClass = kLabel, .place = {7800, 2040, 1200, 255}, .caption = " Video final cut"},
    {.name = "Label8(3)", .controlClass = kLabel, .place = {9000, 2040, 1200, 255}, .caption = "00:00:00", .meaning = "Video final cut"},
    {.name = "Label8(4)", .controlClass = kLabel, .place = {600, 2040, 4455, 255}, .caption = "Testing Stabalization Settings on short sample of video"},
    {.name = "Label8(5)", .controlClass = kLabel, .place = {10440, 2040, 2640, 255}, .caption = "Sample of video duration run time"},
    {.name = "Label8(6)", .controlClass = kLabel, .place = {13080, 2040, 735, 255}, .caption = "00:00:00", .meaning = "Sample of video duration run time"},
    {.name = "Shape5(0)", .controlClass = kShape, .place = {5160, 2040, 75, 150}, .color = kNeedleGreen, .fillColor = kNeedleGreen},
    {.name = "Shape5(1)", .controlClass = kShape, .place = {7680, 2040, 75, 150}, .color = kNeedleRed, .fillColor = kNeedleRed},
    {.name = "Line2", .controlClass = kLine, .place = {600, 2280, 13200, 0}, .color = kGrey},

    // The options: caption, name and read-out.
    {.name = "Label3(0)", .controlClass = kLabel, .place = {720, 3660, 2295, 255}, .caption = "Step Size Range 1/30"},
    {.name = "Label2(0)", .controlClass = kLabel, .place = {11520, 3660, 1455, 255}, .caption = "Step Size"},
    {.name = "Label2(1)", .controlClass = kLabel, .place = {13080, 3630, 495, 300}, .caption = "04", .centred = true, .bordered = true, .meaning = "Step Size"},
    {.name = "Label3(1)", .controlClass = kLabel, .place = {720, 4140, 2295, 255}, .caption = "Shakiness Range 1/10"},
    {.name = "Label2(2)", .controlClass = kLabel, .place = {11520, 4140, 1455, 255}, .caption = "Shakiness Value"},
    {.name = "Label2(3)", .controlClass = kLabel, .place = {13080, 4110, 495, 300}, .caption = "03", .centred = true, .bordered = true, .meaning = "Shakiness"},
    {.name = "Label3(2)", .controlClass = kLabel, .place = {720, 4620, 2295, 255}, .caption = "Accuracy Range 1/15"},
    {.name = "Label2(4)", .controlClass = kLabel, .place = {11520, 4620, 1455, 255}, .caption = "Accuracy Value"},
    {.name = "Label2(5)", .controlClass = kLabel, .place = {13080, 4590, 495, 300}, .caption = "05", .centred = true, .bordered = true, .meaning = "Accuracy"},
    {.name = "Label3(3)", .controlClass = kLabel, .place = {720, 5100, 2295, 255}, .caption = "Zoom Range 1/100"},
    {.name = "Label2(6)", .controlClass = kLabel, .place = {11520, 5100, 1455, 255}, .caption = "Zoom Value"},
    {.name = "Label2(7)", .controlClass = kLabel, .place = {13080, 5070, 495, 300}, .caption = "010", .centred = true, .bordered = true, .meaning = "Zoom"},
    {.name = "Label3(4)", .controlClass = kLabel, .place = {720, 5580, 2295, 255}, .caption = "Smoothing Range 1/100"},
    {.name = "Label2(8)", .controlClass = kLabel, .place = {11520, 5580, 1455, 255}, .caption = "Smoothing Value"},
    {.name = "Label2(9)", .controlClass = kLabel, .place = {13080, 5550, 495, 300}, .caption = "025", .centred = true, .bordered = true, .meaning = "Smoothing"},
    {.name = "Label3(5)", .controlClass = kLabel, .place = {720, 6060, 2295, 255}, .caption = "UnSharp LX Range 3/15"},
    {.name = "Label2(10)", .controlClass = kLabel, .place = {11520, 6060, 1455, 255}, .caption = "UnSharp LX Value"},
    {.name = "Label2(11)", .controlClass = kLabel, .place = {13080, 6030, 495, 300}, .caption = "06", .centred = true, .bordered = true, .meaning = "UnSharp LX"},
    {.name = "Label3(6)", .controlClass = kLabel, .place = {720, 6540, 2295, 255}, .caption = "UnSharp LY Range 3/15"},
    {.name = "Label2(12)", .controlClass = kLabel, .place = {11520, 6540, 1455, 255}, .caption = "UnSharp LY Value"},
    {.name = "Label2(13)", .controlClass = kLabel, .place = {13080, 6510, 495, 300}, .caption = "06", .centred = true, .bordered = true, .meaning = "UnSharp LY"},
    {.name = "Shape1", .controlClass = kShape, .place = {13920, 9120, 735, 495}, .color = kCanvasGrey},
    {.name = "Shape4", .controlClass = kShape, .place = {600, 3360, 13215, 3735}, .color = kGrey},

    // Three sides of a frame; each resize sets their ends.
    {.name = "Line4", .controlClass = kLine, .place = {0, 0, 0, 0}, .color = kGrey},
    {.name = "Line5", .controlClass = kLine, .place = {0, 0, 0, 0}, .color = kGrey},
    {.name = "Line6", .controlClass = kLine, .place = {0, 0, 0, 0}, .color = kGrey},
});

constexpr auto kForm3Menus = std::to_array<MenuDesign>({
    {.name = "mnu_ConntextMenu", .caption = "contextMenu", .visible = false},
    {.name = "mnu_Start", .caption = "Set Start Of Section", .menu = "mnu_ConntextMenu"},
    {.name = "mnu_End", .caption = "Set End Of Section", .menu = "mnu_ConntextMenu"},
});
// clang-format on

}  // namespace kelvane
