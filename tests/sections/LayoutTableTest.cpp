// The section window as drawn, before it is loaded.
#include <gtest/gtest.h>

#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QScrollBar>
#include <QTest>

#include "platform/Timer.h"
#include "sections/DesignTable.h"
#include "sections/Form3.h"
#include "support/Events.h"
#include "support/Pictures.h"

namespace kelvane::testing {
namespace {

class SectionsLayoutTable : public ::testing::Test {
 protected:
  Control* Find(const QString& name) const { return form_.findChild<Control*>(name); }
  template <class Kind>
  Kind& Get(const QString& name) const {
    return form_.Find<Kind>(name);
  }

  void ExpectPlace(const char* name, const Twips& place, const char* container) const {
    const Control* control = Find(name);
    ASSERT_NE(control, nullptr) << name;
    const bool twips = QLatin1String(container).startsWith(QLatin1String("Picture2"));
    EXPECT_EQ(control->parent()->objectName().toStdString(), container) << name;
    ExpectAt(*control, place, twips ? 1 : 15);
    EXPECT_EQ(control->width(), static_cast<int>(place.width / 15)) << name;
    EXPECT_EQ(control->height(), static_cast<int>(place.height / 15)) << name;
  }

  // True if the first of two controls of a container lies in front of the second.
  bool LiesInFrontOf(const char* front, const char* back) const {
    const QObjectList& stack = Find(front)->parent()->children();
    return stack.indexOf(Find(front)) > stack.indexOf(Find(back));
  }

