// The highlights and outlines of the sliders under the pointer, and the highlights of the arrows.
#include "sections/SectionWindowTest.h"

namespace kelvane::testing {
namespace {

using Indices = std::vector<int>;

class SliderHighlight : public SectionWindowTest {
 protected:
  // The indices of the highlighted thumbs (Label1), captions (Label3), and names and read-outs
  // (Label2).
  Indices Thumbs() const {
    return Where(
        7, [this](int i) { return Hex(Thumb(i).BackColor()); }, "0x404040");
  }
  Indices Captions() const {
    return Where(
        7, [this](int i) { return Hex(Get<Label>("Label3", i).ForeColor()); }, "0xc0c0c0");
  }
  Indices Names() const {
    return Where(
        14, [this](int i) { return Hex(Get<Label>("Label2", i).ForeColor()); }, "0xc0c0c0");
  }
  const Shape& Outline() const { return Get<Shape>("Shape1"); }

 private:
  template <class ColourOf>
  static Indices Where(int count, ColourOf colourOf, const std::string& plain) {
    Indices found;
    for (int i = 0; i < count; ++i) {
      if (colourOf(i) == plain) continue;
      EXPECT_EQ(colourOf(i), "0xffffff") << i;
      found.push_back(i);
    }
    return found;
  }
};

TEST_F(SliderHighlight, IsOnThumbAndCaptionUnderThePointerAndOnTheNameDuringADrag) {
  for (int slider = StepSize; slider <= UnSharpLY; ++slider) {
    MoveOver(Thumb(slider));
    EXPECT_EQ(Thumbs(), Indices{slider});
    EXPECT_EQ(Captions(), Indices{slider});
    EXPECT_EQ(Names(), Indices{});
    Drag(Thumb(slider), 2, 12);
    EXPECT_EQ(Thumbs(), Indices{slider});
    EXPECT_EQ(Names(), Indices{OptionName(slider)});
  }
}

TEST_F(SliderHighlight, IsClearedOnTheThumbsAloneByAMoveOverATrack) {
  Drag(Thumb(Zoom), 2, 12);
  MoveOver(Track(Smoothing));
  EXPECT_EQ(Thumbs(), Indices{});
  EXPECT_EQ(Captions(), Indices{Zoom});
  EXPECT_EQ(Names(), Indices{OptionName(Zoom)});
}

TEST_F(SliderHighlight, OfTheLastThreeNamesStaysWhenThePointerIsOverTheBareWindow) {
  for (int slider = StepSize; slider <= UnSharpLY; ++slider) {
    Drag(Thumb(slider), 2, 12);
    MoveOverTheWindow();
    EXPECT_EQ(Thumbs(), Indices{});
    EXPECT_EQ(Captions(), Indices{});
    EXPECT_EQ(Names(), slider <= Zoom ? Indices{} : Indices{OptionName(slider)});
  }
  MoveOver(Thumb(StepSize));
  EXPECT_EQ(Names(), Indices{});
}

TEST_F(SliderHighlight, OutlinesATrackUntilThePointerIsOverTheBareWindow) {
  for (int slider = StepSize; slider <= UnSharpLY; ++slider) {
    MoveOver(Track(slider));
    EXPECT_TRUE(Outline().Visible());
    EXPECT_EQ(Outline().geometry(), QRect(207, 239 + 32 * slider, 539, 27));
  }
  for (const char* name : {"Label1(3)", "Label3(0)", "Picture8", "Label7(0)", "Picture3(1)"}) {
    MovePointerOver(Get<Control>(name));
    EXPECT_TRUE(Outline().Visible()) << name;
  }
  MoveOverTheWindow();
  EXPECT_FALSE(Outline().Visible());
}

TEST_F(SliderHighlight, AMoveOverATrackPlacesTheOutlineOfItsThumbAlone) {
  Thumb(Accuracy).setLeft(3000);
  Thumb(Zoom).setLeft(4000);
  MoveOutlineAway(Accuracy);
  MoveOver(Track(Accuracy));
  ExpectOutlineAround(Accuracy, 3000);
  EXPECT_EQ(ThumbOutline(Zoom).Left(), 719);
}

class ArrowHighlight : public SectionWindowTest {
 protected:
  std::string Look(Arrow arrow) const {
    const Label& label = ArrowButton(arrow);
    return Hex(label.ForeColor()) + (label.FontBold() ? " bold " : " plain ") +
           std::to_string(label.font().pixelSize());
  }
  const std::string plain_ = "0xc0c0c0 plain 11";
  const std::string lit_ = "0xffffff bold 13";
};

TEST_F(ArrowHighlight, IsOnOneArrowUntilThePointerIsOverTheBarOrTheBareWindow) {
  MovePointerOver(ArrowButton(TowardsStart));
  EXPECT_EQ(Look(TowardsStart), lit_);
  EXPECT_EQ(Look(TowardsEnd), plain_);
  MovePointerOver(ArrowButton(TowardsEnd));
  EXPECT_EQ(Look(TowardsStart), plain_);
  EXPECT_EQ(Look(TowardsEnd), lit_);
  MovePointerOver(Get<PictureBox>("Picture5"));
  EXPECT_EQ(Look(TowardsEnd), plain_);
  MovePointerOver(ArrowButton(TowardsStart));
  MoveOverTheWindow();
  EXPECT_EQ(Look(TowardsStart), plain_);
}

TEST_F(ArrowHighlight, StaysWhileThePointerIsOverAnyOtherControl) {
  MovePointerOver(ArrowButton(TowardsStart));
  for (const char* name : {"Picture3(0)", "Picture3(1)", "Picture8", "Label12(0)", "Picture2(0)",
                           "Label1(0)", "Picture4(0)"}) {
    MovePointerOver(Get<Control>(name));
    EXPECT_EQ(Look(TowardsStart), lit_) << name;
  }
}

}  // namespace
}  // namespace kelvane::testing
