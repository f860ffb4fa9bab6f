#pragma once

#include <vector>

#include "support/DesignRow.h"

// The section window as drawn: what stands where, in twips. Of controls that lie over one another
// the front one comes first.
namespace kelvane::testing {

enum class Side { kLeft, kCentre, kRight };
enum Edge : bool { kPlain = false, kBorder = true };
constexpr int kTransparent = -1;

struct BoxRow {
  const char* name;
  const char* controlClass;
  Twips place;
  const char* container;  // the window itself if empty
  AtDesign visible;
  int backColour;  // of boxes and outlines; kTransparent for the others
  const char* text = "";
};

struct LabelRow {
  const char* name;
  const char* caption;
  Twips place;
  const char* container;
  Side side = Side::kLeft;
  Edge edge = kPlain;
  int backColour = kTransparent;
};

// clang-format off
inline const std::vector<BoxRow> kBoxes = {
    {"Text1", "TextBox", {4200, 240, 9615, 375}, "", kShown, kTransparent},
    {"Picture1", "PictureBox", {2040, 9000, 6135, 3015}, "", kHidden, 0x00C000},
    {"Picture3(0)", "PictureBox", {600, 840, 13215, 1095}, "", kShown, 0x232323},
    {"HScroll1", "HScrollBar", {0, 1560, 12135, 255}, "Picture3(0)", kShown, kTransparent},
    {"Picture5", "PictureBox", {0, 600, 13215, 375}, "Picture3(0)", kShown, 0x232323},
    {"Shape3", "Shape", {105, 120, 13005, 255}, "Picture5", kShown, 0x808080},
    {"Picture3(1)", "PictureBox", {0, 0, 13215, 615}, "Picture3(0)", kShown, 0x404040},
    {"Shape5(0)", "Shape", {5160, 2040, 75, 150}, "", kShown, 0x00C000},
    {"Shape5(1)", "Shape", {7680, 2040, 75, 150}, "", kShown, 0xC00000},
    {"Picture8", "PictureBox", {600, 2400, 13215, 855}, "", kShown, 0x232323},
    {"Shape4", "Shape", {600, 3360, 13215, 3735}, "", kShown, 0x808080},
    {"Shape1", "Shape", {13920, 9120, 735, 495}, "", kShown, 0x404040},
    {"pbar(2)", "ProgressBar", {5640, 480, 7335, 180}, "Picture8", kShown, kTransparent},
    {"Picture7(0)", "PictureBox", {600, 7320, 13215, 3735}, "", kShown, 0x232323},
    {"Picture7(1)", "PictureBox", {120, 120, 4935, 3135}, "Picture7(0)", kShown, 0x232323},
    {"wmp", "WindowsMediaPlayer", {120, 120, 4695, 2775}, "Picture7(1)", kShown, kTransparent},
    {"Picture7(3)", "PictureBox", {5280, 120, 7815, 2175}, "Picture7(0)", kShown, 0x232323},
    {"Picture7(2)", "PictureBox", {5280, 2400, 7815, 1215}, "Picture7(0)", kShown, 0x232323},
    {"Text5", "TextBox", {1560, 420, 6135, 315}, "Picture7(3)", kShown, kTransparent},
    {"pbar(0)", "ProgressBar", {120, 360, 7455, 180}, "Picture7(2)", kShown, kTransparent},
    {"pbar(1)", "ProgressBar", {120, 840, 7455, 180}, "Picture7(2)", kShown, kTransparent},
    {"Picture2(0)", "PictureBox", {3120, 3600, 8055, 375}, "", kShown, 0x232323},
    {"Picture2(1)", "PictureBox", {3120, 4080, 8055, 375}, "", kShown, 0x232323},
    {"Picture2(2)", "PictureBox", {3120, 4560, 8055, 375}, "", kShown, 0x232323},
    {"Picture2(3)", "PictureBox", {3120, 5040, 8055, 375}, "", kShown, 0x232323},
    {"Picture2(4)", "PictureBox", {3120, 5520, 8055, 375}, "", kShown, 0x232323},
    {"Picture2(5)", "PictureBox", {3120, 6000, 8055, 375}, "", kShown, 0x232323},
    {"Picture2(6)", "PictureBox", {3120, 6480, 8055, 375}, "", kShown, 0x232323},
};

inline const std::vector<LabelRow> kLabels = {
    {"Label6(0)", "Select Video To Extract Section From", {600, 300, 3495, 255}, "", Side::kCentre},
    {"Label6(1)", "", {600, 240, 3495, 375}, "", Side::kLeft, kBorder, 0x232323},
    {"Label16(0)", "Video Duration hh:mm:ss: 00:00:00", {7920, 600, 2775, 255}, "", Side::kRight},
    {"Label16(1)", "Video Duration Seconds:", {11280, 600, 1935, 255}, "", Side::kRight},
    {"Label16(2)", "1825", {13200, 600, 615, 255}, "", Side::kRight},
    {"Label7(0)", "<", {120, 120, 255, 255}, "Picture5", Side::kCentre, kBorder, 0x404040},
    {"Label7(1)", ">", {12840, 120, 255, 255}, "Picture5", Side::kCentre, kBorder, 0x404040},
    {"Label13", "Extract short section of Video to test Stabilization Settings", {120, 0, 4935, 255}, "Picture8"},
    {"Label14(1)", "View Selected Region ", {120, 360, 2415, 255}, "Picture8", Side::kCentre, kBorder},
    {"Label14(0)", "Extract Selected Region ", {2880, 360, 2415, 255}, "Picture8", Side::kCentre, kBorder},
    {"Label15(0)", "Extracting Video Section Progress:", {5640, 240, 2655, 255}, "Picture8"},
    {"Label15(1)", "00.00%", {8280, 240, 855, 255}, "Picture8"},
    {"Label10(0)", "Play", {120, 3360, 1095, 255}, "Picture7(0)", Side::kCentre, kBorder},
    {"Label10(1)", "Pause", {1320, 3360, 1095, 255}, "Picture7(0)", Side::kCentre, kBorder},
    {"Label10(2)", "Stop", {2520, 3360, 1095, 255}, "Picture7(0)", Side::kCentre, kBorder},
    {"Label10(3)", "Rewind", {4200, 3360, 855, 255}, "Picture7(0)", Side::kCentre, kBorder},
    {"Label11(1)", "Select Video that needs to be Stabilized", {120, 120, 4335, 255}, "Picture7(3)"},
    {"Label11(0)", "De-Shake && Stabilize Options", {120, 1200, 2295, 255}, "Picture7(3)"},
    {"Label12(4)", "Load Video", {120, 480, 1335, 255}, "Picture7(3)", Side::kCentre, kBorder},
    {"Label12(2)", "Test Settings", {120, 1680, 1695, 255}, "Picture7(3)", Side::kCentre, kBorder},
    {"Label12(0)", "Apply De-Shake && Stabilize Settings", {2640, 1680, 3135, 255}, "Picture7(3)", Side::kCentre, kBorder},
    {"Label12(3)", "Reset All Settings", {5880, 1680, 1695, 255}, "Picture7(3)", Side::kCentre, kBorder},
    {"Label9(0)", "Mapping Vectors", {120, 120, 1575, 255}, "Picture7(2)"},
    {"Label9(2)", "Progress 00.00%", {2040, 120, 1575, 255}, "Picture7(2)"},
    {"Label9(4)", "Pass 1 of 2", {6600, 120, 975, 255}, "Picture7(2)", Side::kRight},
    {"Label9(1)", "Applying Corrections", {120, 600, 1575, 255}, "Picture7(2)"},
    {"Label9(3)", "Progress 00.00%", {2040, 600, 1575, 255}, "Picture7(2)"},
    {"Label9(5)", "Pass 2 of 2", {6600, 600, 975, 255}, "Picture7(2)", Side::kRight},
    {"Label1(0)", "", {720, 0, 135, 375}, "Picture2(0)", Side::kLeft, kPlain, 0x404040},
    {"Label1(1)", "", {720, 0, 135, 375}, "Picture2(1)", Side::kLeft, kPlain, 0x404040},
    {"Label1(2)", "", {720, 0, 135, 375}, "Picture2(2)", Side::kLeft, kPlain, 0x404040},
    {"Label1(3)", "", {720, 0, 135, 375}, "Picture2(3)", Side::kLeft, kPlain, 0x404040},
    {"Label1(4)", "", {720, 0, 135, 375}, "Picture2(4)", Side::kLeft, kPlain, 0x404040},
    {"Label1(5)", "", {720, 0, 135, 375}, "Picture2(5)", Side::kLeft, kPlain, 0x404040},
    {"Label1(6)", "", {720, 0, 135, 375}, "Picture2(6)", Side::kLeft, kPlain, 0x404040},
};

// Where a label stands across the window, of those whose place the drawing gives no more of.
struct LeftEdge {
  const char* name;
  const char* caption;
  float left;
  float top;  // that of its row; the label stands in it
};

inline const std::vector<LeftEdge> kReadOutRow = {
    {"Label8(0)", " Video first cut", 5280, 2040},
    {"Label8(1)", "00:00:00", 6480, 2040},
    {"Label8(2)", " Video final cut", 7800, 2040},
    {"Label8(3)", "00:00:00", 9000, 2040},
    {"Label8(4)", "Testing Stabalization Settings on short sample of video", 600, 2040},
    {"Label8(5)", "Sample of video duration run time", 10440, 2040},
    {"Label8(6)", "00:00:00", 13080, 2040},
};

struct SliderRow {
  const char* caption;
  const char* name;
  const char* startValue;
};

inline const std::vector<SliderRow> kSliders = {
    {"Step Size Range 1/30", "Step Size", "04"},
    {"Shakiness Range 1/10", "Shakiness Value", "03"},
    {"Accuracy Range 1/15", "Accuracy Value", "05"},
    {"Zoom Range 1/100", "Zoom Value", "010"},
    {"Smoothing Range 1/100", "Smoothing Value", "025"},
    {"UnSharp LX Range 3/15", "UnSharp LX Value", "06"},
    {"UnSharp LY Range 3/15", "UnSharp LY Value", "06"},
};
// clang-format on

// All controls of the window, by name.
inline const std::vector<const char*> kAllNames = {
    "HScroll1",    "Label1(0)",   "Label1(1)",   "Label1(2)",   "Label1(3)",   "Label1(4)",
    "Label1(5)",   "Label1(6)",   "Label10(0)",  "Label10(1)",  "Label10(2)",  "Label10(3)",
    "Label11(0)",  "Label11(1)",  "Label12(0)",  "Label12(2)",  "Label12(3)",  "Label12(4)",
    "Label13",     "Label14(0)",  "Label14(1)",  "Label15(0)",  "Label15(1)",  "Label16(0)",
    "Label16(1)",  "Label16(2)",  "Label2(0)",   "Label2(1)",   "Label2(10)",  "Label2(11)",
    "Label2(12)",  "Label2(13)",  "Label2(2)",   "Label2(3)",   "Label2(4)",   "Label2(5)",
    "Label2(6)",   "Label2(7)",   "Label2(8)",   "Label2(9)",   "Label3(0)",   "Label3(1)",
    "Label3(2)",   "Label3(3)",   "Label3(4)",   "Label3(5)",   "Label3(6)",   "Label4(0)",
    "Label4(1)",   "Label5",      "Label6(0)",   "Label6(1)",   "Label7(0)",   "Label7(1)",
    "Label8(0)",   "Label8(1)",   "Label8(2)",   "Label8(3)",   "Label8(4)",   "Label8(5)",
    "Label8(6)",   "Label9(0)",   "Label9(1)",   "Label9(2)",   "Label9(3)",   "Label9(4)",
    "Label9(5)",   "Line1",       "Line2",       "Line3(0)",    "Line3(1)",    "Line4",
    "Line5",       "Line6",       "Line7",       "Line8",       "Picture1",    "Picture2(0)",
    "Picture2(1)", "Picture2(2)", "Picture2(3)", "Picture2(4)", "Picture2(5)", "Picture2(6)",
    "Picture3(0)", "Picture3(1)", "Picture4(0)", "Picture4(1)", "Picture5",    "Picture6",
    "Picture7(0)", "Picture7(1)", "Picture7(2)", "Picture7(3)", "Picture8",    "Shape1",
    "Shape2(0)",   "Shape2(1)",   "Shape2(2)",   "Shape2(3)",   "Shape2(4)",   "Shape2(5)",
    "Shape2(6)",   "Shape3",      "Shape4",      "Shape5(0)",   "Shape5(1)",   "Text1",
    "Text2",       "Text3",       "Text4",       "Text5",       "pbar(0)",     "pbar(1)",
    "pbar(2)",     "wmp"};

}  // namespace kelvane::testing
