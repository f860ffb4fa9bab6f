#pragma once

#include <array>

#include "platform/Form.h"
#include "shared/Colours.h"

// The joiner window as designed. Places are in twips; InitGUI and Form_Resize change many of them.
namespace kelvane {

constexpr QRgb kStripGreen = 0x008000;

constexpr FormDesign kForm4 = {.name = "Form4",
                               .caption = "Video Joiner",
                               .clientWidth = 22785,
                               .clientHeight = 12675,
                               .backColor = kCanvasGrey,
                               .labelColor = kLight,
                               .scale = ScaleMode::kPixels};

// Front to back.
// clang-format off
using enum ControlClass;
constexpr auto kForm4Controls = std::to_array<ControlDesign>({
    {.name = "Picture4", .controlClass = kPictureBox, .place = {600, 9720, 16095, 2295}, .visible = false, .color = kGrey, .twips = true},
    {.name = "List2", .controlClass = kListBox, .place = {4080, 240, 10095, 1920}, .container = "Picture4"},
    {.name = "Text1", .controlClass = kTextBox, .place = {960, 240, 2655, 735}, .container = "Picture4", .color = kDark},

    {.name = "List1", .controlClass = kListBox, .place = {13320, 4800, 4695, 3600}, .color = kCanvasGrey, .meaning = "Paths of the video sections"},

    {.name = "Picture3", .controlClass = kPictureBox, .place = {450, 8760, 19935, 1095}, .color = kCanvasGrey},
    {.name = "Picture6", .controlClass = kPictureBox, .place = {4560, 120, 2415, 495}, .container = "Picture3", .color = kCanvasGrey, .meaning = "How to join"},
    {.name = "Option1(1)", .controlClass = kOptionButton, .place = {240, 240, 2055, 255}, .caption = "Transcode All sections", .container = "Picture6"},
    {.name = "Option1(0)", .controlClass = kOptionButton, .place = {240, 0, 1335, 255}, .caption = "No Transcode", .container = "Picture6", .chosen = true},
    {.name = "Shape8", .controlClass = kShape, .place = {9240, 45, 5895, 255}, .container = "Picture3", .color = kGrey},
    {.name = "Label3(8)", .controlClass = kLabel, .place = {9360, 60, 990, 210}, .caption = "Video Details:", .container = "Picture3", .sizesItself = true},
    {.name = "Shape7", .controlClass = kShape, .place = {9240, 405, 5895, 690}, .container = "Picture3", .color = kGrey},
    {.name = "Shape6", .controlClass = kShape, .place = {7200, 45, 1935, 1050}, .container = "Picture3", .color = kGrey},
    {.name = "Shape5", .controlClass = kShape, .place = {0, 45, 1935, 1050}, .container = "Picture3", .color = kGrey},
    {.name = "Shape4", .controlClass = kShape, .place = {4440, 45, 2655, 1050}, .container = "Picture3", .color = kGrey},
    {.name = "Label3(7)", .controlClass = kLabel, .place = {120, 360, 1695, 255}, .caption = "Total Sections: 00", .container = "Picture3", .centred = true},
    {.name = "Label3(6)", .controlClass = kLabel, .place = {16560, 720, 3135, 255}, .caption = "Process: Compiling Video List", .container = "Picture3"},
    {.name = "Label1(2)", .controlClass = kLabel, .place = {7320, 720, 1695, 255}, .caption = "Save Video File List", .container = "Picture3", .centred = true, .bordered = true, .role = SpokenRole::kCommand},
    {.name = "Label3(5)", .controlClass = kLabel, .place = {9480, 720, 2415, 255}, .caption = "Total Combined Video Runtime", .container = "Picture3"},
    {.name = "Label3(4)", .controlClass = kLabel, .place = {14160, 720, 1095, 255}, .caption = "00:00:00", .container = "Picture3", .meaning = "Total Combined Video Runtime in hours: minutes: seconds"},
    {.name = "Label3(3)", .controlClass = kLabel, .place = {14160, 480, 975, 255}, .caption = "00,000", .container = "Picture3", .meaning = "Total Combined Video Duration in seconds"},
    {.name = "Label3(2)", .controlClass = kLabel, .place = {12000, 720, 1935, 255}, .caption = "hours: minutes: seconds", .container = "Picture3"},
    {.name = "Label3(1)", .controlClass = kLabel, .place = {12000, 480, 855, 255}, .caption = "seconds", .container = "Picture3"},
    {.name = "Label3(0)", .controlClass = kLabel, .place = {9480, 480, 2415, 255}, .caption = "Total Combined Video Duration", .container = "Picture3"},
    {.name = "Shape1", .controlClass = kShape, .place = {2040, 840, 255, 255}, .container = "Picture3", .color = kLight},
    {.name = "Label1(1)", .controlClass = kLabel, .place = {4560, 720, 2415, 255}, .caption = "Join All Sections", .container = "Picture3", .centred = true, .bordered = true, .role = SpokenRole::kCommand},
    {.name = "Label1(0)", .controlClass = kLabel, .place = {120, 720, 1695, 255}, .caption = "Add Video Section", .container = "Picture3", .centred = true, .bordered = true, .role = SpokenRole::kCommand},

    {.name = "ListView1", .controlClass = kListView, .place = {13320, 600, 4695, 3975}, .color = kCanvasGrey, .meaning = "Video sections"},

    {.name = "Picture1(0)", .controlClass = kPictureBox, .place = {450, 600, 12495, 7935}, .color = kCanvasGrey, .meaning = "Time chart"},
    {.name = "HScroll1", .controlClass = kHScrollBar, .place = {120, 7560, 12015, 255}, .container = "Picture1(0)", .meaning = "Scroll the time chart sideways"},
    {.name = "VScroll1", .controlClass = kVScrollBar, .place = {12240, 0, 255, 7335}, .container = "Picture1(0)", .meaning = "Vertical bar of the time chart"},
    {.name = "Picture1(1)", .controlClass = kPictureBox, .place = {0, 0, 12135, 7335}, .container = "Picture1(0)", .color = kGrey},
    {.name = "Picture5", .controlClass = kPictureBox, .place = {0, 0, 9975, 375}, .container = "Picture1(1)", .color = kCanvasGrey},
    {.name = "Picture1(2)", .controlClass = kPictureBox, .place = {240, 480, 11415, 7095}, .container = "Picture1(1)", .color = kCanvasGrey, .meaning = "Video sections on the time chart", .role = SpokenRole::kList},
    {.name = "Picture2(0)", .controlClass = kPictureBox, .place = {360, 360, 1215, 375}, .container = "Picture1(2)", .color = kStripGreen, .role = SpokenRole::kListItem},
    {.name = "Label2(0)", .controlClass = kLabel, .place = {0, 0, 1395, 240}, .container = "Picture2(0)"},
    {.name = "Shape3", .controlClass = kShape, .place = {360, 1200, 1215, 375}, .container = "Picture1(2)", .visible = false, .color = kLight},
    {.name = "Line1(0)", .controlClass = kLine, .place = {360, 960, 1200, 0}, .container = "Picture1(2)", .visible = false, .color = kGrey},

    {.name = "Line3", .controlClass = kLine, .place = {}, .color = kGrey},
    {.name = "Line2", .controlClass = kLine, .place = {}, .color = kGrey},
    {.name = "Shape2", .controlClass = kShape, .place = {480, 10080, 495, 375}, .color = kGrey},
});

constexpr auto kForm4Menus = std::to_array<MenuDesign>({
    {.name = "mnu_ContextMenu", .caption = "ContextMenu"},
    {.name = "mnu_RemoveSection", .caption = "Remove Section", .menu = "mnu_ContextMenu"},
});
// clang-format on

}  // namespace kelvane
