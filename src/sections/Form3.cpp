#include "sections/Form3.h"

#include "sections/Form3_Design.h"

namespace kelvane {

QString SectionSourceShortPath;

Form3::Form3(const QIcon& icon) : Form(kForm3, kForm3Controls, kForm3Menus), icon_(icon) {
  WireEvents();
}

// Controls that have no handler here do nothing.
void Form3::WireEvents() {
  for (Label* thumb : Label1) {
    thumb->MouseDown = [this](const MouseEvent& event) { Label1_MouseDown(event); };
    thumb->MouseMove = [this](const MouseEvent& event) { Label1_MouseMove(event); };
    thumb->MouseUp = [this](const MouseEvent& event) { Label1_MouseUp(event); };
  }
  for (Label* label : Label2) label->Change = [this](int Index) { Label2_Change(Index); };
  for (Label* label : Label6) {
    label->MouseUp = [this](const MouseEvent& event) { Label6_MouseUp(event); };
  }
  Label6(0).setTakesKeyboard();
  for (Label* arrow : Label7) {
    arrow->setTakesKeyboard();
    arrow->MouseDown = [this](const MouseEvent& event) { StepTimeLine(event); };
    arrow->MouseUp = [this](const MouseEvent& event) { StepTimeLine(event); };
    arrow->DblClick = [this](const MouseEvent& event) { StepTimeLine(event); };
    arrow->MouseMove = [this](const MouseEvent& event) { Label7_MouseMove(event); };
  }
  for (PictureBox* track : Picture2) {
    track->MouseMove = [this](const MouseEvent& event) { Picture2_MouseMove(event); };
  }
  for (PictureBox* box : Picture3) {
    box->MouseMove = [this](const MouseEvent& event) { Picture3_MouseMove(event); };
    box->MouseUp = [this](const MouseEvent& event) { Picture3_MouseUp(event); };
  }
  for (PictureBox* needle : Picture4) {
    needle->MouseDown = [this](const MouseEvent& event) { Picture4_MouseDown(event); };
    needle->MouseMove = [this](const MouseEvent& event) { Picture4_MouseMove(event); };
  }
  Picture5.MouseMove = [this](const MouseEvent& event) { Picture5_MouseMove(event); };
  Picture6.MouseDown = [this](const MouseEvent& event) { Picture6_MouseDown(event); };
  Picture6.MouseMove = [this](const MouseEvent& event) { Picture6_MouseMove(event); };
  OrderFocus({&Label6(0), &Label7(TowardsStart), &Label7(TowardsEnd)});
  Find<Menu>("mnu_Start").Click = [this] { mnu_Start_Click(); };
  Find<Menu>("mnu_End").Click = [this] { mnu_End_Click(); };
}

}  // namespace kelvane
