// What a section is made of, where its strip lies, and what is left of a removed one.
#include <QAction>
#include <QImage>
#include <QPainter>

#include "joiner/JoinerWindowTest.h"

namespace kelvane::testing {
namespace {

class Sections : public JoinerWindowTest {
 protected:
  // A strip of that size with this text, drawn anew.
  static QImage DrawnStrip(QSize size, const QString& text) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(QColor(0x008000));
    QPainter painter(&image);
    QFont font("Arial");
    font.setPixelSize(11);
    painter.setFont(font);
    painter.setPen(QColor(0xFFFFFF));
    painter.drawText(5, 1 + QFontMetrics(font).ascent(), text);
    return image;
  }
};

TEST_F(Sections, OneSectionIsAPathARowAStripItsDetailsAndItsRule) {
  const QString file = AddSectionOf("clip.mp4", "00:10:00.00");
  EXPECT_EQ(PathsListed(), Texts{file.toStdString()});
  EXPECT_EQ(Rows(), Texts{"1 | clip.mp4 | 600"});
  EXPECT_EQ(Strips(), Texts{"1,1 60x17"});
  EXPECT_EQ(Details(2), "   Video Index: 01 Title: clip.mp4   ");
  EXPECT_EQ(Shown(TotalSections), "Total Sections: 01");
}

TEST_F(Sections, TheFirstOneHasIndexTwoAndThereIsNeverAnIndexOne) {
  AddSectionOf("a.mp4", "00:10:00.00");
  AddSectionOf("b.mp4", "00:10:00.00");
  for (const char* array : {"Picture2", "Label2", "Line1"}) {
    EXPECT_TRUE(Has<Control>(array, 0)) << array;
    EXPECT_FALSE(Has<Control>(array, 1)) << array;
    EXPECT_TRUE(Has<Control>(array, 2)) << array;
    EXPECT_TRUE(Has<Control>(array, 3)) << array;
    EXPECT_FALSE(Has<Control>(array, 4)) << array;
  }
  EXPECT_FALSE(Strip(0).Visible());
  EXPECT_FALSE(Get<Line>("Line1", 0).Visible());
}

TEST_F(Sections, EachStripBeginsWhereTheOneBeforeEndedOneRowDown) {
  AddSectionOf("a.mp4", "00:10:00.00");
  AddSectionOf("b.mp4", "00:05:00.00");
  AddSectionOf("c.mp4", "00:20:00.00");
  EXPECT_EQ(Strips(), (Texts{"1,1 60x17", "61,21 30x17", "91,41 120x17"}));
}

TEST_F(Sections, AShortSectionHasAStripThatCannotBeSeenAndTheNextOneBeginsAtTheSamePlace) {
  AddSectionOf("a.mp4", "00:10:00.00");
  AddSectionOf("b.mp4", "00:00:04.00");
  AddSectionOf("c.mp4", "00:05:00.00");
  EXPECT_EQ(Strips(), (Texts{"1,1 60x17", "61,21 0x17", "61,41 30x17"}));
  EXPECT_EQ(Strip(3).width(), 0) << "on the screen as well: nothing to hover or to click";
}

TEST_F(Sections, AStripIsGreenWithItsNumberInWhite) {
  AddSectionOf("a.mp4", "00:10:00.00");
  AddSectionOf("b.mp4", "00:05:00.00");
  EXPECT_TRUE(Strip(2).Visible());
  EXPECT_EQ(Hex(Strip(2).BackColor()), "0x008000");
  EXPECT_EQ(Picture(Strip(2)), DrawnStrip(QSize(60, 17), "01"));
  EXPECT_EQ(Picture(Strip(3)), DrawnStrip(QSize(30, 17), "02"));
}

TEST_F(Sections, TheNumberHasTwoDigitsAndMoreWhereItNeedsThem) {
  tools_.DurationProbeDoes(
      "for i in $(seq 100); do printf '%-256s' 'Duration: 00:20:00.00, start'; done\n");
  Add(tools_.File("a.mp4"));
  EXPECT_EQ(Details(10), "   Video Index: 09 Title: a.mp4   ");
  EXPECT_EQ(Details(101), "   Video Index: 100 Title: a.mp4   ");
  EXPECT_EQ(Picture(Strip(101)), DrawnStrip(QSize(120, 17), "100"));
  EXPECT_EQ(Strip(101).Top(), 1 + 99 * 20) << "below the chart's end";
  EXPECT_EQ(Rows().back(), "100 | a.mp4 | 1200");
}

TEST_F(Sections, AStripLiesInTheChartAndItsHiddenDetailsInTheStrip) {
  AddSectionOf("a.mp4", "00:10:00.00");
  EXPECT_EQ(Strip(2).parent(), &Get<PictureBox>("Picture1", Chart));
  const auto& details = Get<Label>("Label2", 2);
  EXPECT_EQ(details.parent(), &Strip(2));
  EXPECT_FALSE(details.Visible());
  EXPECT_EQ(details.Left(), 1);
  EXPECT_EQ(details.Top(), 1);
  EXPECT_EQ(details.Width(), 1);
  EXPECT_EQ(details.Height(), 10);
}

TEST_F(Sections, ARuleRunsAcrossTheChartUnderEachStrip) {
  AddSectionOf("a.mp4", "00:10:00.00");
  AddSectionOf("b.mp4", "00:10:00.00");
  for (const int index : {2, 3}) {
    const auto& rule = Get<Line>("Line1", index);
    EXPECT_TRUE(rule.Visible());
    EXPECT_EQ(rule.X1(), 0);
    EXPECT_EQ(rule.X2(), 7000);
    EXPECT_EQ(rule.Y1(), static_cast<float>(19 + 20 * (index - 2)));
    EXPECT_EQ(rule.Y2(), rule.Y1());
    EXPECT_EQ(Hex(rule.BorderColor()), "0x808080");
  }
}

TEST_F(Sections, TheSameFileMayComeInAgain) {
  const QString file = AddSectionOf("a.mp4", "00:10:00.00");
  Add(file);
  EXPECT_EQ(PathsListed(), (Texts{file.toStdString(), file.toStdString()}));
  EXPECT_EQ(Rows(), (Texts{"1 | a.mp4 | 600", "2 | a.mp4 | 600"}));
}

class Removing : public Sections {};

TEST_F(Removing, LeavesAGreyStripWithoutItsNumberAndATombstoneForThePath) {
  AddThree();
  const Texts strips = Strips();
  const Texts rows = Rows();
  Remove(3);
  EXPECT_EQ(Hex(Strip(3).BackColor()), "0x808080");
  QImage grey(60, 17, QImage::Format_RGB32);
  grey.fill(QColor(0x808080));
  EXPECT_EQ(Picture(Strip(3)), grey);
  EXPECT_EQ(Details(3), " Deleted Section ");
  EXPECT_EQ(PathsListed(), (Texts{InFolder("a.mp4").toStdString(), " Deleted Section ",
                                  InFolder("c.mp4").toStdString()}));
  EXPECT_EQ(Strips(), strips);
  EXPECT_EQ(Rows(), rows);
  EXPECT_EQ(Shown(TotalSections), "Total Sections: 03");
  EXPECT_EQ(Shown(TotalDurationSeconds), "01,800");
  EXPECT_EQ(Shown(TotalRuntime), "00:30:00");
}

TEST_F(Removing, TwiceChangesNothingFurther) {
  AddThree();
  Remove(3);
  const QImage picture = Picture(Get<PictureBox>("Picture1", Chart));
  const Texts paths = PathsListed();
  Remove(3);
  EXPECT_EQ(Picture(Get<PictureBox>("Picture1", Chart)), picture);
  EXPECT_EQ(PathsListed(), paths);
}

TEST_F(Removing, CountsARemovedSectionAmongTheNextOnesNumbers) {
  AddThree();
  Remove(2);
  AddSectionOf("d.mp4", "00:10:00.00");
  EXPECT_EQ(Shown(TotalSections), "Total Sections: 04");
  EXPECT_EQ(Details(5), "   Video Index: 04 Title: d.mp4   ");
  EXPECT_EQ(Rows().back(), "4 | d.mp4 | 600");
}

TEST_F(Removing, FromTheMenuOfTheTableMeansTheStripLastRightClicked) {
  AddThree();
  OpenMenuOn(4);
  Table().ListItems(1).Select();
  Release(Table(), Qt::RightButton);
  ChooseRemove();
  EXPECT_EQ(Details(4), " Deleted Section ");
  EXPECT_EQ(Details(2), "   Video Index: 01 Title: a.mp4   ");
}

TEST_F(Removing, FromTheMenuBarMeansTheSame) {
  AddThree();
  OpenMenuOn(3);
  for (QAction* action : form_->findChildren<QAction*>()) {
    if (action->text() == QLatin1String("Remove Section")) action->trigger();
  }
  EXPECT_EQ(Details(3), " Deleted Section ");
}

TEST_F(Removing, BeforeAnyRightClickTouchesTheTemplateAlone) {
  AddThree();
  const Texts paths = PathsListed();
  ChooseRemove();
  EXPECT_EQ(Hex(Strip(0).BackColor()), "0x808080");
  EXPECT_EQ(Details(0), " Deleted Section ");
  EXPECT_FALSE(Strip(0).Visible());
  EXPECT_EQ(PathsListed(), paths);
  EXPECT_EQ(Hex(Strip(2).BackColor()), "0x008000");
  AddSectionOf("d.mp4", "00:10:00.00");
  EXPECT_EQ(Hex(Strip(5).BackColor()), "0x808080") << "new strips copy their template";
}

TEST_F(Removing, AfterAFileWithoutADurationHitsThePathBeforeTheStripsOwn) {
  AddPrinting("none.txt", "no video\n");
  AddSectionOf("a.mp4", "00:10:00.00");
  AddSectionOf("b.mp4", "00:10:00.00");
  Remove(3);
  EXPECT_EQ(Details(3), " Deleted Section ");
  EXPECT_EQ(PathsListed(), (Texts{InFolder("none.txt").toStdString(), " Deleted Section ",
                                  InFolder("b.mp4").toStdString()}));
}

TEST_F(Removing, OfAStripThatHasNoPathLeavesThePathsThatThereAre) {
  tools_.DurationProbeDoes("for i in 1 2; do printf '%-256s' 'Duration: 00:10:00.00, st'; done\n");
  const QString file = tools_.File("a.mp4");
  Add(file);
  ASSERT_EQ(Strips().size(), 2U);
  Remove(3);
  EXPECT_EQ(Details(3), " Deleted Section ");
  EXPECT_EQ(PathsListed(), Texts{file.toStdString()});
}

TEST_F(Removing, NeitherTheLeftNorTheMiddleButtonMeansAStrip) {
  AddThree();
  OpenMenuOn(2);
  Release(Strip(3), Qt::LeftButton);
  Release(Strip(3), Qt::MiddleButton);
  ChooseRemove();
  EXPECT_EQ(Details(3), "   Video Index: 02 Title: b.mp4   ");
  EXPECT_EQ(Details(2), " Deleted Section ");
}

}  // namespace
}  // namespace kelvane::testing
