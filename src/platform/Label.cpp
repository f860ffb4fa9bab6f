#include "platform/Label.h"

#include <QFontMetrics>
#include <QPainter>
#include <cmath>

#include "platform/Container.h"
#include "platform/Fonts.h"
#include "platform/HandlerScope.h"

namespace kelvane {

using namespace Qt::StringLiterals;

Label::Label(Container& container, const QString& name) : Control(container, name) {
  setRole(SpokenRole::kText);
}

Label& Label::Duplicate(const QString& name) const {
  auto* copy = new Label(container(), name);
  copy->CopyFrom(*this);
  copy->caption_ = caption_;
  copy->backColor_ = backColor_;
  copy->foreColor_ = foreColor_;
  copy->disabledColor_ = disabledColor_;
  copy->alignment_ = alignment_;
  copy->bordered_ = bordered_;
  copy->sizesItself_ = sizesItself_;
  copy->setFont(font());
  copy->Change = Change;
  return *copy;
}

void Label::setCaption(const QString& caption) {
  if (caption == caption_) return;
  caption_ = caption;
  AnnounceCaption();
  if (sizesItself_) FitCaption();
  update();
  Raise(this, Change, Index());
}

bool Label::IsSpoken() const {
  return Control::IsSpoken() && !(Meaning().isEmpty() && SpokenCaption().isEmpty());
}

QString Label::ShownCaption() const { return QString(caption_).replace("&&"_L1, "&"_L1); }

void Label::FitCaption() {
  const float unitsPerPixel = container().UnitsPerPixel();
  // Rounded up, so that the caption needn't be condensed.
  const QFontMetricsF metrics(font());
  const double width = std::ceil(metrics.horizontalAdvance(ShownCaption()));
  setWidth(static_cast<float>(width) * unitsPerPixel);
  setHeight(static_cast<float>(QFontMetrics(font()).height()) * unitsPerPixel);
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

void Label::setDisabledColor(QRgb color) {
  if (disabledColor_ == color) return;
  disabledColor_ = color;
  update();
}

void Label::setAlignment(Qt::Alignment alignment) {
  if (alignment_ == alignment) return;
  alignment_ = alignment;
  update();
}

void Label::setBordered() {
  bordered_ = true;
  update();
}

void Label::setFontBold(bool bold) {
  QFont changed = font();
  if (changed.bold() == bold) return;
  changed.setBold(bold);
  setFont(changed);
}

void Label::setFontSize(float points) {
  QFont changed = font();
  if (changed.pixelSize() == FontPixels(points)) return;
  changed.setPixelSize(FontPixels(points));
  setFont(changed);
}

void Label::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  if (backColor_) painter.fillRect(rect(), QColor(*backColor_));
  QRect place = rect();
  if (bordered_) {
    painter.setPen(Qt::darkGray);
    painter.drawRect(place.adjusted(0, 0, -1, -1));
    place.adjust(1, 1, -1, -1);
  }
  QString shown = ShownCaption();
  painter.setFont(FittingFont(font(), shown, place.width()));
  painter.setPen(QColor(isEnabled() ? foreColor_ : disabledColor_.value_or(foreColor_)));
  shown = painter.fontMetrics().elidedText(shown, Qt::ElideMiddle, place.width());
  painter.drawText(place, static_cast<int>(alignment_ | Qt::AlignTop) | Qt::TextSingleLine, shown);
  painter.end();
  PaintFocus(rect());
}

}  // namespace kelvane
