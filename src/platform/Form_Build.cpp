#include <QHash>
#include <QMenuBar>

#include "platform/CommandButton.h"
#include "platform/Fonts.h"
#include "platform/Form.h"
#include "platform/Label.h"
#include "platform/ListBox.h"
#include "platform/ListView.h"
#include "platform/Menu.h"
#include "platform/OptionButton.h"
#include "platform/PictureBox.h"
#include "platform/ProgressBar.h"
#include "platform/ScrollBars.h"
#include "platform/Shapes.h"
#include "platform/Slider.h"
#include "platform/TextBox.h"
#include "platform/WindowsMediaPlayer.h"

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

QFont FormFont() {
  constexpr float kPoints = 8.25F;
  QFont font(u"Arial"_s);
  font.setPixelSize(FontPixels(kPoints));
  return font;
}

Qt::Alignment AlignmentOf(const ControlDesign& design) {
  if (design.rightAligned) return Qt::AlignRight;
  return design.centred ? Qt::AlignHCenter : Qt::AlignLeft;
}

Control* BuildLabel(const ControlDesign& design, Container& container, QRgb textColor) {
  auto* label = new Label(container, QLatin1String(design.name));
  label->setCaption(QLatin1String(design.caption));
  label->setForeColor(textColor);
  label->setAlignment(AlignmentOf(design));
  if (design.bordered) label->setBordered();
  if (design.sizesItself) label->setAutoSize();
  if (design.color) label->setBackColor(*design.color);
  return label;
}

Control* BuildPictureBox(const ControlDesign& design, Container& container) {
  auto* box = new PictureBox(container, QLatin1String(design.name),
                             design.twips ? ScaleMode::kTwips : ScaleMode::kPixels);
  box->setBackColor(design.color.value_or(0));
  if (design.bordered) box->setBordered();
  return box;
}

void SetColours(TextControl& control, const ControlDesign& design, QRgb textColor) {
  if (!design.color) return;
  control.setBackColor(*design.color);
  control.setForeColor(textColor);
}

Control* BuildTextBox(const ControlDesign& design, Container& container, QRgb textColor) {
  auto* box = new TextBox(container, QLatin1String(design.name));
  box->setText(QLatin1String(design.caption));
  if (design.bordered) box->setBordered();
  if (design.editable) box->setEditable();
  SetColours(*box, design, textColor);
  return box;
}

Control* BuildCommandButton(const ControlDesign& design, Container& container) {
  auto* button = new CommandButton(container, QLatin1String(design.name));
  button->setCaption(QLatin1String(design.caption));
  return button;
}

Control* BuildShape(const ControlDesign& design, Container& container) {
  auto* shape = new Shape(container, QLatin1String(design.name));
  shape->SetBorder(design.color.value_or(0), design.borderWidth);
  if (design.fillColor) shape->setFillColor(*design.fillColor);
  return shape;
}

Control* BuildLine(const ControlDesign& design, Container& container) {
  auto* line = new Line(container, QLatin1String(design.name));
  line->setBorderColor(design.color.value_or(0));
  return line;
}

// Builds a ListBox or a ListView.
template <class List>
Control* BuildList(const ControlDesign& design, Container& container, QRgb textColor) {
  auto* list = new List(container, QLatin1String(design.name));
  SetColours(*list, design, textColor);
  return list;
}

Control* BuildOptionButton(const ControlDesign& design, Container& container, QRgb textColor) {
  auto* option = new OptionButton(container, QLatin1String(design.name));
  option->setCaption(QLatin1String(design.caption));
  option->setForeColor(textColor);
  if (design.chosen) option->Choose();
  return option;
}

