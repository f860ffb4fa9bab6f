#include "desktop/driver/Places.h"

#include <QHash>
#include <QRegularExpression>
#include <stdexcept>

namespace kelvane::desktop {
namespace {

// The frame's own border, inside which the viewport and the scroll bars lie.
constexpr int kBorder = 2;

// In twips, as drawn.
const QHash<QString, QRect>& Drawing() {
  static const QHash<QString, QRect> drawing = {
      {"pbar", Drawn(12240, 1800, 3855, 180)},       {"Text1(1)", Drawn(1800, 795, 14175, 315)},
      {"Text1(0)", Drawn(600, 795, 1095, 315)},      {"Picture1(0)", Drawn(360, 2280, 15855, 4455)},
      {"VScroll1", Drawn(15480, 240, 255, 3855)},    {"HScroll1", Drawn(0, 4080, 15375, 255)},
      {"Picture1(1)", Drawn(0, 0, 15375, 4095)},     {"Shape6", Drawn(120, 240, 375, 375)},
      {"Label14(6)", Drawn(10200, 7320, 1335, 255)}, {"Label14(5)", Drawn(8760, 7320, 1335, 255)},
      {"Label14(4)", Drawn(6600, 7320, 2055, 255)},  {"Label14(3)", Drawn(5160, 7320, 1335, 255)},
      {"Label14(2)", Drawn(3720, 7320, 1335, 255)},  {"Label14(1)", Drawn(2160, 7320, 1335, 255)},
      {"Label14(0)", Drawn(600, 7320, 1335, 255)},   {"Label13", Drawn(15240, 7320, 735, 255)},
      {"Label12", Drawn(12960, 7320, 735, 255)},     {"Label11", Drawn(13920, 7320, 1215, 255)},
      {"Label10", Drawn(11760, 7320, 1095, 255)},    {"Label6", Drawn(600, 6840, 1335, 255)},
      {"Shape5", Drawn(360, 6960, 15855, 1215)},     {"Label5", Drawn(12360, 1440, 1695, 255)},
      {"Shape4", Drawn(12120, 1560, 4095, 615)},     {"Label4", Drawn(600, 480, 1215, 255)},
      {"Shape3", Drawn(360, 600, 15855, 615)},       {"Label3", Drawn(4320, 1440, 1695, 255)},
      {"Shape2", Drawn(4080, 1560, 7815, 615)},      {"Label2", Drawn(600, 1440, 2655, 255)},
      {"Shape1", Drawn(360, 1560, 3735, 615)},       {"Label1(0)", Drawn(600, 1800, 615, 255)},
      {"Label1(1)", Drawn(1200, 1800, 615, 255)},    {"Label1(2)", Drawn(2040, 1800, 735, 255)},
      {"Label1(3)", Drawn(2760, 1800, 735, 255)},    {"Label1(4)", Drawn(4200, 1800, 615, 255)},
      {"Label1(5)", Drawn(4560, 1800, 615, 255)},    {"Label1(6)", Drawn(5400, 1800, 615, 255)},
      {"Label1(7)", Drawn(5760, 1800, 615, 255)},    {"Label1(8)", Drawn(6600, 1800, 615, 255)},
      {"Label1(9)", Drawn(7080, 1800, 615, 255)},    {"Label1(10)", Drawn(7920, 1800, 615, 255)},
      {"Label1(11)", Drawn(8520, 1800, 615, 255)},   {"Label1(12)", Drawn(9360, 1800, 615, 255)},
      {"Label1(13)", Drawn(9840, 1800, 615, 255)},   {"Label1(14)", Drawn(10680, 1800, 615, 255)},
      {"Label1(15)", Drawn(11160, 1800, 615, 255)},
  };
  return drawing;
}

QRect FrameIn(QSize area) {
  const int top = Drawing()["Picture1(0)"].top();
  return {20, top, area.width() - 40, area.height() - top - 140};
}

QRect InFrame(QSize area, const QString& control) {
  const QSize frame = FrameIn(area).size();
  const int across = Drawing()["HScroll1"].height();
  const int down = Drawing()["VScroll1"].width();
  if (control == QLatin1String("Picture1(1)")) {
    return {0, 0, frame.width() - down - 4, frame.height() - across};
  }
  if (control == QLatin1String("VScroll1")) {
    return {frame.width() - down - 4, 0, down, frame.height() - across - 3};
  }
  return {0, frame.height() - across - 4, frame.width() - down - 4, across};
}

}  // namespace

QRect Drawn(int left, int top, int width, int height) {
  constexpr int kTwipsPerPixel = 15;
  return {left / kTwipsPerPixel, top / kTwipsPerPixel, width / kTwipsPerPixel,
          height / kTwipsPerPixel};
}

QRect PlaceIn(QSize area, const QString& control) {
  if (!Drawing().contains(control)) {
    throw std::invalid_argument("no place known for " + control.toStdString());
  }
  static const QRegularExpression inFrame(R"(^(Picture1\(1\)|[HV]Scroll1)$)");
  static const QRegularExpression inCommandRow(R"(^Label1(4\(\d\)|[0-3])$)");
  if (inFrame.match(control).hasMatch()) {
    return InFrame(area, control).translated(FrameIn(area).topLeft() + QPoint(kBorder, kBorder));
  }

  QRect place = Drawing()[control];
  const int optionsTop = area.height() - Drawing()["Shape5"].height() - 20;
  const int headingTop = optionsTop - 7;
  if (control == QLatin1String("Picture1(0)")) {
    place = FrameIn(area);
  } else if (control == QLatin1String("Shape5")) {
    place = QRect(20, optionsTop, FrameIn(area).width(), place.height());
  } else if (control == QLatin1String("Label6")) {
    place.moveTop(headingTop);
  } else if (inCommandRow.match(control).hasMatch()) {
    place.moveTop(headingTop + Drawing()["Label6"].height() + 15);
  } else if (control == QLatin1String("Shape6")) {
    place = QRect(2, 2, area.width() - 4, area.height() - 4);
  } else if (control == QLatin1String("pbar")) {
    place.setWidth(area.width() - 35 - place.left());
  } else if (control == QLatin1String("Shape4")) {
    place.setWidth(PlaceIn(area, QStringLiteral("pbar")).width() + 22);
  } else if (control == QLatin1String("Shape3")) {
    place.setWidth(area.width() - 45);
  }
  return place;
}

}  // namespace kelvane::desktop
