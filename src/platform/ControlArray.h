#pragma once

#include <algorithm>
#include <stdexcept>
#include <vector>

#include "platform/Form.h"

namespace kelvane {

// The controls that share a name, such as Label14(0) and Label14(1), by index: those of the design,
// numbered from 0 without a gap, and those loaded later.
template <class Kind>
class ControlArray {
 public:
  // Finds the members by object name among the controls that the form has built.
  ControlArray(const Form& form, const QString& name) : name_(name) {
    const auto member = [&](int index) { return form.findChild<Kind*>(NameOf(index)); };
    for (Kind* control = member(0); control != nullptr; control = member(Count())) {
      controls_.push_back(control);
    }
  }

  // Throws std::out_of_range if there is no such member.
  Kind& operator()(int index) const {
    Kind* const member = Member(index);
    if (member == nullptr) throw std::out_of_range(NameOf(index).toStdString());
    return *member;
  }
  // Returns null if there is no such member.
  Kind* Member(int index) const {
    const auto found = PositionOf(index);
    return found != controls_.end() && (*found)->Index() == index ? *found : nullptr;
  }
  int Count() const { return static_cast<int>(controls_.size()); }
  int UBound() const { return controls_.empty() ? -1 : controls_.back()->Index(); }

  // Adds a member with that index, which must be free, and returns it: a copy of member 0 and its
  // handlers, in the same container, which owns the copy. If the container is on the screen, the
  // copy stays hidden until it is shown, as Qt's widgets do. The array must not be empty.
  Kind& Load(int index) {
    Kind& copy = controls_.front()->Duplicate(NameOf(index));
    controls_.insert(PositionOf(index), &copy);
    return copy;
  }

  auto begin() const { return controls_.begin(); }
  auto end() const { return controls_.end(); }

 private:
  QString NameOf(int index) const {
    return name_ + QLatin1Char('(') + QString::number(index) + QLatin1Char(')');
  }
  auto PositionOf(int index) const {
    return std::lower_bound(
        controls_.begin(), controls_.end(), index,
        [](const Kind* control, int wanted) { return control->Index() < wanted; });
  }

  QString name_;
  std::vector<Kind*> controls_;
};

}  // namespace kelvane
