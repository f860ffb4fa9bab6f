#pragma once

#include <QColor>
#include <QPoint>
#include <QSize>

class QPaintEvent;
class QWidget;

namespace kelvane {

// The unit in which a container's controls are placed. Designs are stored in twips.
enum class ScaleMode { kTwips, kPixels };
constexpr float kTwipsPerPixel = 15;

// What holds controls: a picture box, or the content area of a window. A second base of such a
// widget, which it paints and in which the controls lie.
class Container {
 public:
  QWidget& Widget() const { return widget_; }

  ScaleMode Scale() const { return scale_; }
  float UnitsPerPixel() const { return scale_ == ScaleMode::kPixels ? 1 : kTwipsPerPixel; }
  // Of the inside as it is on the screen, in the scale unit.
  float ScaleWidth() const;
  float ScaleHeight() const;

  QRgb BackColor() const { return backColor_; }
  virtual void setBackColor(QRgb color);

  // A border of two pixels, inside which the places of the controls begin and the mouse counts. It
  // lies over controls of the design that reach beyond the inside. To be called after setBackColor,
  // whose colour it keeps between its lines, and before any control is placed.
  void setBordered();
  QPoint ContentOrigin() const { return {borderWidth_, borderWidth_}; }

 protected:
  Container(QWidget& widget, ScaleMode scale);
  ~Container() = default;

  // Of the inside, in pixels.
  QSize InnerSize() const;
  void PaintBackground(const QPaintEvent& event);

 private:
  QWidget& widget_;
  ScaleMode scale_;
  QRgb backColor_ = 0;
  int borderWidth_ = 0;
};

}  // namespace kelvane
