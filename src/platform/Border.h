#pragma once

#include <QWidget>
#include <optional>

namespace kelvane {

// A border along the edges of a control, in front of its contents: a line and, if a gap colour is
// given, a gap inside the line, each one pixel thick. The border ignores the mouse.
class Border : public QWidget {
 public:
  static constexpr int kWidth = 2;  // of line and gap together, in pixels

  // `control` owns the border, which follows the control's size.
  Border(QWidget& control, QRgb lineColor, std::optional<QRgb> gapColor);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QRgb lineColor_;
  std::optional<QRgb> gapColor_;
};

}  // namespace kelvane
