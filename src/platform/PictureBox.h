#pragma once

#include <QImage>
#include <optional>

#include "platform/Container.h"
#include "platform/Control.h"

namespace kelvane {

// A box of one colour that may hold controls and be drawn on. What is drawn stays, whatever covers
// the box meanwhile, and lies behind the controls.
//
// Places of a drawing are in the box's scale unit and rounded to whole pixels, half to even; what
// falls outside the box, or is no number, leaves no mark.
class PictureBox : public Control, public Container {
  Q_OBJECT
 public:
  PictureBox(Container& container, const QString& name, ScaleMode scale);

  // A box like this one in the same container, empty and not yet on show; the container's own.
  PictureBox& Duplicate(const QString& name) const;

  // A colour, even the same one, takes away what has been drawn.
  void setBackColor(QRgb color) override;

  // Takes away what has been drawn.
  void Cls();
  // A level or upright line one pixel wide that leaves out its last pixel.
  void DrawLine(float x1, float y1, float x2, float y2, QRgb color);
  // One line of text in the fore colour, with its top left corner there.
  void PrintAt(float x, float y, const QString& text);

  // Of the texts that are printed from now on.
  QRgb ForeColor() const { return foreColor_; }
  void setForeColor(QRgb color) { foreColor_ = color; }
  void SetPrintFont(const QString& family, float points);

  // Shows at once what has changed.
  void Refresh() { repaint(); }

  // Raised when the box has changed size on the screen, before the assignment returns.
  std::function<void(int Index)> Resize;

 protected:
  float MouseUnitsPerPixel() const override { return UnitsPerPixel(); }
  QPoint MouseOrigin() const override { return ContentOrigin(); }
  bool event(QEvent* event) override;
  void SizeChanged() override;
  void paintEvent(QPaintEvent* event) override;

 private:
  // No value where a coordinate is no number.
  std::optional<QPoint> PixelOf(float x, float y) const;
  QImage& Drawing();

  QImage drawing_;  // of the inside; null while nothing has been drawn
  QFont printFont_;
  QRgb foreColor_ = 0;
};

}  // namespace kelvane
