// Controls of one role and their index.
#include "platform/ControlArray.h"

#include <gtest/gtest.h>

#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

constexpr ControlClass kLabel = ControlClass::kLabel;

// Out of order, among others of similar names, one of them in a box.
const Controls kControls{
    {.name = "Label1(2)", .controlClass = kLabel, .place = {}},
    {.name = "Label14(0)", .controlClass = kLabel, .place = {}},
    {.name = "Label1(0)", .controlClass = kLabel, .place = {}},
    {.name = "Picture1", .controlClass = ControlClass::kPictureBox, .place = {}},
    {.name = "Label1(1)", .controlClass = kLabel, .place = {}, .container = "Picture1"},
    {.name = "Label14(1)", .controlClass = kLabel, .place = {}},
    {.name = "Label2", .controlClass = kLabel, .place = {}},
    {.name = "Label3(11)", .controlClass = kLabel, .place = {}}};

TEST(AControlArray, HasTheControlsOfItsNameByTheirIndex) {
  const TestForm form(kControls);
  const ControlArray<Label> labels(form, QStringLiteral("Label1"));
  EXPECT_EQ(labels.Count(), 3);
  EXPECT_EQ(labels.UBound(), 2);
  for (int index = 0; index < 3; ++index) {
    EXPECT_EQ(labels(index).objectName(), QStringLiteral("Label1(%1)").arg(index));
    EXPECT_EQ(labels(index).Index(), index);
  }
}

TEST(AControlArray, RunsThroughItsControlsInTheOrderOfTheirIndex) {
  const TestForm form(kControls);
  Events names;
  for (const Label* label : ControlArray<Label>(form, QStringLiteral("Label1"))) {
    names.push_back(label->objectName().toStdString());
  }
  EXPECT_EQ(names, (Events{"Label1(0)", "Label1(1)", "Label1(2)"}));
}

TEST(AControlArray, HasMembersOfAnIndexOfTwoDigits) {
  Controls controls;
  std::vector<std::string> names;
  for (int index = 0; index < 16; ++index) {
    names.push_back("Label1(" + std::to_string(index) + ")");
  }
  for (const std::string& name : names) {
    controls.push_back({.name = name.c_str(), .controlClass = kLabel, .place = {}});
  }
  const TestForm form(controls);
  const ControlArray<Label> labels(form, QStringLiteral("Label1"));
  EXPECT_EQ(labels.Count(), 16);
  EXPECT_EQ(labels(15).Index(), 15);
}

TEST(AControlArray, OfANameThatNobodyHasIsEmpty) {
  const TestForm form(kControls);
  EXPECT_EQ(ControlArray<Label>(form, QStringLiteral("Label9")).Count(), 0);
  EXPECT_EQ(ControlArray<Label>(form, QStringLiteral("Label9")).UBound(), -1);
}

TEST(AControlArray, HasOneHandlerThatIsToldTheIndex) {
  const TestForm form(kControls);
  Events events;
  const ControlArray<Label> labels(form, QStringLiteral("Label1"));
  for (Label* label : labels) {
    label->Change = [&events](int index) { events.push_back(std::to_string(index)); };
  }
  labels(2).setCaption(QStringLiteral("a"));
  labels(0).setCaption(QStringLiteral("b"));
  labels(1).setCaption(QStringLiteral("c"));
  EXPECT_EQ(events, (Events{"2", "0", "1"}));
}

TEST(AControl, KnowsTheIndexInItsNameAndHasNoneOutsideAnArray) {
  const TestForm form(kControls);
  EXPECT_EQ(form.Find<Label>("Label3(11)").Index(), 11);
  EXPECT_EQ(form.Find<Label>("Label2").Index(), -1);
  EXPECT_EQ(form.Find<PictureBox>("Picture1").Index(), -1);
}

}  // namespace
}  // namespace kelvane::testing
