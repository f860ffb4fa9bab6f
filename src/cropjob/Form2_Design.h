#pragma once

#include <array>

#include "platform/Form.h"
#include "shared/Colours.h"

namespace kelvane {

constexpr FormDesign kForm2 = {.name = "Form2",
                               .caption = "Saving Video",
                               .clientWidth = 6990,
                               .clientHeight = 2400,
                               .backColor = kDark,
                               .labelColor = kLight,
                               .scale = ScaleMode::kTwips,
                               .border = BorderStyle::kFixedDialog};

// Front to back. `Picture2` begins at the window's lower edge, so it is never seen.
// clang-format off
using enum ControlClass;
constexpr auto kForm2Controls = std::to_array<ControlDesign>({
    {.name = "Label2", .controlClass = kLabel, .place = {5160, 330, 1455, 255}, .caption = "Cancel", .centred = true, .role = SpokenRole::kCommand},
    {.name = "Label3", .controlClass = kLabel, .place = {5160, 240, 1455, 375}, .color = kDark},
    {.name = "Picture2", .controlClass = kPictureBox, .place = {240, 2400, 2175, 1335}, .color = kDark, .twips = true},
    {.name = "Picture1", .controlClass = kPictureBox, .place = {120, 1080, 6735, 855}, .color = kDark, .twips = true},
    {.name = "pbar", .controlClass = kProgressBar, .place = {240, 440, 6135, 135}, .container = "Picture1", .meaning = "Progress of the crop"},
    {.name = "Label1(2)", .controlClass = kLabel, .place = {240, 120, 3735, 255}, .caption = "Progress: 00.00 % Complete: Status: Getting Crop Regions", .container = "Picture1", .color = kDark},
    {.name = "Shape1", .controlClass = kShape, .place = {120, 240, 6375, 495}, .container = "Picture1", .color = kGrey},
    {.name = "Label1(1)", .controlClass = kLabel, .place = {240, 600, 4815, 255}, .caption = "No Video", .meaning = "Saving As"},
    {.name = "Label1(0)", .controlClass = kLabel, .place = {240, 240, 975, 255}, .caption = "Saving As"},
    {.name = "Line1", .controlClass = kLine, .place = {240, 960, 6360, 0}, .color = kGrey},
});
// clang-format on

}  // namespace kelvane
