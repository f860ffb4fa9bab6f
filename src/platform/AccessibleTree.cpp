#include "platform/AccessibleTree.h"

#include <QMenuBar>
#include <algorithm>

#include "platform/Container.h"
#include "platform/Form.h"
#include "platform/Label.h"

namespace kelvane {
namespace {

bool IsLevel(const Control& control) {
  return control.Role() != SpokenRole::kBox || !control.Meaning().isEmpty();
}

bool SaysSomething(const Control& control) {
  if (control.Role() == SpokenRole::kNothing) return false;
  const auto* label = qobject_cast<const Label*>(&control);
  return label == nullptr || !label->Meaning().isEmpty() || !label->Caption().trimmed().isEmpty();
}

// A line of controls reaches as far down as the one of them whose middle is highest.
void SortForReading(QList<Control*>& controls) {
  const auto middle = [](const Control* control) { return control->geometry().center().y(); };
  const auto left = [](const Control* control) { return control->x(); };
  std::ranges::stable_sort(controls, {}, middle);
  for (auto first = controls.begin(); first != controls.end();) {
    const int bottom = (*first)->geometry().bottom();
    const auto end = std::find_if(first, controls.end(),
                                  [&](const Control* control) { return middle(control) > bottom; });
    const auto next = end == first ? std::next(first) : end;
    std::stable_sort(first, next, [&](const Control* one, const Control* other) {
      return left(one) < left(other);
    });
    first = next;
  }
}

QList<QWidget*> PartsIn(const QWidget& box) {
  QList<Control*> controls;
  for (QObject* child : box.children()) {
    auto* control = qobject_cast<Control*>(child);
    if (control != nullptr && !control->isHidden() && SaysSomething(*control)) controls << control;
  }
  SortForReading(controls);
  QList<QWidget*> parts;
  for (Control* control : controls) parts << SpokenParts(*control);
  return parts;
}

}  // namespace

QList<QWidget*> SpokenParts(Control& control) {
  if (!SaysSomething(control)) return {};
  return IsLevel(control) ? QList<QWidget*>{&control} : PartsIn(control);
}

QList<QWidget*> SpokenChildren(const QWidget& parent) {
  QList<QWidget*> children;
  if (const auto* control = qobject_cast<const Control*>(&parent)) {
    if (control->StockWidget() != nullptr) return {control->StockWidget()};
    return PartsIn(*control);
  }
  auto* menus = parent.findChild<QMenuBar*>(QString(), Qt::FindDirectChildrenOnly);
  if (menus != nullptr && menus->height() > 0) children << menus;
  return children << PartsIn(parent);
}

QWidget* SpokenParent(const Control& control) {
  QWidget* parent = control.parentWidget();
  while (parent != nullptr) {
    const auto* box = qobject_cast<const Control*>(parent);
    if (box == nullptr || IsLevel(*box)) break;
    parent = parent->parentWidget();
  }
  return parent;
}

}  // namespace kelvane
