// Shows outlines, details, tool tips and the context menu. The MouseMove handlers keep no state:
// each sets anew at every move what it shows.
#include "joiner/Form4.h"
#include "platform/Menu.h"
#include "shared/TextHelpers.h"

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1String kDetailsHeading("Video Details: ");

}  // namespace

void Form4::Label1_MouseMove(const MouseEvent& event) {
  Shape1.Outline(Label1(event.Index), 2);
  Shape1.setVisible(true);
}

void Form4::Picture3_MouseMove(const MouseEvent& /*event*/) { Shape1.setVisible(false); }

void Form4::Option1_MouseMove(const MouseEvent& event) {
  Option1(event.Index)
      .setToolTipText(event.Index == NoTranscode
                          ? u" Used when all video sections have the same properties / codecs "_s
                          : u" Used when video sections have different properties / codecs "_s);
}

void Form4::Picture1_MouseMove(const MouseEvent& event) {
  if (event.Index != Chart) return;
  Shape1.setVisible(false);
  Shape3.setVisible(false);
  Picture1(Chart).SetFocus();
  Label3(VideoDetails).setCaption(kDetailsHeading);
  Shape8.setWidth(Shape7.Width());
  List1.setListIndex(-1);
}

void Form4::Picture2_MouseMove(const MouseEvent& event) {
  PictureBox& strip = Picture2(event.Index);
  const QString details = Label2(event.Index).Caption();
  strip.setToolTipText(details);
  ListView1.SetFocus();
  ListView1.ListItems(event.Index - 1).Select();
  List1.setListIndex(event.Index - 2);
  Label3(VideoDetails).setCaption(kDetailsHeading + details);
  Shape8.setWidth(Label3(VideoDetails).Width() + 5);
  Shape3.Outline(strip, 1);
  Shape3.setVisible(true);
}

void Form4::Picture2_MouseUp(const MouseEvent& event) {
  if (event.Button != kRightButton) return;
  MenuStrip = ToInteger16(event.Index).value_or(MenuStrip);
  PopUpMenu();
}

void Form4::ListView1_MouseUp(const MouseEvent& event) {
  if (event.Button == kRightButton) PopUpMenu();
}

void Form4::Picture5_MouseMove(const MouseEvent& event) {
  Picture5.setToolTipText(FormatTimeText(event.X * kSecondsPerPixel));
}

void Form4::PopUpMenu() const { Find<Menu>("mnu_ContextMenu").PopUp(); }

}  // namespace kelvane
