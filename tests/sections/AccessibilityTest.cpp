// The section window as a screen reader finds it.
#include "sections/SectionWindowTest.h"
#include "support/ScreenReader.h"

namespace kelvane::testing {
namespace {

class SectionWindowReading : public SectionWindowTest {};

TEST_F(SectionWindowReading, OffersNoPressOfACaptionThatDoesNothing) {
  for (const char* name : {"Label14(0)", "Label14(1)", "Label10(0)", "Label10(1)", "Label10(2)",
                           "Label10(3)", "Label12(0)", "Label12(2)", "Label12(3)", "Label12(4)"}) {
    EXPECT_EQ(NodeOf(Get<Label>(name)).actionInterface(), nullptr) << name;
  }
}

// At the start thumb and read-out don't agree.
TEST_F(SectionWindowReading, TellsOfAnOptionWhatItsReadOutSays) {
  QAccessibleValueInterface& smoothing = *NodeOf(Thumb(Smoothing)).valueInterface();
  EXPECT_EQ(smoothing.currentValue().toDouble(), 25);
  DragTo(Thumb(Smoothing), 5000);
  EXPECT_EQ(Value(Smoothing), "20");
  EXPECT_EQ(smoothing.currentValue().toDouble(), 20);
}

TEST_F(SectionWindowReading, DragsANeedleThatIsGivenAValue) {
  NodeOf(NeedleBox(StartNeedle)).valueInterface()->setCurrentValue(100);
  EXPECT_TRUE(WaitFor([this] { return Time(SectionStart) == "00:01:42"; }));
  EXPECT_EQ(NeedleBox(StartNeedle).Left(), 100);
}

TEST_F(SectionWindowReading, StepsTheTimeLineByThePressOfAnArrow) {
  NodeOf(Get<Label>("Label7", TowardsEnd))
      .actionInterface()
      ->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(WaitFor([this] { return Strip().Left() == -40; }));
}

}  // namespace
}  // namespace kelvane::testing
