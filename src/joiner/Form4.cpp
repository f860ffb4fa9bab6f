#include "joiner/Form4.h"

#include <utility>

#include "joiner/Form4_Design.h"
#include "platform/Menu.h"

namespace kelvane {

Form4::Form4(QIcon icon) : Form(kForm4, kForm4Controls, kForm4Menus), icon_(std::move(icon)) {
  Picture5.setForeColor(kLight);
  WireEvents();
}

// Strips that are loaded later copy the handlers of the template.
void Form4::WireEvents() {
  for (Label* command : Label1) {
    command->MouseMove = [this](const MouseEvent& event) { Label1_MouseMove(event); };
    command->MouseUp = [this](const MouseEvent& event) { Label1_MouseUp(event); };
    command->setTakesKeyboard(Qt::TabFocus);  // a click leaves the focus in the list or the chart
  }
  for (OptionButton* option : Option1) {
    option->MouseMove = [this](const MouseEvent& event) { Option1_MouseMove(event); };
  }
  for (PictureBox* box : Picture1) {
    box->MouseMove = [this](const MouseEvent& event) { Picture1_MouseMove(event); };
  }
  for (PictureBox* strip : Picture2) {
    strip->MouseMove = [this](const MouseEvent& event) { Picture2_MouseMove(event); };
    strip->MouseUp = [this](const MouseEvent& event) { Picture2_MouseUp(event); };
  }
  Picture3.MouseMove = [this](const MouseEvent& event) { Picture3_MouseMove(event); };
  Picture5.MouseMove = [this](const MouseEvent& event) { Picture5_MouseMove(event); };
  ListView1.MouseUp = [this](const MouseEvent& event) { ListView1_MouseUp(event); };
  // Tab leads from the chart to the table, but not to the chart: only the pointer gives it the
  // focus.
  OrderFocus({&Picture1(Chart), &ListView1, &List1, &Option1(NoTranscode),
              &Option1(TranscodeAllSections), &Label1(AddVideoSection), &Label1(JoinAllSections),
              &Label1(SaveVideoFileList)});
  HScroll1.Change = [this] { HScroll1_Change(); };
  HScroll1.Scroll = [this] { HScroll1_Change(); };
  TakesDrops = [this] { return !TranscodeLock; };
  FilesDropped = [this](const QStringList& paths) {
    for (const QString& path : paths) CDialog.RunWithFile(path, [this] { AddSection(); });
  };
  Find<Menu>("mnu_RemoveSection").Click = [this] { mnu_RemoveSection_Click(); };
}

}  // namespace kelvane