  const Form3 form_;
};

TEST_F(SectionsLayoutTable, TheseControlsAreThereAndNoOthers) {
  EXPECT_EQ(NamesIn(form_), Texts(kAllNames.begin(), kAllNames.end()));
}

TEST_F(SectionsLayoutTable, BoxesBarsAndOutlinesStandWhereTheyWereDrawn) {
  for (const BoxRow& row : kBoxes) {
    ExpectPlace(row.name, row.place, row.container);
    EXPECT_EQ(Find(row.name)->metaObject()->className(),
              std::string("kelvane::") + row.controlClass)
        << row.name;
    EXPECT_EQ(Find(row.name)->Visible(), row.visible == kShown) << row.name;
  }
}

TEST_F(SectionsLayoutTable, LabelsStandWhereTheyWereDrawnWithTheirCaptions) {
  for (const LabelRow& row : kLabels) {
    ExpectPlace(row.name, row.place, row.container);
    EXPECT_EQ(Get<Label>(row.name).Caption().toStdString(), row.caption) << row.name;
    EXPECT_TRUE(Get<Label>(row.name).Visible()) << row.name;
  }
}

TEST_F(SectionsLayoutTable, LabelsHaveTheirLook) {
  for (const LabelRow& row : kLabels) {
    const auto& label = Get<Label>(row.name);
    const Qt::Alignment side = row.side == Side::kLeft     ? Qt::AlignLeft
                               : row.side == Side::kCentre ? Qt::AlignHCenter
                                                           : Qt::AlignRight;
    EXPECT_EQ(label.Alignment(), side) << row.name;
    EXPECT_EQ(label.Bordered(), row.edge == kBorder) << row.name;
    EXPECT_EQ(Hex(label.BackColor()), row.backColour == kTransparent
                                          ? "transparent"
                                          : Hex(static_cast<unsigned int>(row.backColour)))
        << row.name;
  }
}

TEST_F(SectionsLayoutTable, EveryLabelHasLightText) {
  for (const Label* label : form_.findChildren<Label*>()) {
    EXPECT_EQ(Hex(label->ForeColor()), "0xc0c0c0") << label->objectName().toStdString();
  }
}

TEST_F(SectionsLayoutTable, BoxesHaveTheirBackColour) {
  for (const BoxRow& row : kBoxes) {
    if (const auto* box = qobject_cast<const PictureBox*>(Find(row.name))) {
      EXPECT_EQ(Hex(box->BackColor()), Hex(static_cast<unsigned int>(row.backColour))) << row.name;
    }
  }
  EXPECT_EQ(Hex(form_.findChild<ContentArea*>(QString(), Qt::FindDirectChildrenOnly)->BackColor()),
            "0x232323");
}

TEST_F(SectionsLayoutTable, OutlinesHaveTheirColour) {
  for (const BoxRow& row : kBoxes) {
    if (const auto* shape = qobject_cast<const Shape*>(Find(row.name))) {
      EXPECT_EQ(Hex(shape->BorderColor()), Hex(static_cast<unsigned int>(row.backColour)))
          << row.name;
      EXPECT_EQ(shape->BorderWidth(), 1) << row.name;
    }
  }
  EXPECT_EQ(Hex(Get<Shape>("Shape5(0)").FillColor()), "0x00c000");
  EXPECT_EQ(Hex(Get<Shape>("Shape5(1)").FillColor()), "0xc00000");
  for (const char* hollow : {"Shape1", "Shape3", "Shape4"}) {
    EXPECT_EQ(Get<Shape>(hollow).FillColor(), std::nullopt) << hollow;
  }
  for (int slider = StepSize; slider <= UnSharpLY; ++slider) {
    EXPECT_EQ(Hex(Get<Shape>(Member("Shape2", slider)).BorderColor()), "0xe0e0e0");
    EXPECT_EQ(Get<Shape>(Member("Shape2", slider)).FillColor(), std::nullopt);
  }
}

TEST_F(SectionsLayoutTable, TheStripTheBarsAndTheTracksHaveNoBorderAndTheFramesHave) {
  for (const char* name : {"Picture3(1)", "Picture4(0)", "Picture4(1)", "Picture5", "Picture6",
                           "Picture2(0)", "Picture2(3)", "Picture2(6)"}) {
    EXPECT_EQ(Get<PictureBox>(name).ContentOrigin(), QPoint(0, 0)) << name;
  }
  for (const char* name :
       {"Picture3(0)", "Picture8", "Picture7(0)", "Picture7(1)", "Picture7(2)", "Picture7(3)"}) {
    EXPECT_EQ(Get<PictureBox>(name).ContentOrigin(), QPoint(2, 2)) << name;
  }
}

TEST_F(SectionsLayoutTable, ReadOutsOfTheSectionStandInOneRow) {
  for (const LeftEdge& row : kReadOutRow) {
    const auto& label = Get<Label>(row.name);
    EXPECT_EQ(label.Caption().toStdString(), row.caption);
    EXPECT_EQ(label.Left(), row.left / 15) << row.name;
    EXPECT_EQ(label.Top(), row.top / 15) << row.name;
    EXPECT_EQ(label.BackColor(), std::nullopt) << row.name;
  }
}

// Where captions of one row run into each other, nobody can read them.
TEST_F(SectionsLayoutTable, NoCaptionIsWiderThanItsLabel) {
  for (const Label* label : form_.findChildren<Label*>()) {
    const QString shown = QString(label->Caption()).replace("&&", "&").trimmed();
    if (label->parent()->objectName() == QLatin1String("Picture1")) continue;
    EXPECT_LE(QFontMetrics(label->font()).horizontalAdvance(shown), label->width())
        << label->objectName().toStdString();
  }
}

TEST_F(SectionsLayoutTable, EachSliderHasItsCaptionNameAndReadOutInItsRow) {
  for (int slider = StepSize; slider <= UnSharpLY; ++slider) {
    const SliderRow& row = kSliders.at(static_cast<std::size_t>(slider));
    const float rowTop = static_cast<float>(3600 + 480 * slider) / 15;
    const auto& caption = Get<Label>(Member("Label3", slider));
    const auto& name = Get<Label>(Member("Label2", 2 * slider));
    const auto& readOut = Get<Label>(Member("Label2", 2 * slider + 1));
    EXPECT_EQ(caption.Caption().toStdString(), row.caption);
    EXPECT_EQ(name.Caption().toStdString(), row.name);
    EXPECT_EQ(readOut.Caption().toStdString(), row.startValue);
    EXPECT_EQ(caption.Left(), 720.0F / 15);
    EXPECT_EQ(name.Left(), 11520.0F / 15);
    EXPECT_EQ(readOut.Left(), 13080.0F / 15);
    EXPECT_EQ(readOut.Width(), 495.0F / 15);
    EXPECT_EQ(readOut.Height(), 300.0F / 15);
    EXPECT_TRUE(readOut.Bordered());
    EXPECT_EQ(readOut.Alignment(), Qt::AlignHCenter);
    for (const Label* label : {&caption, &name, &readOut}) {
      EXPECT_GE(label->Top(), rowTop) << label->objectName().toStdString();
      EXPECT_LE(label->Top() + label->Height(), rowTop + 25) << label->objectName().toStdString();
    }
  }
}

TEST_F(SectionsLayoutTable, TheTracksCountInTwipsAndTheOtherBoxesInPixels) {
  for (PictureBox* box : form_.findChildren<PictureBox*>()) {
    const bool track = box->objectName().startsWith(QLatin1String("Picture2"));
    EXPECT_EQ(box->UnitsPerPixel(), track ? 15 : 1) << box->objectName().toStdString();
  }
  EXPECT_EQ(Get<PictureBox>("Picture2(0)").ScaleWidth(), 8055);
  EXPECT_EQ(Get<PictureBox>("Picture2(0)").ScaleHeight(), 375);
  EXPECT_EQ(Get<PictureBox>("Picture3(1)").ScaleHeight(), 41);
}

TEST_F(SectionsLayoutTable, TheNeedlesAreGreenAndRedAndShowThatTheyMoveAcross) {
  const auto& start = Get<PictureBox>("Picture4(0)");
  const auto& end = Get<PictureBox>("Picture4(1)");
  EXPECT_EQ(Hex(start.BackColor()), "0x00c000");
  EXPECT_EQ(Hex(end.BackColor()), "0xc00000");
  EXPECT_EQ(start.Left(), 8);
  EXPECT_EQ(end.Left(), 136);
  for (const PictureBox* needle : {&start, &end}) {
    EXPECT_EQ(needle->parent()->objectName().toStdString(), "Picture3(1)");
    EXPECT_EQ(needle->Width(), 5);
    EXPECT_EQ(needle->cursor().shape(), Qt::SizeHorCursor);
    EXPECT_EQ(needle->ToolTipText().toStdString(), "");
  }
}

TEST_F(SectionsLayoutTable, TheThumbOfTheTimeLineIsThereAndHidden) {
  const auto& thumb = Get<PictureBox>("Picture6");
  EXPECT_FALSE(thumb.Visible());
  EXPECT_EQ(thumb.parent()->objectName().toStdString(), "Picture5");
  EXPECT_EQ(thumb.Left(), 6480.0F / 15);
  EXPECT_EQ(thumb.Width(), 9);
  EXPECT_EQ(Hex(thumb.BackColor()), "0x404040");
  EXPECT_EQ(thumb.cursor().shape(), Qt::SizeHorCursor);
}

TEST_F(SectionsLayoutTable, TheScrollBarLiesOutsideItsFrame) {
  const auto& bar = Get<HScrollBar>("HScroll1");
  EXPECT_TRUE(bar.Visible());
  EXPECT_GE(bar.Top(), Get<PictureBox>("Picture3(0)").Height());
}

TEST_F(SectionsLayoutTable, LinesHaveTheirEndsAndColours) {
  struct Row {
    const char* name;
    const char* container;
    float x1, y1, x2, y2;
  };
  for (const auto& [name, container, x1, y1, x2, y2] : std::vector<Row>{
           {"Line1", "Picture7(3)", 0, 1080, 7800, 1080}, {"Line2", "", 600, 2280, 13800, 2280}}) {
    const auto& line = Get<Line>(name);
    EXPECT_EQ(line.parent()->objectName().toStdString(), container);
    EXPECT_EQ(line.X1(), x1 / 15) << name;
    EXPECT_EQ(line.Y1(), y1 / 15) << name;
    EXPECT_EQ(line.X2(), x2 / 15) << name;
    EXPECT_EQ(line.Y2(), y2 / 15) << name;
  }
  for (const char* name : {"Line3(0)", "Line3(1)"}) {
    EXPECT_EQ(Get<Line>(name).parent()->objectName().toStdString(), "Picture3(1)");
    EXPECT_EQ(Get<Line>(name).Y1(), 0) << name;
    EXPECT_EQ(Get<Line>(name).Y2(), 40) << name;
  }
  for (const char* name : {"Line1", "Line2", "Line3(0)", "Line3(1)", "Line4", "Line5", "Line6"}) {
    EXPECT_EQ(Hex(Get<Line>(name).BorderColor()), "0x808080") << name;
  }
  EXPECT_EQ(Hex(Get<Line>("Line7").BorderColor()), "0xc04000");
  EXPECT_EQ(Hex(Get<Line>("Line8").BorderColor()), "0xe0e0e0");
}

TEST_F(SectionsLayoutTable, WhatLiesOverSomethingElseLiesInFrontOfIt) {
  struct Pair {
    const char* front;
    const char* back;
  };
  for (const auto& [front, back] : std::vector<Pair>{{"Label6(0)", "Label6(1)"},
                                                     {"Picture4(0)", "Line8"},
                                                     {"Picture4(1)", "Line3(1)"},
                                                     {"Line8", "Line7"},
                                                     {"Shape2(0)", "Label1(0)"},
                                                     {"Label7(0)", "Shape3"},
                                                     {"Picture2(0)", "Shape1"},
                                                     {"Picture2(0)", "Shape4"},
                                                     {"Label3(0)", "Shape4"},
                                                     {"Picture3(1)", "Picture5"}}) {
    EXPECT_TRUE(LiesInFrontOf(front, back)) << front << " and " << back;
  }
}

TEST_F(SectionsLayoutTable, ThePresetsStandInTheHiddenPanel) {
  for (const char* name : {"Text2", "Text3", "Text4", "Label5", "Label4(0)", "Label4(1)"}) {
    EXPECT_EQ(Find(name)->parent()->objectName().toStdString(), "Picture1") << name;
  }
  EXPECT_EQ(Get<TextBox>("Text4").Text().toStdString(), "4825");
  EXPECT_EQ(Get<TextBox>("Text3").Text().toStdString(), "");
  EXPECT_EQ(Get<TextBox>("Text2").Text().toStdString(), "00:00:00");
  EXPECT_EQ(Get<Label>("Label5").Caption().toStdString(), "01:20:25   = 4,825 seconds\t");
  EXPECT_EQ(Get<Label>("Label4(0)").Caption().toStdString(), "video duration");
  EXPECT_EQ(Get<Label>("Label4(1)").Caption().toStdString(), "time line width");
  EXPECT_EQ(Get<TextBox>("Text1").Text().toStdString(), "");
  EXPECT_EQ(Get<TextBox>("Text5").Text().toStdString(), "");
}

// The texts that the user can see. Their border is that of a field.
TEST(LayoutTableShown, TheFieldsTakeWhatTheUserTypesAndHaveTheirBorder) {
  Form3 form;
  form.Load();
  form.Show();
  for (const char* name : {"Text1", "Text5"}) {
    auto& field = form.Find<TextBox>(QLatin1String(name));
    QTest::keyClicks(field.findChild<QLineEdit*>(), QStringLiteral("my.mp4"));
    EXPECT_EQ(field.Text().toStdString(), "my.mp4") << name;
    const QImage picture = Picture(field);
    EXPECT_NE(Hex(picture.pixel(0, 5)), "0x232323") << name;
    EXPECT_NE(Hex(picture.pixel(picture.width() / 2, 0)), "0x232323") << name;
    EXPECT_EQ(Hex(picture.pixel(picture.width() / 2, 5)), "0x232323") << name;
  }
  form.Unload();
}

TEST_F(SectionsLayoutTable, TheWindowHasItsTitleItsSizeAndItsFont) {
  EXPECT_EQ(form_.Caption().toStdString(), "Advanced 2-Pass Video Stabilization");
  EXPECT_EQ(form_.objectName().toStdString(), "Form3");
  EXPECT_EQ(form_.ScaleWidth(), 16080.0F / 15);
  EXPECT_EQ(form_.ScaleHeight(), 14445.0F / 15);
  for (const char* name : {"Label6(0)", "Label2(1)", "Label12(0)", "Text1"}) {
    EXPECT_EQ(Find(name)->font().family().toStdString(), "Arial") << name;
    EXPECT_EQ(Find(name)->font().pixelSize(), 11) << name;
  }
}

TEST_F(SectionsLayoutTable, TheMenuIsAPopUpOfTwoEntriesAndTakesNoRoom) {
  struct Row {
    const char* name;
    const char* caption;
    bool visible;
  };
  for (const auto& [name, caption, visible] :
       std::vector<Row>{{"mnu_ConntextMenu", "contextMenu", false},
                        {"mnu_Start", "Set Start Of Section", true},
                        {"mnu_End", "Set End Of Section", true}}) {
    EXPECT_EQ(Get<Menu>(name).Caption().toStdString(), caption);
    EXPECT_EQ(Get<Menu>(name).Visible(), visible) << name;
  }
  EXPECT_EQ(form_.findChildren<Menu*>().size(), 3);
  const QList<QAction*> titles = form_.findChild<QMenuBar*>()->actions();
  ASSERT_EQ(titles.size(), 1);
  ASSERT_EQ(titles[0]->menu()->actions().size(), 2);
  EXPECT_EQ(titles[0]->menu()->actions()[0]->text().toStdString(), "Set Start Of Section");
  EXPECT_EQ(form_.height(), 14445 / 15);
}

TEST_F(SectionsLayoutTable, ItHasNoTimer) { EXPECT_TRUE(form_.findChildren<Timer*>().isEmpty()); }

}  // namespace
}  // namespace kelvane::testing
