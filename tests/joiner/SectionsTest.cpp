// What a section consists of, where its strip lies, and what remains of a removed one.
#include <QApplication>
#include <QPainter>

#include "joiner/JoinerWindowTest.h"
#include "support/ScreenReader.h"

namespace kelvane::testing {
namespace {

using JoinerSections = JoinerWindowTest;

// Returns the picture that a strip of this width and number should show.
QImage DrawnStrip(int width, const QString& number) {
  QImage image(width, 17, QImage::Format_RGB32);
  image.fill(QColor(0x008000));
  QPainter painter(&image);
  QFont font("Arial");
  font.setPixelSize(11);
  painter.setFont(font);
  painter.setPen(Qt::white);
  painter.drawText(5, 1 + QFontMetrics(font).ascent(), number);
  return image;
}

TEST_F(JoinerSections, HaveAPathARowAStripAndDetails) {
  AddSectionOf("Füße 動画.mp4");
  EXPECT_EQ(PathsListed(), Texts{Path("Füße 動画.mp4")});
  EXPECT_EQ(Rows(), Texts{"1 | Füße 動画.mp4 | 600"});
  EXPECT_EQ(Strips(), Texts{"1,1 60x17"});
  EXPECT_EQ(Strip(2).parent(), &TimeChart());
  EXPECT_EQ(Picture(Strip(2)), DrawnStrip(60, "01"));
  EXPECT_EQ(Details(2), "   Video Index: 01 Title: Füße 動画.mp4   ");
  EXPECT_EQ(Get<Label>("Label2", 2).Left(), 1);
  EXPECT_EQ(Get<Label>("Label2", 2).Top(), 1);
}

TEST_F(JoinerSections, HaveIndicesFromTwoOnAndAHiddenTemplateHasZero) {
  AddSectionOf("a.mp4");
  AddSectionOf("b.mp4");
  for (const char* array : {"Picture2", "Label2", "Line1"}) {
    EXPECT_FALSE(Get<Control>(array, 0).isVisible()) << array;
    EXPECT_FALSE(Has(array, 1)) << array;
    EXPECT_TRUE(Has(array, 2)) << array;
    EXPECT_TRUE(Has(array, 3)) << array;
    EXPECT_FALSE(Has(array, 4)) << array;
  }
}

TEST_F(JoinerSections, EachBeginWhereThePreviousOneEndsButARowLowerAndHaveARuleBelow) {
  AddSectionOf("a.mp4", "00:10:00.00");
  AddSectionOf("short.mp4", "00:00:04.00");
  AddSectionOf("c.mp4", "00:05:00.00");
  EXPECT_EQ(Strips(), (Texts{"1,1 60x17", "61,21 0x17", "61,41 30x17"}));
  EXPECT_EQ(Strip(3).width(), 0) << "the strip takes room on the screen";
  for (const auto& [index, place] :
       {std::pair(2, "0,19 7000x0"), {3, "0,39 7000x0"}, {4, "0,59 7000x0"}}) {
    EXPECT_EQ(PlaceText(Get<Line>("Line1", index)), place);
    EXPECT_TRUE(Get<Line>("Line1", index).Visible()) << index;
  }
}

TEST_F(JoinerSections, MayBeTwoThousandWithNumbersOfMoreThanTwoDigits) {
  AddPrinting("a.mp4", QString("Duration: 00:05:00.00, start\n").repeated(2000));
  ASSERT_EQ(Strips().size(), 2000U);
  EXPECT_EQ(Rows().back(), "2000 | a.mp4 | 300");
  EXPECT_EQ(Strips().back(), "59971,39981 30x17");
  EXPECT_EQ(Picture(Strip(2001)), DrawnStrip(30, "2000"));
  EXPECT_EQ(Details(2001), "   Video Index: 2000 Title: a.mp4   ");
  EXPECT_EQ(Shown(TotalDurationSeconds), "600,000");
  MovePointerOver(Strip(2001));
  EXPECT_TRUE(Table().ListItems(2000).Selected());
}

TEST_F(JoinerSections, AreReadByAScreenReaderInChartTableAndList) {
  const std::string path = AddSectionOf("first.mp4", "00:03:20.00").toStdString();
  AddSectionOf("second.mp4", "00:01:00.00");
  Remove(3);
  QApplication::activePopupWidget()->close();
  const std::string heard = HeardIn(*form_);
  for (const std::string& lines : {std::string(R"(
    List "Video sections on the time chart"
      ListItem "Video Index: 01 Title: first.mp4"
      ListItem "Deleted Section"
    ScrollBar)"),
                                   R"(
    TreeItem "1"
    TreeItem "first.mp4"
    TreeItem "200"
    TreeItem "2"
    TreeItem "second.mp4"
    TreeItem "60"
  List "Paths of the video sections"
    ListItem ")" + path + R"("
    ListItem " Deleted Section "
  StaticText)"}) {
    EXPECT_NE(heard.find(lines), std::string::npos) << lines << "\nin" << heard;
  }
}

using RemoveSection = JoinerWindowTest;

TEST_F(RemoveSection, LeavesAGreyStripAndAMarkInTheListAndKeepsRowsNumbersAndTotals) {
  AddThree();
  const Texts strips = Strips();
  const Texts rows = Rows();
  for (int times = 0; times < 2; ++times) {
    Remove(3);
    EXPECT_TRUE(AllOf(Picture(Strip(3)), QRect(0, 0, 60, 17), 0x808080));
    EXPECT_EQ(Details(3), " Deleted Section ");
    EXPECT_EQ(PathsListed(), (Texts{Path("a.mp4"), " Deleted Section ", Path("c.mp4")}));
    EXPECT_EQ(Strips(), strips);
    EXPECT_EQ(Rows(), rows);
    EXPECT_EQ(Shown(TotalDurationSeconds), "01,800");
    EXPECT_EQ(Shown(TotalRuntime), "00:30:00");
  }
  MovePointerOver(Strip(3));
  EXPECT_EQ(Shown(VideoDetails), "Video Details:  Deleted Section ");
  EXPECT_EQ(Strip(3).ToolTipText(), " Deleted Section ");
  EXPECT_TRUE(Table().ListItems(2).Selected());
  AddSectionOf("d.mp4");
  EXPECT_EQ(Shown(TotalSections), "Total Sections: 04");
  EXPECT_EQ(Details(5), "   Video Index: 04 Title: d.mp4   ");
}

TEST_F(RemoveSection, MeansTheStripLastRightClickedWhateverElseIsClickedOrSelected) {
  AddThree();
  OpenMenuOn(4);
  Table().ListItems(1).Select();
  Release(Strip(3), Qt::LeftButton);
  Release(Strip(3), Qt::MiddleButton);
  Release(Table(), Qt::RightButton);
  ChooseRemove();
  EXPECT_EQ(PathsListed(), (Texts{Path("a.mp4"), Path("b.mp4"), " Deleted Section "}));
}

TEST_F(RemoveSection, BeforeAnyRightClickChangesTheTemplateAlone) {
  AddThree();
  const Texts paths = PathsListed();
  ChooseRemove();
  EXPECT_EQ(PathsListed(), paths);
  EXPECT_FALSE(Strip(0).Visible());
  EXPECT_EQ(Hex(Strip(2).BackColor()), "0x008000");
  AddSectionOf("d.mp4");
  EXPECT_EQ(Hex(Strip(5).BackColor()), "0x808080")
      << "a new strip doesn't have the template's colour";
}

}  // namespace
}  // namespace kelvane::testing
