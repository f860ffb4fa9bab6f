// In which order the bars go and are stretched, by a drag and by a reset.
#include <QEvent>

#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

// Writes down where a bar stands and how large it is whenever its widget is moved or resized.
class BarWatch : public QObject {
 public:
  void Watch(PictureBox& bar) { bar.installEventFilter(this); }
  const Texts& Seen() const { return seen_; }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Move || event->type() == QEvent::Resize) {
      const auto& bar = *static_cast<const PictureBox*>(watched);
      const std::string now = QStringLiteral("%1: %2,%3 %4x%5")
                                  .arg(bar.Index())
                                  .arg(bar.x())
                                  .arg(bar.y())
                                  .arg(bar.width())
                                  .arg(bar.height())
                                  .toStdString();
      if (seen_.empty() || seen_.back() != now) seen_.push_back(now);
    }
    return false;
  }

 private:
  Texts seen_;
};

class BarOrder : public MainWindowTest {
 protected:
  // Of the bars' changes from here on.
  void Watch() {
    PumpOnce();
    for (const MarkerBar bar : {LeftBar, TopBar, RightBar, BaseBar}) watch_.Watch(Bar(bar));
  }
  Texts Drag(MarkerBar bar, float right, float down) {
    LoadVideoOf(640, 360);
    Watch();
    Bar(bar).MouseDown({.Index = bar, .Button = kLeftButton, .Shift = 0, .X = 2, .Y = 2});
    Bar(bar).MouseMove(
        {.Index = bar, .Button = kLeftButton, .Shift = 0, .X = 2 + right, .Y = 2 + down});
    return watch_.Seen();
  }

  BarWatch watch_;
};

TEST_F(BarOrder, LeftBarThenTopBarThenBaseBar) {
  EXPECT_EQ(Drag(LeftBar, 40, 0), (Texts{"0: 40,0 5x360", "1: 40,0 640x5", "1: 40,0 595x5",
                                         "3: 40,355 640x5", "3: 40,355 595x5"}));
}

TEST_F(BarOrder, TopBarThenThePlacesOfItsNeighboursThenTheirHeights) {
  EXPECT_EQ(Drag(TopBar, 0, 30), (Texts{"1: 0,30 640x5", "0: 0,30 5x360", "2: 635,30 5x360",
                                        "0: 0,30 5x325", "2: 635,30 5x330"}));
}

TEST_F(BarOrder, RightBarThenTopBarThenBaseBar) {
  EXPECT_EQ(Drag(RightBar, -20, 0), (Texts{"2: 615,0 5x360", "1: 0,0 615x5", "3: 0,355 615x5"}));
}

TEST_F(BarOrder, BaseBarThenLeftBarThenRightBar) {
  EXPECT_EQ(Drag(BaseBar, 0, -50), (Texts{"3: 0,305 640x5", "0: 0,0 5x305", "2: 635,0 5x310"}));
}

TEST_F(BarOrder, OfAResetIsBarByBarAndInABarItsOwn) {
  LoadVideoOf(640, 360);
  for (const MarkerBar bar : {LeftBar, TopBar, RightBar, BaseBar}) {
    Bar(bar).setLeft(11);
    Bar(bar).setTop(22);
  }
  for (const MarkerBar bar : {LeftBar, RightBar}) Bar(bar).setHeight(33);
  for (const MarkerBar bar : {TopBar, BaseBar}) Bar(bar).setWidth(44);
  Watch();
  Give(ResetMarkers);
  EXPECT_EQ(watch_.Seen(), (Texts{"0: 0,22 5x33", "0: 0,0 5x33", "0: 0,0 5x360",      //
                                  "1: 0,22 44x5", "1: 0,0 44x5", "1: 0,0 640x5",      //
                                  "2: 11,0 5x33", "2: 11,0 5x360", "2: 635,0 5x360",  //
                                  "3: 11,355 44x5", "3: 0,355 44x5", "3: 0,355 640x5"}));
}

}  // namespace
}  // namespace kelvane::testing
