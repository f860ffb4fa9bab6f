#include "support/DesignRow.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "platform/CommandButton.h"
#include "platform/Label.h"
#include "platform/OptionButton.h"
#include "platform/TextBox.h"

namespace kelvane::testing {
namespace {

template <class Check>
void ForEach(const Form& form, const DesignRows& rows, Check check) {
  for (const DesignRow& row : rows) {
    SCOPED_TRACE(row.name);
    const auto* control = form.findChild<Control*>(QLatin1String(row.name));
    ASSERT_NE(control, nullptr);
    check(*control, row);
  }
}

QString TextOf(const Control& control) {
  if (const auto* label = qobject_cast<const Label*>(&control)) return label->Caption();
  if (const auto* box = qobject_cast<const TextBox*>(&control)) return box->Text();
  if (const auto* button = qobject_cast<const CommandButton*>(&control)) return button->Caption();
  if (const auto* option = qobject_cast<const OptionButton*>(&control)) return option->Caption();
  return {};
}

}  // namespace

void ExpectClasses(const Form& form, const DesignRows& rows) {
  ForEach(form, rows, [](const Control& control, const DesignRow& row) {
    EXPECT_EQ(control.metaObject()->className(), std::string("kelvane::") + row.controlClass);
  });
}

void ExpectNoOthers(const Form& form, const DesignRows& rows) {
  Texts expected;
  for (const DesignRow& row : rows) expected.emplace_back(row.name);
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(NamesIn(form), expected);
}

void ExpectContainers(const Form& form, const DesignRows& rows) {
  ForEach(form, rows, [](const Control& control, const DesignRow& row) {
    EXPECT_EQ(control.parent()->objectName().toStdString(), row.container);
  });
}

void ExpectPlaces(const Form& form, const DesignRows& rows, const std::string& boxInTwips) {
  ForEach(form, rows, [&](const Control& control, const DesignRow& row) {
    ExpectAt(control, row.place, row.container == boxInTwips ? 1 : 15);
  });
}

void ExpectAt(const Control& control, const Twips& place, float twipsPerUnit) {
  const std::string name = control.objectName().toStdString();
  EXPECT_EQ(control.Left(), place.left / twipsPerUnit) << name;
  EXPECT_EQ(control.Top(), place.top / twipsPerUnit) << name;
  EXPECT_EQ(control.Width(), place.width / twipsPerUnit) << name;
  EXPECT_EQ(control.Height(), place.height / twipsPerUnit) << name;
}

void ExpectTexts(const Form& form, const DesignRows& rows) {
  ForEach(form, rows, [](const Control& control, const DesignRow& row) {
    EXPECT_EQ(TextOf(control).toStdString(), row.caption);
  });
}

void ExpectVisibility(const Form& form, const DesignRows& rows) {
  ForEach(form, rows, [](const Control& control, const DesignRow& row) {
    EXPECT_EQ(control.Visible(), row.visible == kShown);
  });
}

void ExpectFrontToBack(const Form& form, const DesignRows& rows, const DesignRows& anywhere) {
  std::map<std::string, Texts> expected;
  std::map<std::string, Texts> found;
  ForEach(form, rows, [&](const Control& control, const DesignRow& row) {
    expected[row.container].emplace_back(row.name);
    found[row.container] = FrontToBack(*control.parentWidget());
  });
  for (const DesignRow& row : anywhere) std::erase(found[row.container], row.name);
  EXPECT_EQ(found, expected);
}

Texts FrontToBack(const QWidget& container) {
  Texts names;
  for (const QObject* child : container.children()) {
    if (qobject_cast<const Control*>(child) != nullptr) {
      names.insert(names.begin(), child->objectName().toStdString());
    }
  }
  return names;
}

Texts NamesIn(const Form& form) {
  Texts names;
  for (const Control* control : form.findChildren<Control*>()) {
    if (!control->objectName().isEmpty()) names.push_back(control->objectName().toStdString());
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace kelvane::testing
