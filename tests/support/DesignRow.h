#pragma once

#include <string>
#include <vector>

#include "platform/Form.h"
#include "support/Events.h"

// A window as drawn, in a table, and what of it any window has to show.
namespace kelvane::testing {

struct Twips {
  float left, top, width, height;
};

enum AtDesign : bool { kHidden = false, kShown = true };

struct DesignRow {
  const char* name;
  const char* controlClass;
  const char* caption;  // or a text box's text
  Twips place;
  const char* container;  // the window itself if empty
  AtDesign visible;
};
using DesignRows = std::vector<DesignRow>;

void ExpectClasses(const Form& form, const DesignRows& rows);
void ExpectNoOthers(const Form& form, const DesignRows& rows);
void ExpectContainers(const Form& form, const DesignRows& rows);
// In pixels; in twips what lies in the box of that name.
void ExpectPlaces(const Form& form, const DesignRows& rows, const std::string& boxInTwips);
void ExpectAt(const Control& control, const Twips& place, float twipsPerUnit);
void ExpectTexts(const Form& form, const DesignRows& rows);
void ExpectVisibility(const Form& form, const DesignRows& rows);
// The rows of each container lie front to back in this order, those of `anywhere` among them.
void ExpectFrontToBack(const Form& form, const DesignRows& rows, const DesignRows& anywhere = {});

// The names of the controls that lie in a container.
Texts FrontToBack(const QWidget& container);
// The names of the form's controls, sorted.
Texts NamesIn(const Form& form);

}  // namespace kelvane::testing
