#pragma once

#include "support/DesignRow.h"

// The main window as drawn: what stands where, in twips, front to back.
namespace kelvane::testing {

// clang-format off
inline const DesignRows kDesign = {
    {"Slider3", "Slider", "", {12120, 10560, 3615, 495}, "", kHidden},
    {"Slider2", "Slider", "", {6480, 10560, 3615, 495}, "", kHidden},
    {"Picture3", "PictureBox", "", {600, 10560, 3615, 3135}, "", kHidden},
    {"Text2", "TextBox", "", {1200, 2160, 1455, 315}, "Picture3", kShown},
    {"Command1(0)", "CommandButton", "Open Video", {480, 8760, 1575, 495}, "", kHidden},
    {"Command1(1)", "CommandButton", "Play", {2400, 8760, 1575, 495}, "", kHidden},
    {"Command1(2)", "CommandButton", "Pause", {4080, 8760, 1575, 495}, "", kHidden},
    {"Command1(3)", "CommandButton", "Stop", {5640, 8760, 1575, 495}, "", kHidden},
    {"Command1(4)", "CommandButton", "Preview", {7560, 8760, 1575, 495}, "", kHidden},
    {"Command1(5)", "CommandButton", "Crop", {9480, 8760, 1575, 495}, "", kHidden},
    {"Command1(6)", "CommandButton", "Reset", {11280, 8760, 1575, 495}, "", kHidden},
    {"pbar", "ProgressBar", "", {12240, 1800, 3855, 180}, "", kShown},
    {"Text1(1)", "TextBox", "", {1800, 795, 14175, 315}, "", kShown},
    {"Text1(0)", "TextBox", "Source Video", {600, 795, 1095, 315}, "", kShown},
    {"Picture1(0)", "PictureBox", "", {360, 2280, 15855, 4455}, "", kShown},
    {"VScroll1", "VScrollBar", "", {15480, 240, 255, 3855}, "Picture1(0)", kShown},
    {"HScroll1", "HScrollBar", "", {0, 4080, 15375, 255}, "Picture1(0)", kShown},
    {"Picture1(1)", "PictureBox", "", {0, 0, 15375, 4095}, "Picture1(0)", kShown},
    {"Picture1(2)", "PictureBox", "", {0, 0, 6255, 3735}, "Picture1(1)", kShown},
    {"Picture2(3)", "PictureBox", "", {0, 3600, 6015, 135}, "Picture1(2)", kShown},
    {"Picture2(2)", "PictureBox", "", {5880, -120, 135, 3735}, "Picture1(2)", kShown},
    {"Picture2(1)", "PictureBox", "", {0, 0, 5895, 135}, "Picture1(2)", kShown},
    {"Picture2(0)", "PictureBox", "", {0, 120, 135, 3495}, "Picture1(2)", kShown},
    {"Picture1(3)", "PictureBox", "", {0, 0, 5775, 3135}, "Picture1(2)", kShown},
    {"wmp", "WindowsMediaPlayer", "", {1320, 120, 3015, 3015}, "Picture1(3)", kShown},
    {"Shape6", "Shape", "", {120, 240, 375, 375}, "", kShown},
    {"Label14(6)", "Label", "Reset Markers", {10200, 7320, 1335, 255}, "", kShown},
    {"Label14(5)", "Label", "Crop Video", {8760, 7320, 1335, 255}, "", kShown},
    {"Label14(4)", "Label", "Preview Cropped Video", {6600, 7320, 2055, 255}, "", kShown},
    {"Label14(3)", "Label", "Stop Video", {5160, 7320, 1335, 255}, "", kShown},
    {"Label14(2)", "Label", "Pause Video", {3720, 7320, 1335, 255}, "", kShown},
    {"Label14(1)", "Label", "Run Video", {2160, 7320, 1335, 255}, "", kShown},
    {"Label14(0)", "Label", "Load Video", {600, 7320, 1335, 255}, "", kShown},
    {"Label7", "Label", "", {6720, 10560, 7695, 495}, "", kHidden},
    {"Label13", "Label", "00", {15240, 7320, 735, 255}, "", kShown},
    {"Label12", "Label", "00:00:00", {12960, 7320, 735, 255}, "", kShown},
    {"Label11", "Label", "Current Position", {13920, 7320, 1215, 255}, "", kShown},
    {"Label10", "Label", "Video Duration", {11760, 7320, 1095, 255}, "", kShown},
    {"Label9", "Label", "Audio Balance", {12120, 10200, 3375, 255}, "", kHidden},
    {"Label8", "Label", "Audio Volume", {6720, 10080, 1815, 255}, "", kHidden},
    {"Label6", "Label", "Options", {600, 6840, 1335, 255}, "", kShown},
    {"Shape5", "Shape", "", {360, 6960, 15855, 1215}, "", kShown},
    {"Label5", "Label", "Crop and save Status", {12360, 1440, 1695, 255}, "", kShown},
    {"Shape4", "Shape", "", {12120, 1560, 4095, 615}, "", kShown},
    {"Label4", "Label", "Selected Video", {600, 480, 1215, 255}, "", kShown},
    {"Shape3", "Shape", "", {360, 600, 15855, 615}, "", kShown},
    {"Label3", "Label", "Crop Region (pixels)", {4320, 1440, 1695, 255}, "", kShown},
    {"Shape2", "Shape", "", {4080, 1560, 7815, 615}, "", kShown},
    {"Label2", "Label", "Source Video Dimensions (pixels)", {600, 1440, 2655, 255}, "", kShown},
    {"Shape1", "Shape", "", {360, 1560, 3735, 615}, "", kShown},
};

// The read-outs. Some of the fixed names reach under the number on their right.
inline const DesignRows kReadOuts = {
    {"Label1(0)", "Label", "Width", {600, 1800, 615, 255}, "", kShown},
    {"Label1(1)", "Label", "0,000", {1200, 1800, 615, 255}, "", kShown},
    {"Label1(2)", "Label", "Height", {2040, 1800, 735, 255}, "", kShown},
    {"Label1(3)", "Label", "0,000", {2760, 1800, 735, 255}, "", kShown},
    {"Label1(4)", "Label", "Left", {4200, 1800, 615, 255}, "", kShown},
    {"Label1(5)", "Label", "0,000", {4560, 1800, 615, 255}, "", kShown},
    {"Label1(6)", "Label", "Top", {5400, 1800, 615, 255}, "", kShown},
    {"Label1(7)", "Label", "0,000", {5760, 1800, 615, 255}, "", kShown},
    {"Label1(8)", "Label", "Width", {6600, 1800, 615, 255}, "", kShown},
    {"Label1(9)", "Label", "0,000", {7080, 1800, 615, 255}, "", kShown},
    {"Label1(10)", "Label", "Height", {7920, 1800, 615, 255}, "", kShown},
    {"Label1(11)", "Label", "0,000", {8520, 1800, 615, 255}, "", kShown},
    {"Label1(12)", "Label", "Base", {9360, 1800, 615, 255}, "", kShown},
    {"Label1(13)", "Label", "0,000", {9840, 1800, 615, 255}, "", kShown},
    {"Label1(14)", "Label", "Right", {10680, 1800, 615, 255}, "", kShown},
    {"Label1(15)", "Label", "0,000", {11160, 1800, 615, 255}, "", kShown},
};
// clang-format on

}  // namespace kelvane::testing
