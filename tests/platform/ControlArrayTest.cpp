// Controls of one role and their index.
#include "platform/ControlArray.h"

#include <gtest/gtest.h>

#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

// Out of order, among others of similar names, one of them in a box.
class ControlArrayTest : public ::testing::Test {
 protected:
  const TestForm form{{Design(kLabel, "Label1(2)"), Design(kLabel, "Label14(0)"),
                       Design(kLabel, "Label1(0)"), Design(kPictureBox, "Picture1"),
                       Design(kLabel, "Label1(1)").In("Picture1"), Design(kLabel, "Label14(1)"),
                       Design(kLabel, "Label2"), Design(kLabel, "Label3(11)")}};
  const ControlArray<Label> labels{form, "Label1"};
};

TEST_F(ControlArrayTest, HasTheControlsOfItsNameInTheOrderOfTheirIndex) {
  EXPECT_EQ(labels.Count(), 3);
  EXPECT_EQ(labels.UBound(), 2);
  int index = 0;
  for (const Label* label : labels) {
    EXPECT_EQ(label->objectName(), u"Label1(%1)"_s.arg(index));
    EXPECT_EQ(label->Index(), index);
    EXPECT_EQ(&labels(index), label);
    ++index;
  }
}

TEST_F(ControlArrayTest, IsEmptyForANameThatNoControlHas) {
  const ControlArray<Label> none(form, "Label9");
  EXPECT_EQ(none.Count(), 0);
  EXPECT_EQ(none.UBound(), -1);
}

TEST_F(ControlArrayTest, GivesItsHandlerTheIndex) {
  Events events;
  for (Label* label : labels) {
    label->Change = [&events](int index) { events.push_back(std::to_string(index)); };
  }
  for (const int index : {2, 0, 1}) labels(index).setCaption("a");
  EXPECT_EQ(events, (Events{"2", "0", "1"}));
}

TEST_F(ControlArrayTest, LeavesControlsOutsideAnArrayWithoutAnIndex) {
  EXPECT_EQ(form.Find<Label>("Label3(11)").Index(), 11);
  EXPECT_EQ(form.Find<Label>("Label2").Index(), -1);
  EXPECT_EQ(form.Find<PictureBox>("Picture1").Index(), -1);
}

}  // namespace
}  // namespace kelvane::testing
