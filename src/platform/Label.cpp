#include "platform/Label.h"

#include <QFontMetrics>
#include <QPainter>

#include "platform/Container.h"
#include "platform/HandlerScope.h"

namespace kelvane {
namespace {

// `font`, set as much tighter as `text` needs for `width` and legible text allows.
QFont FittingFont(const QFont& font, const QString& text, int width) {
  constexpr int kNatural = 100;
  constexpr int kTightest = 85;
  QFont fitting = font;
  for (int stretch = kNatural;
       stretch > kTightest && QFontMetricsF(fitting).horizontalAdvance(text) > width;) {
    --stretch;
    fitting.setStretch(stretch);
  }
  return fitting;
}

}  // namespace

Label::Label(Container* container, const QString& name) : Control(container, name) {}

void Label::setCaption(const QString& caption) {
  if (caption == caption_) return;
  caption_ = caption;
  setAccessibleName(caption_);
  update();
  Raise(this, Change, Index());
}

void Label::setBackColor(QRgb color) {
  if (backColor_ == color) return;
  backColor_ = color;
  update();
}

void Label::setForeColor(QRgb color) {
  if (foreColor_ == color) return;
  foreColor_ = color;
  update();
}

void Label::setAlignment(Qt::Alignment alignment) {
  if (alignment_ == alignment) return;
  alignment_ = alignment;
  update();
}

void Label::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  if (backColor_) painter.fillRect(rect(), QColor(*backColor_));
  painter.setFont(FittingFont(font(), caption_, width()));
  painter.setPen(QColor(foreColor_));
  const QString shown = painter.fontMetrics().elidedText(caption_, Qt::ElideMiddle, width());
  painter.drawText(rect(), static_cast<int>(alignment_ | Qt::AlignTop) | Qt::TextSingleLine, shown);
}

}  // namespace kelvane
