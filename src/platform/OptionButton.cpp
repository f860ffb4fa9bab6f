#include "platform/OptionButton.h"

#include <QButtonGroup>
#include <QRadioButton>

#include "platform/Container.h"
#include "platform/PixelSized.h"

namespace kelvane {
namespace {

QButtonGroup& GroupOf(Container& container) {
  auto* group = container.Widget().findChild<QButtonGroup*>(QString(), Qt::FindDirectChildrenOnly);
  return *(group == nullptr ? new QButtonGroup(&container.Widget()) : group);
}

}  // namespace

OptionButton::OptionButton(Container& container, const QString& name)
    : TextControl(container, name, QPalette::WindowText), button_(new PixelSized<QRadioButton>) {
  GroupOf(container).addButton(button_);
  FillWith(button_);
}

QString OptionButton::Caption() const { return button_->text(); }

void OptionButton::setCaption(const QString& caption) { button_->setText(caption); }

bool OptionButton::Value() const { return button_->isChecked(); }

void OptionButton::Choose() { button_->setChecked(true); }

}  // namespace kelvane
