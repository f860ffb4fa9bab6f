// The light on the sliders, and what of it is left over.
#include "sections/SectionWindowTest.h"

namespace kelvane::testing {
namespace {

constexpr const char* kThumbRest = "0x404040";
constexpr const char* kTextRest = "0xc0c0c0";
constexpr const char* kWhiteText = "0xffffff";

class Highlight : public SectionWindowTest {
 protected:
  // The members of an array of labels that stand out.
  std::vector<int> LitThumbs() const {
    return Where(7, [this](int i) { return Hex(Thumb(i).BackColor()) != kThumbRest; });
  }
  std::vector<int> LitCaptions() const {
    return Where(7, [this](int i) { return LightOf("Label3", i) != kTextRest; });
  }
  std::vector<int> LitNames() const {
    return Where(14, [this](int i) { return LightOf("Label2", i) != kTextRest; });
  }
  std::string LightOf(const char* array, int index) const {
    return Hex(Get<Label>(array, index).ForeColor());
  }
  const Shape& Outline() const { return Get<Shape>("Shape1"); }

 private:
  template <class Test>
  static std::vector<int> Where(int count, Test test) {
    std::vector<int> found;
    for (int i = 0; i < count; ++i) {
      if (test(i)) found.push_back(i);
    }
    return found;
  }
};

using Indices = std::vector<int>;

TEST_F(Highlight, IsNowhereAtTheStart) {
  EXPECT_EQ(LitThumbs(), Indices{});
  EXPECT_EQ(LitCaptions(), Indices{});
  EXPECT_EQ(LitNames(), Indices{});
}

TEST_F(Highlight, FallsOnTheThumbUnderTheMouseAndItsCaption) {
  for (int slider = StepSize; slider <= UnSharpLY; ++slider) {
    MoveOver(Thumb(slider));
    EXPECT_EQ(LitThumbs(), Indices{slider});
    EXPECT_EQ(Hex(Thumb(slider).BackColor()), kWhiteText);
    EXPECT_EQ(LitCaptions(), Indices{slider});
    EXPECT_EQ(LightOf("Label3", slider), kWhiteText);
    EXPECT_EQ(LitNames(), Indices{});
  }
}

TEST_F(Highlight, FallsOnTheNameOfTheSliderThatIsDragged) {
  for (int slider = StepSize; slider <= UnSharpLY; ++slider) {
    Drag(Thumb(slider), 10);
    EXPECT_EQ(LitNames(), Indices{2 * slider});
    EXPECT_EQ(LightOf("Label2", 2 * slider), kWhiteText);
    EXPECT_EQ(LitThumbs(), Indices{slider});
  }
  MoveOver(Thumb(UnSharpLY));
  EXPECT_EQ(LitNames(), Indices{}) << "the next move without a button puts it out";
}

TEST_F(Highlight, AMoveOverATrackPutsOutTheThumbsAndNothingElse) {
  Drag(Thumb(Zoom), 10);
  MoveOver(Track(Smoothing));
  EXPECT_EQ(LitThumbs(), Indices{});
  EXPECT_EQ(LitCaptions(), Indices{Zoom});
  EXPECT_EQ(LitNames(), Indices{2 * Zoom});
}

TEST_F(Highlight, AMoveOverATrackPutsTheOutlineRoundIt) {
  for (int slider = StepSize; slider <= UnSharpLY; ++slider) {
    MoveOver(Track(slider));
    EXPECT_TRUE(Outline().Visible());
    EXPECT_EQ(Outline().Left(), 208 - 1);
    EXPECT_EQ(Outline().Top(), static_cast<float>(240 + 32 * slider - 1));
    EXPECT_EQ(Outline().Width(), 537 + 2);
    EXPECT_EQ(Outline().Height(), 25 + 2);
    EXPECT_EQ(Hex(Picture(*form_).pixel(207, 240 + 32 * slider + 5)), "0x404040");
  }
}

TEST_F(Highlight, AMoveOverATrackPutsTheThumbsOutlineRoundItsThumb) {
  Thumb(Accuracy).setLeft(3000);
  Thumb(Zoom).setLeft(4000);
  Disarrange(Get<Shape>("Shape2", Accuracy));
  MoveOver(Track(Accuracy));
  EXPECT_EQ(Get<Shape>("Shape2", Accuracy).Left(), 2999);
  EXPECT_EQ(Get<Shape>("Shape2", Accuracy).Top(), -1);
  EXPECT_EQ(Get<Shape>("Shape2", Accuracy).Width(), 137);
  EXPECT_EQ(Get<Shape>("Shape2", Accuracy).Height(), 377);
  EXPECT_EQ(Get<Shape>("Shape2", Zoom).Left(), 719) << "the others stay where they were";
}

// Step Size is put back after its outline was placed.
TEST_F(Highlight, TheOutlineOfStepSizeIsPlacedBeforeTheThumbIsPutBack) {
  Thumb(StepSize).setLeft(9000);
  MoveOver(Track(StepSize));
  EXPECT_EQ(Get<Shape>("Shape2", StepSize).Left(), 8999);
  EXPECT_EQ(Thumb(StepSize).Left(), 7920);
}

TEST_F(Highlight, TheOutlineStaysUntilTheMouseIsOnTheBareWindow) {
  MoveOver(Track(Zoom));
  for (const char* name : {"Label1(3)", "Label3(0)", "Picture8", "Label7(0)", "Picture3(1)"}) {
    MovePointerOver(Get<Control>(name));
    EXPECT_TRUE(Outline().Visible()) << name;
  }
  MoveOverTheWindow();
  EXPECT_FALSE(Outline().Visible());
}

TEST_F(Highlight, TheBareWindowPutsOutThumbsCaptionsAndTheFirstSevenOfTheNames) {
  for (int slider = StepSize; slider <= UnSharpLY; ++slider) {
    Drag(Thumb(slider), 10);
    MoveOverTheWindow();
    EXPECT_EQ(LitThumbs(), Indices{});
    EXPECT_EQ(LitCaptions(), Indices{});
    EXPECT_EQ(LitNames(), slider <= Zoom ? Indices{} : Indices{2 * slider});
  }
}

TEST_F(Highlight, ANameThatWasLeftOverGoesOutWithTheNextMoveOverAThumb) {
  Drag(Thumb(UnSharpLY), 10);
  MoveOverTheWindow();
  ASSERT_EQ(LitNames(), Indices{12});
  MoveOver(Thumb(StepSize));
  EXPECT_EQ(LitNames(), Indices{});
}

TEST_F(Highlight, TheLitThumbIsWhiteInsideItsOutline) {
  MoveOver(Thumb(StepSize));
  const QImage track = Picture(Track(StepSize));
  EXPECT_EQ(Hex(track.pixel(52, 12)), "0xffffff");
  EXPECT_EQ(Hex(track.pixel(48, 12)), "0xe0e0e0");
}

}  // namespace
}  // namespace kelvane::testing
