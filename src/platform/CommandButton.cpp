#include "platform/CommandButton.h"

#include <QPushButton>

#include "platform/HandlerScope.h"
#include "platform/PixelSized.h"

namespace kelvane {

CommandButton::CommandButton(Container& container, const QString& name)
    : Control(container, name), button_(new PixelSized<QPushButton>) {
  FillWith(button_);
  connect(button_, &QPushButton::clicked, this, [this] { Raise(this, Click, Index()); });
}

QString CommandButton::Caption() const { return button_->text(); }

void CommandButton::setCaption(const QString& caption) { button_->setText(caption); }

}  // namespace kelvane
