#pragma once

#include <QImage>
#include <optional>

#include "platform/Container.h"
#include "platform/Control.h"

namespace kelvane {

// A box of one colour that may hold controls and be drawn on. Drawings stay until they are cleared
// and lie behind the controls.
//
// Coordinates of drawings are in the box's scale unit and rounded to whole pixels, half to even.
// What is outside the box, or has a NaN coordinate, isn't drawn.
class PictureBox : public Control, public Container {
  Q_OBJECT
 public:
  PictureBox(Container& container, const QString& name, ScaleMode scale);

  // Returns a new box like this one in the same container, which owns it. The new box lacks the
  // border, the drawing, the controls and the Meaning of this one. It is hidden if the container is
  // on the screen.
  PictureBox& Duplicate(const QString& name) const;

  // Setting a colour, even the same one, clears the drawing.
  void setBackColor(QRgb color) override;

  // Clears the drawing.
  void Cls();
  // Draws a horizontal or vertical line, one pixel wide and without its last pixel. A slanting line
  // isn't drawn.
  void DrawLine(float x1, float y1, float x2, float y2, QRgb color);
  // Draws one line of text in the fore colour, with its top left corner at (x, y).
  void PrintAt(float x, float y, const QString& text);

  // The colour of text that is printed from now on.
  QRgb ForeColor() const { return foreColor_; }
  void setForeColor(QRgb color) { foreColor_ = color; }
  // Sets the font of text that is printed from now on; its size is `points` at 96 dots per inch.
  void SetPrintFont(const QString& family, float points);

  // Repaints the box synchronously.
  void Refresh() { repaint(); }

  // Raised when an assignment has changed the box's size in pixels, before the assignment returns.
  std::function<void(int Index)> Resize;

 protected:
  float MouseUnitsPerPixel() const override { return UnitsPerPixel(); }
  QPoint MouseOrigin() const override { return ContentOrigin(); }
  bool event(QEvent* event) override;
  void SizeChanged() override;
  void paintEvent(QPaintEvent* event) override;

 private:
  // Returns the pixel at (x, y); std::nullopt if a coordinate is NaN.
  std::optional<QPoint> PixelOf(float x, float y) const;
  QImage& Drawing();

  QImage drawing_;  // of the inside; null while nothing has been drawn since the last Cls
  QFont printFont_;
  QRgb foreColor_ = 0;
};

}  // namespace kelvane
