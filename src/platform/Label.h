#pragma once

#include <optional>

#include "platform/Control.h"

namespace kelvane {

// Shows one line of text at its top; transparent unless it has a back colour. A caption that
// is wider than the label is condensed and, if that isn't enough, elided in its middle. "&&" is
// shown as one ampersand. Caption returns the text as assigned. A label that setEnabled has
// disabled shows its caption in the disabled colour, and takes neither the mouse nor the keyboard.
class Label : public Control {
  Q_OBJECT
 public:
  Label(Container& container, const QString& name);

  // Returns a new, enabled label like this one in the same container, which owns it. Of what a
  // screen reader is told, only the role and the caption are copied. The new label is hidden if the
  // container is on the screen.
  Label& Duplicate(const QString& name) const;

  bool Windowless() const override { return true; }

  const QString& Caption() const { return caption_; }
  void setCaption(const QString& caption);
  QString SpokenCaption() const override { return ShownCaption().trimmed(); }
  bool IsSpoken() const override;

  // Unset while the label is transparent.
  std::optional<QRgb> BackColor() const { return backColor_; }
  void setBackColor(QRgb color);

  QRgb ForeColor() const { return foreColor_; }
  void setForeColor(QRgb color);

  // The caption's colour while the label is disabled. Until it is set, it is the fore colour.
  void setDisabledColor(QRgb color);

  Qt::Alignment Alignment() const { return alignment_; }
  void setAlignment(Qt::Alignment alignment);

  bool Bordered() const { return bordered_; }
  // Adds a border of one pixel along the label's edges.
  void setBordered();

  // Makes each new caption resize the label.
  void setAutoSize() { sizesItself_ = true; }

  bool FontBold() const { return font().bold(); }
  void setFontBold(bool bold);
  // `points` at 96 dots per inch.
  void setFontSize(float points);

  // Raised when the caption has changed, before the assignment returns.
  std::function<void(int Index)> Change;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString ShownCaption() const;
  void FitCaption();

  QString caption_;
  std::optional<QRgb> backColor_;
  QRgb foreColor_ = 0;
  std::optional<QRgb> disabledColor_;
  Qt::Alignment alignment_ = Qt::AlignLeft;
  bool bordered_ = false;
  bool sizesItself_ = false;
};

}  // namespace kelvane
