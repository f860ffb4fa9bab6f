#pragma once

#include <QWidget>

namespace kelvane {

// A border inside the edges of a control and over what lies in it: a line, and a gap to the inside.
// It is the control's child and ignores the mouse.
class Border : public QWidget {
 public:
  static constexpr int kWidth = 2;  // pixels

  Border(QWidget& control, QRgb gapColor);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QRgb gapColor_;
};

}  // namespace kelvane
