#include <QHash>
#include <QMenuBar>

#include "platform/CommandButton.h"
#include "platform/Form.h"
#include "platform/Label.h"
#include "platform/Menu.h"
#include "platform/PictureBox.h"
#include "platform/ProgressBar.h"
#include "platform/ScrollBars.h"
#include "platform/Shapes.h"
#include "platform/Slider.h"
#include "platform/TextBox.h"
#include "platform/WindowsMediaPlayer.h"

namespace kelvane {
namespace {

// 8.25 points at 96 dots to the inch: a pixel is a pixel of the screen, whatever its density.
QFont FormFont() {
  constexpr int kPixels = 11;
  QFont font(QStringLiteral("Arial"));
  font.setPixelSize(kPixels);
  return font;
}

Control* BuildLabel(const ControlDesign& design, Container* container, QRgb textColor) {
  auto* label = new Label(container, QLatin1String(design.name));
  label->setCaption(QLatin1String(design.caption));
  label->setForeColor(textColor);
  label->setAlignment(design.centred ? Qt::AlignHCenter : Qt::AlignLeft);
  if (design.color) label->setBackColor(*design.color);
  return label;
}

Control* BuildPictureBox(const ControlDesign& design, Container* container) {
  auto* box = new PictureBox(container, QLatin1String(design.name),
                             design.twips ? ScaleMode::kTwips : ScaleMode::kPixels);
  box->setBackColor(design.color.value_or(0));
  if (design.bordered) box->setBordered();
  return box;
}

Control* BuildTextBox(const ControlDesign& design, Container* container) {
  auto* box = new TextBox(container, QLatin1String(design.name));
  box->setText(QLatin1String(design.caption));
  return box;
}

Control* BuildCommandButton(const ControlDesign& design, Container* container) {
  auto* button = new CommandButton(container, QLatin1String(design.name));
  button->setCaption(QLatin1String(design.caption));
  return button;
}

Control* BuildShape(const ControlDesign& design, Container* container) {
  auto* shape = new Shape(container, QLatin1String(design.name));
  shape->SetBorder(design.color.value_or(0), design.borderWidth);
  return shape;
}

Control* BuildLine(const ControlDesign& design, Container* container) {
  auto* line = new Line(container, QLatin1String(design.name));
  line->setBorderColor(design.color.value_or(0));
  return line;
}

Control* Build(const ControlDesign& design, Container* container, QRgb labelColor) {
  switch (design.controlClass) {
    case ControlClass::kCommandButton:
      return BuildCommandButton(design, container);
    case ControlClass::kHScrollBar:
      return new HScrollBar(container, QLatin1String(design.name));
    case ControlClass::kLabel:
      return BuildLabel(design, container, labelColor);
    case ControlClass::kLine:
      return BuildLine(design, container);
    case ControlClass::kPictureBox:
      return BuildPictureBox(design, container);
    case ControlClass::kProgressBar:
      return new ProgressBar(container, QLatin1String(design.name));
    case ControlClass::kShape:
      return BuildShape(design, container);
    case ControlClass::kSlider:
      return new Slider(container, QLatin1String(design.name));
    case ControlClass::kTextBox:
      return BuildTextBox(design, container);
    case ControlClass::kVScrollBar:
      return new VScrollBar(container, QLatin1String(design.name));
    case ControlClass::kWindowsMediaPlayer:
      return new WindowsMediaPlayer(container, QLatin1String(design.name));
  }
  Q_UNREACHABLE();
}

}  // namespace

void Form::BuildControls(const FormDesign& form, std::span<const ControlDesign> controls) {
  area_->setBackColor(form.backColor);
  area_->setFont(FormFont());
  QHash<QString, Container*> containers{{QString(), area_}};
  for (const ControlDesign& design : controls) {
    Container* container = containers.value(QLatin1String(design.container));
    Control* control = Build(design, container, form.labelColor);
    if (auto* box = qobject_cast<Container*>(control)) containers.insert(box->objectName(), box);
    const float twipsPerUnit = kTwipsPerPixel / container->UnitsPerPixel();
    control->setLeft(design.place.left / twipsPerUnit);
    control->setTop(design.place.top / twipsPerUnit);
    control->setWidth(design.place.width / twipsPerUnit);
    control->setHeight(design.place.height / twipsPerUnit);
    control->setVisible(design.visible);
    if (design.pointer != MousePointer::kDefault) control->setMousePointer(design.pointer);
    // The list runs from front to back.
    control->lower();
  }
}

void Form::BuildMenus(std::span<const MenuDesign> menus) {
  if (menus.empty()) return;
  menuBar_ = new QMenuBar(this);
  menuBar_->setNativeMenuBar(false);
  QHash<QString, Menu*> titles;
  for (const MenuDesign& design : menus) {
    const QString name = QLatin1String(design.name);
    const QString caption = QLatin1String(design.caption);
    Menu* title = titles.value(QLatin1String(design.title));
    Menu* menu =
        title == nullptr ? new Menu(*menuBar_, name, caption) : new Menu(*title, name, caption);
    menu->setVisible(design.visible);
    titles.insert(name, menu);
  }
}

}  // namespace kelvane
