// Members of control arrays that are loaded at run time.
#include <gtest/gtest.h>

#include "platform/ControlArray.h"
#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/Pointer.h"
#include "platform/Shapes.h"
#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

class LoadedControl : public ::testing::Test {
 protected:
  LoadedControl() { form.Open(); }

  TestForm form{{Design(kPictureBox, "Box", {0, 0, 300, 200}),
                 Design(kPictureBox, "Picture2(0)", {10, 20, 30, 40})
                     .In("Box")
                     .Color(0x008000)
                     .Twips()
                     .Pointer(MousePointer::kSizeWestEast),
                 Design(kLabel, "Label2(0)", {0, 0, 20, 10})
                     .Caption("Title")
                     .In("Picture2(0)")
                     .Color(0x102030)
                     .Centred()
                     .Bordered(),
                 Design(kLine, "Line1(0)", {10, 100, 100, 0}).In("Box").Color(0x808080)}};
  ControlArray<PictureBox> boxes{form, "Picture2"};
  ControlArray<Label> labels{form, "Label2"};
  ControlArray<Line> lines{form, "Line1"};
};

TEST_F(LoadedControl, IsAHiddenCopyOfMemberZero) {
  boxes(0).setForeColor(0xFFFFFF);
  boxes(0).setToolTipText("tip");
  const PictureBox& box = boxes.Load(2);
  EXPECT_EQ(box.objectName(), u"Picture2(2)"_s);
  EXPECT_EQ(box.Index(), 2);
  EXPECT_EQ(box.parent(), boxes(0).parent());
  EXPECT_FALSE(box.Visible());
  EXPECT_EQ(box.geometry(), boxes(0).geometry());
  EXPECT_EQ(box.Left(), boxes(0).Left());
  EXPECT_EQ(box.Top(), boxes(0).Top());
  EXPECT_EQ(box.Width(), boxes(0).Width());
  EXPECT_EQ(box.Height(), boxes(0).Height());
  EXPECT_EQ(box.BackColor(), 0x008000U);
  EXPECT_EQ(box.ForeColor(), 0xFFFFFFU);
  EXPECT_EQ(box.UnitsPerPixel(), 15);
  EXPECT_EQ(box.ToolTipText(), u"tip"_s);
  EXPECT_EQ(box.cursor().shape(), Qt::SizeHorCursor);

  const Label& label = labels.Load(2);
  EXPECT_EQ(label.parent(), &boxes(0));
  EXPECT_FALSE(label.Visible());
  EXPECT_EQ(label.Caption(), u"Title"_s);
  EXPECT_EQ(label.BackColor(), 0x102030U);
  EXPECT_EQ(label.ForeColor(), 0xF0E0D0U);
  EXPECT_EQ(label.Alignment(), Qt::AlignHCenter);
  EXPECT_TRUE(label.Bordered());

  const Line& line = lines.Load(2);
  EXPECT_FALSE(line.Visible());
  EXPECT_EQ(line.X1(), 10);
  EXPECT_EQ(line.Y1(), 100);
  EXPECT_EQ(line.X2(), 110);
  EXPECT_EQ(line.Y2(), 100);
  EXPECT_EQ(line.BorderColor(), 0x808080U);
}

TEST_F(LoadedControl, IsFoundByItsIndexInAnArrayWithGaps) {
  for (const int index : {2, 12, 3}) boxes.Load(index);
  EXPECT_EQ(boxes.Count(), 4);
  EXPECT_EQ(boxes.UBound(), 12);
  for (const int missing : {-1, 1, 4, 13}) EXPECT_EQ(boxes.Member(missing), nullptr) << missing;
  EXPECT_THROW(static_cast<void>(boxes(4)), std::out_of_range);
  std::vector<int> order;
  for (const PictureBox* box : boxes) {
    order.push_back(box->Index());
    EXPECT_EQ(boxes.Member(box->Index()), box);
  }
  EXPECT_EQ(order, (std::vector<int>{0, 2, 3, 12}));
}

TEST_F(LoadedControl, HasTheHandlersOfItsArrayWithItsOwnIndex) {
  Events events;
  Record(boxes(0), events);
  boxes(0).Resize = [&](int index) { events.push_back("Resize " + std::to_string(index)); };
  labels(0).Change = [&](int index) { events.push_back("Change " + std::to_string(index)); };
  PictureBox& box = boxes.Load(2);
  box.setLeft(100);
  box.setVisible(true);
  box.setWidth(50);
  labels.Load(3).setCaption("x");
  Pointer pointer(form);
  pointer.MoveTo(box, QPoint(3, 4));
  pointer.DoubleClick();
  EXPECT_EQ(events, (Events{"Resize 2", "Change 3", "Move 2 at 45,60", "Down 2 button 1 at 45,60",
                            "Up 2 button 1 at 45,60", "Double 2 button 1 at 45,60",
                            "Up 2 button 1 at 45,60"}));
}

TEST_F(LoadedControl, IsEmptyWhereMemberZeroHasBeenDrawnOn) {
  boxes(0).DrawLine(0, 0, 450, 0, 0xFF0000);
  PictureBox& box = boxes.Load(2);
  box.setVisible(true);
  EXPECT_EQ(CountOf(Picture(box), 0x008000), 30 * 40);
}

TEST_F(LoadedControl, IsHiddenByAMoveIntoAnotherContainerAndHasThatOnesUnit) {
  PictureBox& box = boxes.Load(2);
  box.setVisible(true);
  Label& label = labels.Load(2);
  label.setVisible(true);
  label.setContainer(box);
  EXPECT_EQ(label.parent(), &box);
  EXPECT_FALSE(label.Visible());
  label.setLeft(30);
  EXPECT_EQ(label.x(), 2);
}

}  // namespace
}  // namespace kelvane::testing
