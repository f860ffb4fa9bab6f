// Members of control arrays that are loaded at run time, and what else controls do only then.
#include <gtest/gtest.h>

#include <QtMath>

#include "platform/ControlArray.h"
#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/Pointer.h"
#include "platform/Shapes.h"
#include "platform/TestForm.h"
#include "support/Events.h"

namespace kelvane::testing {
namespace {

class ALoadedControl : public ::testing::Test {
 protected:
  ALoadedControl() { form.Open(); }

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

TEST_F(ALoadedControl, CopiesItsTemplateAndIsNotYetOnShow) {
  boxes(0).setForeColor(0xFFFFFF);
  boxes(0).setToolTipText("tip");
  const PictureBox& box = boxes.Load(2);
  EXPECT_EQ(box.objectName(), QString("Picture2(2)"));
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
  EXPECT_EQ(box.ToolTipText(), QString("tip"));
  EXPECT_EQ(box.cursor().shape(), Qt::SizeHorCursor);

  const Label& label = labels.Load(2);
  EXPECT_EQ(label.parent(), &boxes(0));
  EXPECT_FALSE(label.Visible());
  EXPECT_EQ(label.Caption(), QString("Title"));
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

TEST_F(ALoadedControl, IsCountedAndFoundByItsIndexThoughOthersBeforeItAreMissing) {
  boxes.Load(2);
  boxes.Load(5);
  boxes.Load(3);
  EXPECT_EQ(boxes.Count(), 4);
  EXPECT_EQ(boxes.UBound(), 5);
  EXPECT_EQ(boxes(3).Index(), 3);
  EXPECT_EQ(boxes.Member(1), nullptr);
  EXPECT_EQ(boxes.Member(-1), nullptr);
  EXPECT_EQ(boxes.Member(6), nullptr);
  EXPECT_EQ(boxes.Member(5), &boxes(5));
  EXPECT_THROW(static_cast<void>(boxes(4)), std::out_of_range);
  std::vector<int> order;
  for (const PictureBox* box : boxes) order.push_back(box->Index());
  EXPECT_EQ(order, (std::vector<int>{0, 2, 3, 5}));
}

TEST_F(ALoadedControl, HasTheHandlersOfItsArrayWithItsOwnIndex) {
  Events events;
  Record(boxes(0), events);
  boxes(0).Resize = [&](int Index) { events.push_back("Resize " + std::to_string(Index)); };
  labels(0).Change = [&](int Index) { events.push_back("Change " + std::to_string(Index)); };
  PictureBox& box = boxes.Load(2);
  box.setLeft(100);
  box.setVisible(true);
  box.setWidth(50);
  labels.Load(3).setCaption("x");
  Pointer pointer(form);
  pointer.MoveTo(box, QPoint(3, 4));
  pointer.Click();
  EXPECT_EQ(events,
            (Events{"Resize 2", "Change 3", "Move 2: button 0 shift 0 at 45,60",
                    "Down 2: button 1 shift 0 at 45,60", "Up 2: button 1 shift 0 at 45,60"}));
}

TEST_F(ALoadedControl, IsEmptyWhereItsTemplateHasBeenDrawnOn) {
  boxes(0).DrawLine(0, 0, 450, 0, 0xFF0000);
  PictureBox& box = boxes.Load(2);
  box.setVisible(true);
  EXPECT_EQ(CountOf(Picture(box), 0x008000), 30 * 40);
}

TEST_F(ALoadedControl, MovesIntoAnotherContainerAndIsHiddenThere) {
  PictureBox& box = boxes.Load(2);
  box.setVisible(true);
  Label& label = labels.Load(2);
  label.setVisible(true);
  label.setContainer(box);
  EXPECT_EQ(label.parent(), &box);
  EXPECT_FALSE(label.Visible());
  label.setLeft(30);
  EXPECT_EQ(label.x(), 2) << "in the new container's unit";
}

TEST(APictureBox, LosesItsDrawingWithABackColourEvenTheSame) {
  TestForm form({Design(kPictureBox, "Box", {10, 20, 30, 40}).Color(0x404040)});
  form.Open();
  auto& box = form.Find<PictureBox>("Box");
  for (const QRgb color : {0x808080U, 0x808080U}) {
    box.DrawLine(0, 5, 30, 5, 0xFF0000);
    ASSERT_EQ(CountOf(Picture(box), 0xFF0000), 30);
    box.setBackColor(color);
    EXPECT_EQ(CountOf(Picture(box), color), 30 * 40);
  }
}

TEST(APictureBox, ShowsAtOnceWhatHasChangedWhenItIsRefreshed) {
  TestForm form({Design(kPictureBox, "Box", {0, 0, 30, 40})});
  form.Open();
  auto& box = form.Find<PictureBox>("Box");
  PumpOnce();
  class Paintings : public QObject {
   public:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
      if (event->type() == QEvent::Paint) ++count;
      return false;
    }
    int count = 0;
  } paintings;
  box.installEventFilter(&paintings);
  box.DrawLine(0, 5, 30, 5, 0xFF0000);
  EXPECT_EQ(paintings.count, 0);
  box.Refresh();
  EXPECT_EQ(paintings.count, 1);
}

TEST(ALabelThatSizesItself, TakesTheSizeOfEachNewCaptionBeforeItsChange) {
  for (const FormDesign& design : {kPixelForm, TwipForm()}) {
    TestForm form(
        design,
        {Design(kLabel, "Label1", {10, 10, 66, 14}).Caption("Video Details:").SizesItself()});
    form.Open();
    auto& label = form.Find<Label>("Label1");
    EXPECT_EQ(label.size(), QSize(66, 14)) << "as drawn";
    int widthAtChange = 0;
    label.Change = [&](int) { widthAtChange = label.width(); };
    for (const char* caption : {"Video Details: a.mp4", "", "A && B"}) {
      label.setCaption(QLatin1String(caption));
      const QString shown = QString(QLatin1String(caption)).replace("&&", "&");
      const int width = qCeil(QFontMetricsF(label.font()).horizontalAdvance(shown));
      EXPECT_EQ(label.size(), QSize(width, QFontMetrics(label.font()).height())) << caption;
      EXPECT_EQ(widthAtChange, label.width()) << caption;
    }
  }
}

}  // namespace
}  // namespace kelvane::testing
