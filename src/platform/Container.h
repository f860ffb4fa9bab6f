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

// Holds controls: the second base class of a picture box and of a window's content area.
class Container {
 public:
  QWidget& Widget() const { return widget_; }

  ScaleMode Scale() const { return scale_; }
  float UnitsPerPixel() const { return scale_ == ScaleMode::kPixels ? 1 : kTwipsPerPixel; }
  // The size of the inside, in the scale unit; a whole number of pixels.
  float ScaleWidth() const;
  float ScaleHeight() const;

  QRgb BackColor() const { return backColor_; }
  virtual void setBackColor(QRgb color);

  // Adds a border of two pixels, which covers controls that reach beyond the inside. Positions of
  // controls and of the pointer are relative to the inside. Must be called after setBackColor,
  // since the border's inner pixel has that colour, and before any control is placed.
  void setBordered();
  QPoint ContentOrigin() const { return {borderWidth_, borderWidth_}; }

 protected:
  Container(QWidget& widget, ScaleMode scale);
  ~Container() = default;

  // The size of the inside, in pixels.
  QSize InnerSize() const;
  void PaintBackground(const QPaintEvent& event);

 private:
  QWidget& widget_;
  ScaleMode scale_;
  QRgb backColor_ = 0;
  int borderWidth_ = 0;
};

}  // namespace kelvane
