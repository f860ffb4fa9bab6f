// The joiner window as drawn, before anything has moved.
#include <gtest/gtest.h>

#include <QMenu>
#include <QMenuBar>
#include <map>

#include "joiner/DesignTable.h"
#include "joiner/Form4.h"
#include "platform/Menu.h"
#include "support/Events.h"

namespace kelvane::testing {
namespace {

class JoinerLayoutTable : public ::testing::Test {
 protected:
  Control* Find(const char* name) const { return form_.findChild<Control*>(QLatin1String(name)); }
  template <class Kind>
  Kind& Get(const char* name) const {
    return form_.Find<Kind>(QLatin1String(name));
  }

  const Form4 form_;
};

TEST_F(JoinerLayoutTable, EveryControlIsThereWithItsClassAndNoneBesides) {
  ASSERT_EQ(kDesign.size(), 40U);
  ExpectClasses(form_, kDesign);
  ExpectNoOthers(form_, kDesign);
}

TEST_F(JoinerLayoutTable, EveryControlStandsInItsContainer) { ExpectContainers(form_, kDesign); }

TEST_F(JoinerLayoutTable, EveryPlaceAndSizeIsTheDesignsAtFifteenTwipsToThePixel) {
  ExpectPlaces(form_, kDesign, "Picture4");
  const auto& rule = Get<Line>("Line1(0)");
  EXPECT_EQ(rule.X1(), 24);
  EXPECT_EQ(rule.X2(), 104);
  EXPECT_EQ(rule.Y1(), 64);
  EXPECT_EQ(rule.Y2(), 64);
}

TEST_F(JoinerLayoutTable, EveryCaptionIsTheDesigns) { ExpectTexts(form_, kDesign); }

TEST_F(JoinerLayoutTable, WhatIsHiddenInTheDesignIsHiddenAndNothingElse) {
  ExpectVisibility(form_, kDesign);
}

TEST_F(JoinerLayoutTable, ControlsLieFrontToBackInTheOrderOfTheDrawing) {
  ExpectFrontToBack(form_, kDesign);
}

TEST_F(JoinerLayoutTable, LabelsAreTransparentWithLightTextAndTheCommandsHaveABorder) {
  int labels = 0;
  for (const Label* label : form_.findChildren<Label*>()) {
    ++labels;
    const std::string name = label->objectName().toStdString();
    const bool isCommand = name.starts_with("Label1(");
    EXPECT_EQ(Hex(label->ForeColor()), "0xc0c0c0") << name;
    EXPECT_EQ(Hex(label->BackColor()), "transparent") << name;
    EXPECT_EQ(label->Bordered(), isCommand) << name;
    EXPECT_EQ(label->Alignment() == Qt::AlignHCenter, isCommand || name == "Label3(7)") << name;
  }
  EXPECT_EQ(labels, 13);
}

TEST_F(JoinerLayoutTable, BoxesAndListsHaveTheirColours) {
  const std::map<const char*, const char*> boxes = {
      {"Picture1(0)", "0x404040"}, {"Picture1(1)", "0x808080"}, {"Picture1(2)", "0x404040"},
      {"Picture2(0)", "0x008000"}, {"Picture3", "0x404040"},    {"Picture4", "0x808080"},
      {"Picture5", "0x404040"},    {"Picture6", "0x404040"}};
  for (const auto& [name, colour] : boxes) {
    EXPECT_EQ(Hex(Get<PictureBox>(name).BackColor()), colour) << name;
    EXPECT_EQ(Get<PictureBox>(name).ContentOrigin(), QPoint(0, 0)) << name << " has no border";
  }
  EXPECT_EQ(Hex(Get<PictureBox>("Picture5").ForeColor()), "0xc0c0c0");
  EXPECT_EQ(Hex(Get<ListBox>("List1").BackColor()), "0x404040");
  EXPECT_EQ(Hex(Get<ListBox>("List1").ForeColor()), "0xc0c0c0");
  EXPECT_EQ(Hex(Get<ListView>("ListView1").BackColor()), "0x404040");
  EXPECT_EQ(Hex(Get<ListView>("ListView1").ForeColor()), "0xc0c0c0");
  EXPECT_EQ(Hex(form_.findChild<ContentArea*>(QString(), Qt::FindDirectChildrenOnly)->BackColor()),
            "0x404040");
}

TEST_F(JoinerLayoutTable, FramesAndLinesHaveTheirColour) {
  for (const Shape* shape : form_.findChildren<Shape*>()) {
    const std::string name = shape->objectName().toStdString();
    const bool isHoverFrame = name == "Shape1" || name == "Shape3";
    EXPECT_EQ(Hex(shape->BorderColor()), isHoverFrame ? "0xc0c0c0" : "0x808080") << name;
    EXPECT_EQ(shape->BorderWidth(), 1) << name;
  }
  for (const Line* line : form_.findChildren<Line*>()) {
    EXPECT_EQ(Hex(line->BorderColor()), "0x808080") << line->objectName().toStdString();
  }
}

TEST_F(JoinerLayoutTable, BoxesCountInPixelsButForTheHiddenHolder) {
  for (PictureBox* box : form_.findChildren<PictureBox*>()) {
    EXPECT_EQ(box->UnitsPerPixel(), box->objectName() == QLatin1String("Picture4") ? 15 : 1)
        << box->objectName().toStdString();
  }
}

TEST_F(JoinerLayoutTable, NoTranscodeIsChosenAtTheStart) {
  EXPECT_TRUE(Get<OptionButton>("Option1(0)").Value());
  EXPECT_FALSE(Get<OptionButton>("Option1(1)").Value());
}

TEST_F(JoinerLayoutTable, TheScrollBarsHaveTheLargestRange) {
  for (const char* name : {"HScroll1", "VScroll1"}) {
    EXPECT_EQ(Get<ScrollBar>(name).Max(), 32767) << name;
    EXPECT_EQ(Get<ScrollBar>(name).Value(), 0) << name;
  }
}

TEST_F(JoinerLayoutTable, TheMenuBarHasTheOneTitleWithItsOneItem) {
  const auto titles = form_.findChild<QMenuBar*>()->actions();
  ASSERT_EQ(titles.size(), 1);
  EXPECT_EQ(titles[0]->text(), QString("ContextMenu"));
  EXPECT_TRUE(Get<Menu>("mnu_ContextMenu").Visible());
  const auto items = titles[0]->menu()->actions();
  ASSERT_EQ(items.size(), 1);
  EXPECT_EQ(items[0]->text(), QString("Remove Section"));
  EXPECT_TRUE(Get<Menu>("mnu_RemoveSection").Visible());
}

TEST_F(JoinerLayoutTable, TheWindowHasItsTitleAndTheDesignsClientSize) {
  EXPECT_EQ(form_.objectName(), QString("Form4"));
  EXPECT_EQ(form_.Caption(), QString("Video Joiner"));
  EXPECT_EQ(form_.ScaleWidth(), 1519);
  EXPECT_EQ(form_.ScaleHeight(), 845);
}

TEST_F(JoinerLayoutTable, TheFontIsArialOfElevenPixels) {
  for (const char* name : {"Label1(0)", "Label3(8)", "Option1(0)", "List1", "ListView1"}) {
    EXPECT_EQ(Find(name)->font().family(), QString("Arial")) << name;
    EXPECT_EQ(Find(name)->font().pixelSize(), 11) << name;
  }
}

}  // namespace
}  // namespace kelvane::testing
