// Which events of which controls have a handler. A control without one does nothing.
#include <map>

#include "sections/SectionWindowTest.h"

namespace kelvane::testing {
namespace {

class WiredEvents : public SectionWindowTest {};

TEST_F(WiredEvents, AreTheseAndNoOthers) {
  std::map<QString, QString> wired = {
      {"Label1", "Down Move Up"},        {"Label2", "Change"}, {"Label6", "Up"},
      {"Label7", "Down Move Up Double"}, {"Picture2", "Move"}, {"Picture3", "Move Up"},
      {"Picture4", "Down Move"},         {"Picture5", "Move"}, {"Picture6", "Down Move"}};
  for (const Control* control : form_->findChildren<Control*>()) {
    const auto* label = qobject_cast<const Label*>(control);
    const auto* text = qobject_cast<const TextBox*>(control);
    const auto* bar = qobject_cast<const HScrollBar*>(control);
    QStringList events;
    if (control->MouseDown) events << "Down";
    if (control->MouseMove) events << "Move";
    if (control->MouseUp) events << "Up";
    if (control->DblClick) events << "Double";
    if (label != nullptr && label->Change) events << "Change";
    if (text != nullptr && text->Change) events << "Change";
    if (bar != nullptr && bar->Change) events << "Change";
    if (bar != nullptr && bar->Scroll) events << "Scroll";
    EXPECT_EQ(events.join(' '), wired[control->objectName().section('(', 0, 0)])
        << control->objectName().toStdString();
  }
}

}  // namespace
}  // namespace kelvane::testing
