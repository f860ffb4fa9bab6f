#pragma once

#include <QWidget>
#include <optional>

namespace kelvane {

// A border inside the edges of a control, in front of its contents: a line, and a gap unless that
// has no colour, a pixel each. It ignores the mouse.
class Border : public QWidget {
 public:
  static constexpr int kWidth = 2;  // pixels, with a gap

  // `control` owns the border, which follows its size.
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
