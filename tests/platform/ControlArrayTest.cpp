// Controls of one role and their index.
#include "platform/ControlArray.h"

#include <gtest/gtest.h>

#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

// Out of order, among others of similar names, one of them in a box.
const Controls kControls{Design(kLabel, "Label1(2)"),
                         Design(kLabel, "Label14(0)"),
                         Design(kLabel, "Label1(0)"),
                         Design(kPictureBox, "Picture1"),
                         Design(kLabel, "Label1(1)").In("Picture1"),
                         Design(kLabel, "Label14(1)"),
                         Design(kLabel, "Label2"),
                         Design(kLabel, "Label3(11)")};

TEST(AControlArray, HasTheControlsOfItsNameByTheirIndex) {
  const TestForm form(kControls);
  const ControlArray<Label> labels(form, u"Label1"_s);
  EXPECT_EQ(labels.Count(), 3);
  EXPECT_EQ(labels.UBound(), 2);
  for (int index = 0; index < 3; ++index) {
    EXPECT_EQ(labels(index).objectName(), u"Label1(%1)"_s.arg(index));
    EXPECT_EQ(labels(index).Index(), index);
  }
}

TEST(AControlArray, RunsThroughItsControlsInTheOrderOfTheirIndex) {
  const TestForm form(kControls);
  Events names;
  for (const Label* label : ControlArray<Label>(form, u"Label1"_s)) {
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
    controls.push_back(Design(kLabel, name.c_str()));
  }
  const TestForm form(controls);
  const ControlArray<Label> labels(form, u"Label1"_s);
  EXPECT_EQ(labels.Count(), 16);
  EXPECT_EQ(labels(15).Index(), 15);
}

TEST(AControlArray, OfANameThatNobodyHasIsEmpty) {
  const TestForm form(kControls);
  EXPECT_EQ(ControlArray<Label>(form, u"Label9"_s).Count(), 0);
  EXPECT_EQ(ControlArray<Label>(form, u"Label9"_s).UBound(), -1);
}

TEST(AControlArray, HasOneHandlerThatIsToldTheIndex) {
  const TestForm form(kControls);
  Events events;
  const ControlArray<Label> labels(form, u"Label1"_s);
  for (Label* label : labels) {
    label->Change = [&events](int index) { events.push_back(std::to_string(index)); };
  }
  labels(2).setCaption(u"a"_s);
  labels(0).setCaption(u"b"_s);
  labels(1).setCaption(u"c"_s);
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
