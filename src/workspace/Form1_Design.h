#pragma once

#include <array>

#include "platform/Form.h"
#include "shared/Colours.h"
#include "shared/Product.h"

// The main window as designed. Places are in twips; Form_Load and Form_Resize change some of them.
namespace kelvane {

constexpr QRgb kPaleGrey = 0xA0A0A0;
constexpr QRgb kMarkerGreen = 0x00FF00;

constexpr float kMinWidth = 16665;  // twips
constexpr float kMinHeight = 6500;  // twips

constexpr FormDesign kForm1 = {.name = "Form1",
                               .caption = kProductName.data(),
                               .clientWidth = 19335,
                               .clientHeight = 13980,
                               .backColor = kDark,
                               .labelColor = kLight,
                               .scale = ScaleMode::kPixels,
                               .leastWidth = kMinWidth,
                               .leastHeight = kMinHeight};

// Front to back.
// clang-format off
using enum ControlClass;
constexpr auto kForm1Controls = std::to_array<ControlDesign>({
    {.name = "Slider3", .controlClass = kSlider, .place = {12120, 10560, 3615, 495}, .visible = false, .meaning = "Audio Balance"},
    {.name = "Slider2", .controlClass = kSlider, .place = {6480, 10560, 3615, 495}, .visible = false, .meaning = "Audio Volume"},

    {.name = "Picture3", .controlClass = kPictureBox, .place = {600, 10560, 3615, 3135}, .visible = false, .color = kDark, .twips = true},
    {.name = "Text2", .controlClass = kTextBox, .place = {1200, 2160, 1455, 315}, .container = "Picture3", .color = kDark},

    {.name = "Command1(0)", .controlClass = kCommandButton, .place = {480, 8760, 1575, 495}, .caption = "Open Video", .visible = false},
    {.name = "Command1(1)", .controlClass = kCommandButton, .place = {2400, 8760, 1575, 495}, .caption = "Play", .visible = false},
    {.name = "Command1(2)", .controlClass = kCommandButton, .place = {4080, 8760, 1575, 495}, .caption = "Pause", .visible = false},
    {.name = "Command1(3)", .controlClass = kCommandButton, .place = {5640, 8760, 1575, 495}, .caption = "Stop", .visible = false},
    {.name = "Command1(4)", .controlClass = kCommandButton, .place = {7560, 8760, 1575, 495}, .caption = "Preview", .visible = false},
    {.name = "Command1(5)", .controlClass = kCommandButton, .place = {9480, 8760, 1575, 495}, .caption = "Crop", .visible = false},
    {.name = "Command1(6)", .controlClass = kCommandButton, .place = {11280, 8760, 1575, 495}, .caption = "Reset", .visible = false},

    {.name = "pbar", .controlClass = kProgressBar, .place = {12240, 1800, 3855, 180}, .meaning = "Crop and save Status"},
    {.name = "Text1(1)", .controlClass = kTextBox, .place = {1800, 795, 14175, 315}, .color = kDark, .meaning = "Selected Video"},
    {.name = "Text1(0)", .controlClass = kTextBox, .place = {600, 795, 1095, 315}, .caption = "Source Video", .color = kDark, .meaning = "Caption of the selected video"},

    {.name = "Picture1(0)", .controlClass = kPictureBox, .place = {360, 2280, 15855, 4455}, .color = kDark, .bordered = true, .meaning = "Video and crop region"},
    {.name = "VScroll1", .controlClass = kVScrollBar, .place = {15480, 240, 255, 3855}, .container = "Picture1(0)", .meaning = "Scroll the video up and down"},
    {.name = "HScroll1", .controlClass = kHScrollBar, .place = {0, 4080, 15375, 255}, .container = "Picture1(0)", .meaning = "Scroll the video sideways"},
    {.name = "Picture1(1)", .controlClass = kPictureBox, .place = {0, 0, 15375, 4095}, .container = "Picture1(0)", .color = kDark},
    {.name = "Picture1(2)", .controlClass = kPictureBox, .place = {0, 0, 6255, 3735}, .container = "Picture1(1)", .color = kCanvasGrey},
    {.name = "Picture2(3)", .controlClass = kPictureBox, .place = {0, 3600, 6015, 135}, .container = "Picture1(2)", .color = kMarkerGreen, .pointer = MousePointer::kSizeNorthSouth, .meaning = "Base Bar", .role = SpokenRole::kVerticalBar},
    {.name = "Picture2(2)", .controlClass = kPictureBox, .place = {5880, -120, 135, 3735}, .container = "Picture1(2)", .color = kMarkerGreen, .pointer = MousePointer::kSizeWestEast, .meaning = "Right Bar", .role = SpokenRole::kHorizontalBar},
    {.name = "Picture2(1)", .controlClass = kPictureBox, .place = {0, 0, 5895, 135}, .container = "Picture1(2)", .color = kMarkerGreen, .pointer = MousePointer::kSizeNorthSouth, .meaning = "Top Bar", .role = SpokenRole::kVerticalBar},
    {.name = "Picture2(0)", .controlClass = kPictureBox, .place = {0, 120, 135, 3495}, .container = "Picture1(2)", .color = kMarkerGreen, .pointer = MousePointer::kSizeWestEast, .meaning = "Left Bar", .role = SpokenRole::kHorizontalBar},
    {.name = "Picture1(3)", .controlClass = kPictureBox, .place = {0, 0, 5775, 3135}, .container = "Picture1(2)", .color = kLight},
    {.name = "wmp", .controlClass = kWindowsMediaPlayer, .place = {1320, 120, 3015, 3015}, .container = "Picture1(3)", .meaning = "Video"},

    {.name = "Shape6", .controlClass = kShape, .place = {120, 240, 375, 375}, .color = kGrey, .borderWidth = 2},

    {.name = "Label14(6)", .controlClass = kLabel, .place = {10200, 7320, 1335, 255}, .caption = "Reset Markers", .color = kDark, .centred = true, .role = SpokenRole::kCommand},
    {.name = "Label14(5)", .controlClass = kLabel, .place = {8760, 7320, 1335, 255}, .caption = "Crop Video", .color = kDark, .centred = true, .role = SpokenRole::kCommand},
    {.name = "Label14(4)", .controlClass = kLabel, .place = {6600, 7320, 2055, 255}, .caption = "Preview Cropped Video", .color = kDark, .centred = true, .role = SpokenRole::kCommand},
    {.name = "Label14(3)", .controlClass = kLabel, .place = {5160, 7320, 1335, 255}, .caption = "Stop Video", .color = kDark, .centred = true, .role = SpokenRole::kCommand},
    {.name = "Label14(2)", .controlClass = kLabel, .place = {3720, 7320, 1335, 255}, .caption = "Pause Video", .color = kDark, .centred = true, .role = SpokenRole::kCommand},
    {.name = "Label14(1)", .controlClass = kLabel, .place = {2160, 7320, 1335, 255}, .caption = "Run Video", .color = kDark, .centred = true, .role = SpokenRole::kCommand},
    {.name = "Label14(0)", .controlClass = kLabel, .place = {600, 7320, 1335, 255}, .caption = "Load Video", .color = kDark, .centred = true, .role = SpokenRole::kCommand},

    {.name = "Label1(0)", .controlClass = kLabel, .place = {600, 1800, 615, 255}, .caption = "Width"},
    {.name = "Label1(1)", .controlClass = kLabel, .place = {1200, 1800, 615, 255}, .caption = "0,000", .meaning = "Width of the video in pixels"},
    {.name = "Label1(2)", .controlClass = kLabel, .place = {2040, 1800, 735, 255}, .caption = "Height"},
    {.name = "Label1(3)", .controlClass = kLabel, .place = {2760, 1800, 735, 255}, .caption = "0,000", .meaning = "Height of the video in pixels"},
    {.name = "Label1(4)", .controlClass = kLabel, .place = {4200, 1800, 615, 255}, .caption = "Left"},
    {.name = "Label1(5)", .controlClass = kLabel, .place = {4560, 1800, 615, 255}, .caption = "0,000", .meaning = "Left of the crop region in pixels"},
    {.name = "Label1(6)", .controlClass = kLabel, .place = {5400, 1800, 615, 255}, .caption = "Top"},
    {.name = "Label1(7)", .controlClass = kLabel, .place = {5760, 1800, 615, 255}, .caption = "0,000", .meaning = "Top of the crop region in pixels"},
    {.name = "Label1(8)", .controlClass = kLabel, .place = {6600, 1800, 615, 255}, .caption = "Width"},
    {.name = "Label1(9)", .controlClass = kLabel, .place = {7080, 1800, 615, 255}, .caption = "0,000", .meaning = "Width of the crop region in pixels"},
    {.name = "Label1(10)", .controlClass = kLabel, .place = {7920, 1800, 615, 255}, .caption = "Height"},
    {.name = "Label1(11)", .controlClass = kLabel, .place = {8520, 1800, 615, 255}, .caption = "0,000", .meaning = "Height of the crop region in pixels"},
    {.name = "Label1(12)", .controlClass = kLabel, .place = {9360, 1800, 615, 255}, .caption = "Base"},
    {.name = "Label1(13)", .controlClass = kLabel, .place = {9840, 1800, 615, 255}, .caption = "0,000", .meaning = "Base of the crop region in pixels"},
    {.name = "Label1(14)", .controlClass = kLabel, .place = {10680, 1800, 615, 255}, .caption = "Right"},
    {.name = "Label1(15)", .controlClass = kLabel, .place = {11160, 1800, 615, 255}, .caption = "0,000", .meaning = "Right of the crop region in pixels"},

    {.name = "Label7", .controlClass = kLabel, .place = {6720, 10560, 7695, 495}, .visible = false},
    {.name = "Label13", .controlClass = kLabel, .place = {15240, 7320, 735, 255}, .caption = "00", .meaning = "Current Position"},
    {.name = "Label12", .controlClass = kLabel, .place = {12960, 7320, 735, 255}, .caption = "00:00:00", .meaning = "Video Duration"},
    {.name = "Label11", .controlClass = kLabel, .place = {13920, 7320, 1215, 255}, .caption = "Current Position"},
    {.name = "Label10", .controlClass = kLabel, .place = {11760, 7320, 1095, 255}, .caption = "Video Duration"},
    {.name = "Label9", .controlClass = kLabel, .place = {12120, 10200, 3375, 255}, .caption = "Audio Balance", .visible = false},
    {.name = "Label8", .controlClass = kLabel, .place = {6720, 10080, 1815, 255}, .caption = "Audio Volume", .visible = false},

    {.name = "Label6", .controlClass = kLabel, .place = {600, 6840, 1335, 255}, .caption = "Options", .color = kDark, .centred = true},
    {.name = "Shape5", .controlClass = kShape, .place = {360, 6960, 15855, 1215}, .color = kGrey},
    {.name = "Label5", .controlClass = kLabel, .place = {12360, 1440, 1695, 255}, .caption = "Crop and save Status", .color = kDark, .centred = true},
    {.name = "Shape4", .controlClass = kShape, .place = {12120, 1560, 4095, 615}, .color = kPaleGrey},
    {.name = "Label4", .controlClass = kLabel, .place = {600, 480, 1215, 255}, .caption = "Selected Video", .color = kDark, .centred = true},
    {.name = "Shape3", .controlClass = kShape, .place = {360, 600, 15855, 615}, .color = kPaleGrey},
    {.name = "Label3", .controlClass = kLabel, .place = {4320, 1440, 1695, 255}, .caption = "Crop Region (pixels)", .color = kDark, .centred = true},
    {.name = "Shape2", .controlClass = kShape, .place = {4080, 1560, 7815, 615}, .color = kPaleGrey},
    {.name = "Label2", .controlClass = kLabel, .place = {600, 1440, 2655, 255}, .caption = "Source Video Dimensions (pixels)", .color = kDark, .centred = true},
    {.name = "Shape1", .controlClass = kShape, .place = {360, 1560, 3735, 615}, .color = kPaleGrey},
});

constexpr auto kForm1Menus = std::to_array<MenuDesign>({
    {.name = "mnu_open", .caption = "Open"},
    {.name = "mnu_openVideo", .caption = "Load Video to Crop", .menu = "mnu_open"},
    {.name = "mnu_Extract", .caption = "Extract and Stabilise", .menu = "mnu_open", .visible = false},
    {.name = "mnu_JoinMultiple", .caption = "Join Multiple Videos Together", .menu = "mnu_open", .visible = false},
    {.name = "mnu_VersionUpdate", .caption = "Updates"},
    {.name = "mnu_Updates", .caption = "Check Site For Updates", .menu = "mnu_VersionUpdate"},
    {.name = "mnu_Donate", .caption = "Donate"},
    {.name = "mnu_PayPalwebsite", .caption = "Donate Via PayPal Website", .menu = "mnu_Donate"},
    {.name = "mnu_CropVideo", .caption = "Crop", .visible = false},
    {.name = "mnu_CropSave", .caption = "Crop and Save", .menu = "mnu_CropVideo"},
    {.name = "mnu_Rem", .caption = "Remove", .visible = false},
    {.name = "mnu_RemoveVideo", .caption = "Remove Video", .menu = "mnu_Rem"},
});
// clang-format on

}  // namespace kelvane
