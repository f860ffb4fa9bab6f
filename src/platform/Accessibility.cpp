#include "platform/Accessibility.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QHash>
#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

#include "platform/Container.h"
#include "platform/Control.h"
#include "platform/Form.h"
#include "shared/TextHelpers.h"

namespace kelvane {
namespace {

QAccessible::Role RoleOf(const Control& control) {
  using enum SpokenRole;
  static const QHash<SpokenRole, QAccessible::Role> roles = {
      {kText, QAccessible::StaticText},      {kBox, QAccessible::Grouping},
      {kPicture, QAccessible::Graphic},      {kCommand, QAccessible::Button},
      {kHorizontalBar, QAccessible::Slider}, {kVerticalBar, QAccessible::Slider},
      {kThumb, QAccessible::Slider},         {kList, QAccessible::List},
      {kListItem, QAccessible::ListItem}};
  return roles.value(control.Role(), QAccessible::Client);
}

bool IsSlider(const Control& control) { return RoleOf(control) == QAccessible::Slider; }

// Returns whether a part of the control is inside all its containers and the window. Controls that
// cover this part are ignored: a user who can't see them has no way to move them aside.
bool HasUnclippedPart(const Control& control) {
  QRect part = control.rect();
  for (const QWidget* each = &control; !each->isWindow(); each = each->parentWidget()) {
    part = part.translated(each->pos()) & each->parentWidget()->rect();
  }
  return !part.isEmpty();
}

// Runs `action` later from the event loop, so that the screen reader doesn't wait for the handlers.
// `action` is dropped if, by then, the control is hidden or deleted, or a dialog or menu is open.
void RunFromEventLoop(Control& control, std::function<void()> action) {
  QMetaObject::invokeMethod(
      &control,
      [&control, action = std::move(action)] {
        if (control.isVisible() && QApplication::activeModalWidget() == nullptr &&
            QApplication::activePopupWidget() == nullptr) {
          action();
        }
      },
      Qt::QueuedConnection);
}

// The accessibility interface of a form, and the base class of ControlInterface.
class FormInterface : public QAccessibleWidget {
 public:
  using QAccessibleWidget::QAccessibleWidget;

  // The role isn't cached: a screen reader may ask for it before the window becomes a dialog.
  QAccessible::Role role() const override {
    return widget()->windowType() == Qt::Dialog ? QAccessible::Dialog : QAccessible::Window;
  }

  int childCount() const override { return static_cast<int>(Children().size()); }

  QAccessibleInterface* child(int index) const override {
    return QAccessible::queryAccessibleInterface(Children().value(index));
  }

  int indexOfChild(const QAccessibleInterface* child) const override {
    const auto isChild = [child](const QWidget* each) { return each == child->object(); };
    const QList<QWidget*> children = Children();
    const auto found = std::ranges::find_if(children, isChild);
    return found == children.end() ? -1 : static_cast<int>(found - children.begin());
  }

  // Returns the child that is, or contains, the frontmost widget at that position of the screen;
  // null if there is none.
  QAccessibleInterface* childAt(int x, int y) const override {
    const QList<QWidget*> children = Children();
    const QWidget* part = widget()->childAt(widget()->mapFromGlobal(QPoint(x, y)));
    while (part != nullptr && part != widget()) {
      const auto child = std::ranges::find(children, part);
      if (child != children.end()) return QAccessible::queryAccessibleInterface(*child);
      part = part->parentWidget();
    }
    return nullptr;
  }

 private:
  QList<QWidget*> Children() const { return SpokenWidget::SpokenChildren(*widget()); }
};

class ControlInterface : public FormInterface, public QAccessibleValueInterface {
 public:
  explicit ControlInterface(Control& control) : FormInterface(&control), control_(control) {}

  QAccessible::Role role() const override { return RoleOf(control_); }

  QAccessibleInterface* parent() const override {
    return QAccessible::queryAccessibleInterface(control_.SpokenParent());
  }

  QString text(QAccessible::Text kind) const override {
    const bool isText = control_.Role() == SpokenRole::kText;
    switch (kind) {
      case QAccessible::Name:
        if (control_.Role() == SpokenRole::kStock) return {};
        return isText || control_.Meaning().isEmpty() ? control_.SpokenCaption()
                                                      : control_.Meaning();
      case QAccessible::Description:
        return isText ? control_.Meaning() : FormInterface::text(kind);
      case QAccessible::Value:
        return IsSlider(control_) ? currentValue().toString() : QString();
      default:
        return FormInterface::text(kind);
    }
  }

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::ValueInterface && IsSlider(control_)) {
      return static_cast<QAccessibleValueInterface*>(this);
    }
    if (type == QAccessible::ActionInterface && actionNames().isEmpty()) return nullptr;
    return FormInterface::interface_cast(type);
  }

  QStringList actionNames() const override {
    switch (control_.Role()) {
      case SpokenRole::kCommand:
        return {pressAction()};
      case SpokenRole::kListItem:
        return {showMenuAction()};
      default:
        return {};
    }
  }

  void doAction(const QString& action) override {
    if (!actionNames().contains(action)) return;
    const Qt::MouseButton button = action == pressAction() ? Qt::LeftButton : Qt::RightButton;
    RunFromEventLoop(control_, [&control = control_, button] {
      if (HasUnclippedPart(control)) control.SendMouse(button);
    });
  }

  QVariant currentValue() const override {
    if (control_.IsBar()) return ValueAt(static_cast<double>(Position()));
    const auto* readOut = control_.window()->findChild<SpokenWidget*>(control_.ReadOut());
    return readOut == nullptr ? QVariant() : LeadingNumber(readOut->SpokenCaption());
  }

  // Drags a bar, even a clipped one, to the position of `value`, or of the nearest value in the
  // range. A thumb can't be set: only its form knows which value a position stands for.
  void setCurrentValue(const QVariant& value) override {
    if (!control_.IsBar()) return;
    if (!std::isfinite(value.toDouble())) return;
    const double goal = control_.SpokenValue().PositionOf(
        std::clamp(value.toDouble(), minimumValue().toDouble(), maximumValue().toDouble()));
    RunFromEventLoop(control_, [this, goal] {
      const int offset = qRound((goal - static_cast<double>(Position())) /
                                static_cast<double>(control_.container().UnitsPerPixel()));
      control_.SendMouse(Qt::LeftButton, IsHorizontal() ? QPoint(offset, 0) : QPoint(0, offset));
    });
  }

  QVariant minimumValue() const override {
    return control_.IsBar() ? QVariant(ValueAt(control_.SpokenValue().first)) : QVariant();
  }

  QVariant maximumValue() const override {
    return control_.IsBar() ? QVariant(ValueAt(Length())) : QVariant();
  }

  QVariant minimumStepSize() const override { return {}; }

 private:
  bool IsHorizontal() const { return control_.Role() == SpokenRole::kHorizontalBar; }
  float Position() const { return IsHorizontal() ? control_.Left() : control_.Top(); }
  double Length() const {
    return static_cast<double>(IsHorizontal() ? control_.container().ScaleWidth()
                                              : control_.container().ScaleHeight());
  }

  double ValueAt(double position) const { return control_.SpokenValue().At(position); }

  Control& control_;
};

QAccessibleInterface* MakeInterface(const QString& /*className*/, QObject* object) {
  if (auto* control = qobject_cast<Control*>(object)) return new ControlInterface(*control);
  auto* form = qobject_cast<Form*>(object);
  return form == nullptr ? nullptr : new FormInterface(form);
}

}  // namespace

void ServeScreenReaders() { QAccessible::installFactory(MakeInterface); }

}  // namespace kelvane
