#pragma once

#include <QColor>
#include <optional>

#include "platform/Control.h"

// A window's design as data: its controls, front to back, and its menus. All texts are Latin-1.
namespace kelvane {

enum class ControlClass {
  kCommandButton,
  kHScrollBar,
  kLabel,
  kLine,
  kListBox,
  kListView,
  kOptionButton,
  kPictureBox,
  kProgressBar,
  kShape,
  kSlider,
  kTextBox,
  kVScrollBar,
  kWindowsMediaPlayer
};

// In twips, relative to the container. A line runs from the top left to the bottom right corner of
// its place.
struct DesignPlace {
  float left;
  float top;
  float width;
  float height;
};

struct ControlDesign {
  const char* name;  // with the index of a control array: "Label14(3)"
  ControlClass controlClass;
  DesignPlace place;
  const char* caption = "";    // or a text box's text
  const char* container = "";  // the name of an earlier picture box; empty for the form itself
  bool visible = true;
  // The back colour, a shape's border colour or a line's. Without one, a label is transparent, a
  // list or text box has the desktop's colours, and a picture box, shape or line is black.
  std::optional<QRgb> color = {};
  std::optional<QRgb> fillColor = {};  // a shape's
  bool centred = false;                // a label's caption
  bool rightAligned = false;           // a label's caption
  bool bordered = false;               // a picture box, a label or a text box
  bool editable = false;               // a text box
  bool twips = false;                  // a picture box with ScaleMode::kTwips
  bool sizesItself = false;            // a label that resizes to each new caption
  bool chosen = false;                 // an option button
  int borderWidth = 1;                 // a shape's, in pixels
  MousePointer pointer = MousePointer::kDefault;
  // For a screen reader.
  const char* meaning = "";             // what it is, if its caption doesn't say so
  std::optional<SpokenRole> role = {};  // if it isn't that of its class
  const char* readOut = "";  // of a thumb: the name of the label whose caption is its value
};

struct MenuDesign {
  const char* name;
  const char* caption;
  const char* menu = "";  // the name of the menu that has this item, earlier in the table; empty
                          // for a menu
  bool visible = true;
};

}  // namespace kelvane
