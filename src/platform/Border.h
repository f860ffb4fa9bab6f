#pragma once

#include <QWidget>

namespace kelvane {

// A border inside the edges of a control, in front of its contents: a line and a gap, a pixel each.
// It ignores the mouse.
class Border : public QWidget {
 public:
  static constexpr int kWidth = 2;  // pixels

  // `control` owns the border, which follows its size.
  Border(QWidget& control, QRgb gapColor);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QRgb gapColor_;
};

}  // namespace kelvane
