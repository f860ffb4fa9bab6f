// The main window as drawn, before anything has moved.
#include <gtest/gtest.h>

#include <QMenu>
#include <QMenuBar>
#include <QScrollBar>
#include <algorithm>
#include <map>

#include "platform/Menu.h"
#include "support/Events.h"
#include "workspace/DesignTable.h"
#include "workspace/Form1.h"

namespace kelvane::testing {
namespace {

class LayoutTable : public ::testing::Test {
 protected:
  Control* Find(const char* name) const { return form_.findChild<Control*>(QLatin1String(name)); }
  template <class Kind>
  Kind& Get(const char* name) const {
    return form_.Find<Kind>(QLatin1String(name));
  }

  const Form1 form_;
};

DesignRows AllRows() {
  DesignRows rows = kDesign;
  rows.insert(rows.end(), kReadOuts.begin(), kReadOuts.end());
  return rows;
}

TEST_F(LayoutTable, EveryControlIsThereWithItsClass) {
  ASSERT_EQ(AllRows().size(), 66U);
  ExpectClasses(form_, AllRows());
}

TEST_F(LayoutTable, NoControlIsThereBesides) { ExpectNoOthers(form_, AllRows()); }

TEST_F(LayoutTable, EveryControlStandsInItsContainer) { ExpectContainers(form_, AllRows()); }

TEST_F(LayoutTable, EveryPlaceAndSizeIsTheDesignsAtFifteenTwipsToThePixel) {
  ExpectPlaces(form_, AllRows(), "Picture3");
}

TEST_F(LayoutTable, OnTheScreenEveryControlTakesThatManyPixels) {
  for (const DesignRow& row : AllRows()) {
    const Control& control = *Find(row.name);
    EXPECT_EQ(control.width(), static_cast<int>(row.place.width / 15)) << row.name;
    EXPECT_EQ(control.height(), static_cast<int>(row.place.height / 15)) << row.name;
  }
}

TEST_F(LayoutTable, EveryCaptionAndTextIsTheDesigns) { ExpectTexts(form_, AllRows()); }

TEST_F(LayoutTable, WhatIsHiddenInTheDesignIsHiddenAndNothingElse) {
  ExpectVisibility(form_, AllRows());
}

TEST_F(LayoutTable, ControlsLieFrontToBackInTheOrderOfTheDrawing) {
  ExpectFrontToBack(form_, kDesign, kReadOuts);
}

TEST_F(LayoutTable, TheBarsLieOverThePictureTheLeftBarNearestToIt) {
  EXPECT_EQ(FrontToBack(*Find("Picture1(2)")),
            (std::vector<std::string>{"Picture2(3)", "Picture2(2)", "Picture2(1)", "Picture2(0)",
                                      "Picture1(3)"}));
}

TEST_F(LayoutTable, LabelsHaveTheirTextColourAndBackColour) {
  const std::vector<std::string> dark = {"Label14(0)", "Label14(1)", "Label14(2)", "Label14(3)",
                                         "Label14(4)", "Label14(5)", "Label14(6)", "Label2",
                                         "Label3",     "Label4",     "Label5",     "Label6"};
  int labels = 0;
  for (const DesignRow& row : AllRows()) {
    const auto* label = qobject_cast<const Label*>(Find(row.name));
    if (label == nullptr) continue;
    ++labels;
    const bool isDark = std::count(dark.begin(), dark.end(), row.name) > 0;
    EXPECT_EQ(Hex(label->ForeColor()), "0xc0c0c0") << row.name;
    EXPECT_EQ(Hex(label->BackColor()), isDark ? "0x232323" : "transparent") << row.name;
    // The headings and the commands are centred, and nothing else is.
    EXPECT_EQ(label->Alignment() == Qt::AlignHCenter, isDark) << row.name;
  }
  EXPECT_EQ(labels, 35);
}

TEST_F(LayoutTable, BoxesHaveTheirBackColour) {
  const std::map<const char*, const char*> colours = {
      {"Picture1(0)", "0x232323"}, {"Picture1(1)", "0x232323"}, {"Picture1(2)", "0x404040"},
      {"Picture1(3)", "0xc0c0c0"}, {"Picture2(0)", "0x00ff00"}, {"Picture2(1)", "0x00ff00"},
      {"Picture2(2)", "0x00ff00"}, {"Picture2(3)", "0x00ff00"}};
  for (const auto& [name, colour] : colours) {
    EXPECT_EQ(Hex(Get<PictureBox>(name).BackColor()), colour) << name;
  }
  EXPECT_EQ(Hex(form_.findChild<ContentArea*>(QString(), Qt::FindDirectChildrenOnly)->BackColor()),
            "0x232323");
}

TEST_F(LayoutTable, FramesHaveTheirOutline) {
  struct Outline {
    const char* name;
    const char* colour;
    int width;
  };
  for (const auto& [name, colour, width] : std::vector<Outline>{{"Shape1", "0xa0a0a0", 1},
                                                                {"Shape2", "0xa0a0a0", 1},
                                                                {"Shape3", "0xa0a0a0", 1},
                                                                {"Shape4", "0xa0a0a0", 1},
                                                                {"Shape5", "0x808080", 1},
                                                                {"Shape6", "0x808080", 2}}) {
    EXPECT_EQ(Hex(Get<Shape>(name).BorderColor()), colour) << name;
    EXPECT_EQ(Get<Shape>(name).BorderWidth(), width) << name;
  }
}

TEST_F(LayoutTable, OnlyTheFrameOfTheWorkspaceHasABorder) {
  EXPECT_NE(Get<PictureBox>("Picture1(0)").ContentOrigin(), QPoint(0, 0));
  for (const char* name : {"Picture1(1)", "Picture1(2)", "Picture1(3)", "Picture2(0)",
                           "Picture2(1)", "Picture2(2)", "Picture2(3)"}) {
    EXPECT_EQ(Get<PictureBox>(name).ContentOrigin(), QPoint(0, 0)) << name;
  }
}

TEST_F(LayoutTable, BoxesCountInPixelsButForTheHiddenHolder) {
  for (PictureBox* box : form_.findChildren<PictureBox*>()) {
    const int units = box->objectName() == QLatin1String("Picture3") ? 15 : 1;
    float X = -1;
    box->MouseMove = [&X](const MouseEvent& event) { X = event.X; };
    MovePointerOver(*box);
    EXPECT_FLOAT_EQ(
        X, static_cast<float>((box->rect().center().x() - box->ContentOrigin().x()) * units))
        << box->objectName().toStdString();
  }
  // So what lies in the holder is placed in twips and shown at fifteen to the pixel.
  EXPECT_EQ(Find("Text2")->geometry(), QRect(80, 144, 97, 21));
}

TEST_F(LayoutTable, TheBarsShowTheShapeOfTheWayTheyMove) {
  const std::map<const char*, Qt::CursorShape> shapes = {{"Picture2(0)", Qt::SizeHorCursor},
                                                         {"Picture2(1)", Qt::SizeVerCursor},
                                                         {"Picture2(2)", Qt::SizeHorCursor},
                                                         {"Picture2(3)", Qt::SizeVerCursor}};
  for (const auto& [name, shape] : shapes) EXPECT_EQ(Find(name)->cursor().shape(), shape) << name;
  EXPECT_EQ(Find("Picture1(2)")->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(LayoutTable, TimersHaveTheirIntervalAndOnlyTheThirdIsOn) {
  struct Row {
    const char* name;
    int interval;
    bool on;
  };
  const std::vector<Row> rows = {
      {"Timer1", 1000, false}, {"Timer2", 250, false}, {"Timer3", 500, true}};
  for (const auto& [name, interval, on] : rows) {
    EXPECT_EQ(Get<Timer>(name).Interval(), interval) << name;
    EXPECT_EQ(Get<Timer>(name).Enabled(), on) << name;
  }
  EXPECT_EQ(form_.findChildren<Timer*>().size(), 3);
}

TEST_F(LayoutTable, TheWindowHasItsTitleAndItsIconAndNoStatusBar) {
  EXPECT_EQ(form_.Caption().toStdString(), "Kelvane");
  EXPECT_FALSE(form_.windowIcon().isNull());
  EXPECT_EQ(form_.objectName().toStdString(), "Form1");
  for (const QWidget* child : form_.findChildren<QWidget*>()) {
    EXPECT_STRNE(child->metaObject()->className(), "QStatusBar");
  }
}

TEST_F(LayoutTable, TheWindowHasTheDesignsClientSize) {
  EXPECT_EQ(form_.ScaleWidth(), 1289);  // 19335 twips
  EXPECT_EQ(form_.ScaleHeight(), 932);  // 13980 twips
}

TEST_F(LayoutTable, TheFontIsArialOfElevenPixels) {
  for (const char* name : {"Label2", "Label14(0)", "Label1(1)", "Text1(1)"}) {
    EXPECT_EQ(Find(name)->font().family().toStdString(), "Arial") << name;
    EXPECT_EQ(Find(name)->font().pixelSize(), 11) << name;
  }
}

TEST_F(LayoutTable, TheScrollBarsPageByTenAndHaveNoRange) {
  EXPECT_EQ(Get<HScrollBar>("HScroll1").Max(), 0);
  EXPECT_EQ(Get<VScrollBar>("VScroll1").Max(), 0);
  for (const char* name : {"HScroll1", "VScroll1"}) {
    const auto* bar = Find(name)->findChild<QScrollBar*>();
    EXPECT_EQ(bar->pageStep(), 10) << name;
    EXPECT_EQ(bar->minimum(), 0) << name;
    EXPECT_EQ(bar->value(), 0) << name;
  }
}

TEST_F(LayoutTable, MenusHaveTheirCaptionsAndTheHiddenOnesAreHidden) {
  struct Row {
    const char* name;
    const char* caption;
    bool visible;
  };
  const std::vector<Row> rows = {{"mnu_open", "Open", true},
                                 {"mnu_openVideo", "Load Video to Crop", true},
                                 {"mnu_Extract", "Extract and Stabilise", false},
                                 {"mnu_JoinMultiple", "Join Multiple Videos Together", false},
                                 {"mnu_VersionUpdate", "Updates", true},
                                 {"mnu_Updates", "Check Site For Updates", true},
                                 {"mnu_Donate", "Donate", true},
                                 {"mnu_PayPalwebsite", "Donate Via PayPal Website", true},
                                 {"mnu_CropVideo", "Crop", false},
                                 {"mnu_CropSave", "Crop and Save", true},
                                 {"mnu_Rem", "Remove", false},
                                 {"mnu_RemoveVideo", "Remove Video", true}};
  for (const auto& [name, caption, visible] : rows) {
    EXPECT_EQ(Get<Menu>(name).Caption().toStdString(), caption) << name;
    EXPECT_EQ(Get<Menu>(name).Visible(), visible) << name;
  }
  EXPECT_EQ(form_.findChildren<Menu*>().size(), 12);
}

TEST_F(LayoutTable, EveryMenuItemStandsUnderItsTitle) {
  std::vector<std::string> lines;
  for (const QAction* title : form_.findChild<QMenuBar*>()->actions()) {
    lines.push_back(title->text().toStdString());
    for (const QAction* item : title->menu()->actions()) {
      lines.push_back("  " + item->text().toStdString());
    }
  }
  EXPECT_EQ(lines, (std::vector<std::string>{
                       "Open", "  Load Video to Crop", "  Extract and Stabilise",
                       "  Join Multiple Videos Together", "Updates", "  Check Site For Updates",
                       "Donate", "  Donate Via PayPal Website", "Crop", "  Crop and Save", "Remove",
                       "  Remove Video"}));
}

}  // namespace
}  // namespace kelvane::testing
