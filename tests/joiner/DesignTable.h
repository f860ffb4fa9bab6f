#pragma once

#include "support/DesignRow.h"

// The joiner window as drawn: what stands where, in twips, front to back.
namespace kelvane::testing {

// clang-format off
inline const DesignRows kDesign = {
    {"Picture4", "PictureBox", "", {600, 9720, 16095, 2295}, "", kHidden},
    {"List2", "ListBox", "", {4080, 240, 10095, 1920}, "Picture4", kShown},
    {"Text1", "TextBox", "", {960, 240, 2655, 735}, "Picture4", kShown},
    {"List1", "ListBox", "", {13320, 4800, 4695, 3600}, "", kShown},
    {"Picture3", "PictureBox", "", {450, 8760, 19935, 1095}, "", kShown},
    {"Picture6", "PictureBox", "", {4560, 120, 2415, 495}, "Picture3", kShown},
    {"Option1(1)", "OptionButton", "Transcode All sections", {240, 240, 2055, 255}, "Picture6", kShown},
    {"Option1(0)", "OptionButton", "No Transcode", {240, 0, 1335, 255}, "Picture6", kShown},
    {"Shape8", "Shape", "", {9240, 45, 5895, 255}, "Picture3", kShown},
    {"Label3(8)", "Label", "Video Details:", {9360, 60, 990, 210}, "Picture3", kShown},
    {"Shape7", "Shape", "", {9240, 405, 5895, 690}, "Picture3", kShown},
    {"Shape6", "Shape", "", {7200, 45, 1935, 1050}, "Picture3", kShown},
    {"Shape5", "Shape", "", {0, 45, 1935, 1050}, "Picture3", kShown},
    {"Shape4", "Shape", "", {4440, 45, 2655, 1050}, "Picture3", kShown},
    {"Label3(7)", "Label", "Total Sections: 00", {120, 360, 1695, 255}, "Picture3", kShown},
    {"Label3(6)", "Label", "Process: Compiling Video List", {16560, 720, 3135, 255}, "Picture3", kShown},
    {"Label1(2)", "Label", "Save Video File List", {7320, 720, 1695, 255}, "Picture3", kShown},
    {"Label3(5)", "Label", "Total Combined Video Runtime", {9480, 720, 2415, 255}, "Picture3", kShown},
    {"Label3(4)", "Label", "00:00:00", {14160, 720, 1095, 255}, "Picture3", kShown},
    {"Label3(3)", "Label", "00,000", {14160, 480, 975, 255}, "Picture3", kShown},
    {"Label3(2)", "Label", "hours: minutes: seconds", {12000, 720, 1935, 255}, "Picture3", kShown},
    {"Label3(1)", "Label", "seconds", {12000, 480, 855, 255}, "Picture3", kShown},
    {"Label3(0)", "Label", "Total Combined Video Duration", {9480, 480, 2415, 255}, "Picture3", kShown},
    {"Shape1", "Shape", "", {2040, 840, 255, 255}, "Picture3", kShown},
    {"Label1(1)", "Label", "Join All Sections", {4560, 720, 2415, 255}, "Picture3", kShown},
    {"Label1(0)", "Label", "Add Video Section", {120, 720, 1695, 255}, "Picture3", kShown},
    {"ListView1", "ListView", "", {13320, 600, 4695, 3975}, "", kShown},
    {"Picture1(0)", "PictureBox", "", {450, 600, 12495, 7935}, "", kShown},
    {"HScroll1", "HScrollBar", "", {120, 7560, 12015, 255}, "Picture1(0)", kShown},
    {"VScroll1", "VScrollBar", "", {12240, 0, 255, 7335}, "Picture1(0)", kShown},
    {"Picture1(1)", "PictureBox", "", {0, 0, 12135, 7335}, "Picture1(0)", kShown},
    {"Picture5", "PictureBox", "", {0, 0, 9975, 375}, "Picture1(1)", kShown},
    {"Picture1(2)", "PictureBox", "", {240, 480, 11415, 7095}, "Picture1(1)", kShown},
    {"Picture2(0)", "PictureBox", "", {360, 360, 1215, 375}, "Picture1(2)", kShown},
    {"Label2(0)", "Label", "", {0, 0, 1395, 240}, "Picture2(0)", kShown},
    {"Shape3", "Shape", "", {360, 1200, 1215, 375}, "Picture1(2)", kHidden},
    {"Line1(0)", "Line", "", {360, 960, 1200, 0}, "Picture1(2)", kHidden},
    {"Line3", "Line", "", {0, 0, 0, 0}, "", kShown},
    {"Line2", "Line", "", {0, 0, 0, 0}, "", kShown},
    {"Shape2", "Shape", "", {480, 10080, 495, 375}, "", kShown},
};
// clang-format on

}  // namespace kelvane::testing
