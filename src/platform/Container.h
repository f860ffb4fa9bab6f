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

  ScaleMode Scale() const { return scale_; }
  float UnitsPerPixel() const { return scale_ == ScaleMode::kPixels ? 1 : kTwipsPerPixel; }
  // Of the inside as it is on the screen, in the scale unit.
  float ScaleWidth() const;
  float ScaleHeight() const;

  QRgb BackColor() const { return backColor_; }
  virtual void setBackColor(QRgb color);

  // A border of two pixels, inside which the places of the controls begin and the mouse counts. It
  // lies over controls of the design that reach beyond the inside. To be called after
  // setBackColor, whose colour it keeps between its lines, and before any control is placed.
  void setBordered();
  QPoint ContentOrigin() const { return {borderWidth_, borderWidth_}; }

 protected:
  float MouseUnitsPerPixel() const override { return UnitsPerPixel(); }
  QPoint MouseOrigin() const override { return ContentOrigin(); }
  void paintEvent(QPaintEvent* event) override;

 private:
  ScaleMode scale_;
  QRgb backColor_ = 0;
  int borderWidth_ = 0;
};

}  // namespace kelvane