Control* Build(const ControlDesign& design, Container& container, QRgb labelColor) {
  switch (design.controlClass) {
    case ControlClass::kCommandButton:
      return BuildCommandButton(design, container);
    case ControlClass::kHScrollBar:
      return new HScrollBar(container, QLatin1String(design.name));
    case ControlClass::kLabel:
      return BuildLabel(design, container, labelColor);
    case ControlClass::kLine:
      return BuildLine(design, container);
    case ControlClass::kListBox:
      return BuildList<ListBox>(design, container, labelColor);
    case ControlClass::kListView:
      return BuildList<ListView>(design, container, labelColor);
    case ControlClass::kOptionButton:
      return BuildOptionButton(design, container, labelColor);
    case ControlClass::kPictureBox:
      return BuildPictureBox(design, container);
    case ControlClass::kProgressBar:
      return new ProgressBar(container, QLatin1String(design.name));
    case ControlClass::kShape:
      return BuildShape(design, container);
    case ControlClass::kSlider:
      return new Slider(container, QLatin1String(design.name));
    case ControlClass::kTextBox:
      return BuildTextBox(design, container, labelColor);
    case ControlClass::kVScrollBar:
      return new VScrollBar(container, QLatin1String(design.name));
    case ControlClass::kWindowsMediaPlayer:
      return new WindowsMediaPlayer(container, QLatin1String(design.name));
  }
  Q_UNREACHABLE();
}

void PlaceAsDesigned(Control& control, const DesignPlace& place, float twipsPerUnit) {
  const float left = place.left / twipsPerUnit;
  const float top = place.top / twipsPerUnit;
  const float width = place.width / twipsPerUnit;
  const float height = place.height / twipsPerUnit;
  if (auto* line = qobject_cast<Line*>(&control)) {
    line->SetEnds(left, top, left + width, top + height);
    return;
  }
  control.setLeft(left);
  control.setTop(top);
  control.setWidth(width);
  control.setHeight(height);
}

}  // namespace

void Form::BuildControls(const FormDesign& form, std::span<const ControlDesign> controls) {
  area_->setBackColor(form.backColor);
  area_->setFont(FormFont());
  QHash<QString, Container*> containers{{QString(), area_}};
  for (const ControlDesign& design : controls) {
    Container& container = *containers.value(QLatin1String(design.container));
    Control* control = Build(design, container, form.labelColor);
    if (auto* box = qobject_cast<PictureBox*>(control)) containers.insert(box->objectName(), box);
    PlaceAsDesigned(*control, design.place, kTwipsPerPixel / container.UnitsPerPixel());
    control->setVisible(design.visible);
    control->setMeaning(QLatin1String(design.meaning));
    control->setReadOut(QLatin1String(design.readOut));
    if (design.role) control->setRole(*design.role);
    if (design.pointer != MousePointer::kDefault) control->setMousePointer(design.pointer);
    // The table runs from front to back.
    control->lower();
  }
}

void Form::OrderFocus(std::initializer_list<Control*> controls) {
  // The Tab order starts from the window. Qt orders only widgets that take the focus.
  QWidget* const window = (*controls.begin())->window();
  window->setFocusPolicy(Qt::TabFocus);
  QWidget* before = window;
  for (Control* control : controls) {
    QWidget* part = control->StockWidget() == nullptr ? control : control->StockWidget();
    setTabOrder(before, part);
    before = part;
  }
  window->setFocusPolicy(Qt::NoFocus);
}

void Form::BuildMenus(std::span<const MenuDesign> menus) {
  if (menus.empty()) return;
  menuBar_ = new QMenuBar(this);
  menuBar_->setNativeMenuBar(false);
  QHash<QString, Menu*> titles;
  for (const MenuDesign& design : menus) {
    const QString name = QLatin1String(design.name);
    const QString caption = QLatin1String(design.caption);
    Menu* title = titles.value(QLatin1String(design.menu));
    Menu* menu =
        title == nullptr ? new Menu(*menuBar_, name, caption) : new Menu(*title, name, caption);
    menu->setVisible(design.visible);
    titles.insert(name, menu);
  }
}

}  // namespace kelvane
