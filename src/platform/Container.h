#pragma once

#include "platform/Control.h"

namespace kelvane {

// The unit in which a container's controls are placed. Designs are stored in twips.
enum class ScaleMode { kTwips, kPixels };
constexpr float kTwipsPerPixel = 15;

// A control that holds controls: a picture box, or the area of a window under its menu bar.
class Container : public Control {
  Q_OBJECT
 public:
  // `name` is empty for a window's own area.
  Container(QWidget* window, ScaleMode scale);
  Container(Container* container, const QString& name, ScaleMode scale);

  // The scale unit may be changed before controls are placed in it.
  void setScaleMode(ScaleMode scale) { scale_ = scale; }
  float PixelsPerUnit() const { return scale_ == ScaleMode::kPixels ? 1 : 1 / kTwipsPerPixel; }

  QRgb BackColor() const { return backColor_; }
  void setBackColor(QRgb color);

  // A border of two pixels, inside which the places of the controls begin.
  void setBordered();
  QPoint ContentOrigin() const { return {borderWidth_, borderWidth_}; }

 protected:
  float MousePixelsPerUnit() const override { return PixelsPerUnit(); }
  void paintEvent(QPaintEvent* event) override;

 private:
  ScaleMode scale_;
  QRgb backColor_ = 0;
  int borderWidth_ = 0;
};

}  // namespace kelvane
