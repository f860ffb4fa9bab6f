#pragma once

#include <vector>

#include "platform/Form.h"

namespace kelvane {

// The controls of one role, by their index in the design, which runs from 0 without a gap.
template <class Kind>
class ControlArray {
 public:
  ControlArray(const Form& form, const QString& name) {
    const auto member = [&](int index) {
      return form.findChild<Kind*>(name + QLatin1Char('(') + QString::number(index) +
                                   QLatin1Char(')'));
    };
    for (Kind* control = member(0); control != nullptr; control = member(Count())) {
      controls_.push_back(control);
    }
  }

  Kind& operator()(int index) const { return *controls_.at(static_cast<std::size_t>(index)); }
  int Count() const { return static_cast<int>(controls_.size()); }
  int UBound() const { return Count() - 1; }

  auto begin() const { return controls_.begin(); }
  auto end() const { return controls_.end(); }

 private:
  std::vector<Kind*> controls_;
};

}  // namespace kelvane
