#include "desktop/driver/JoinerPlaces.h"

#include <QHash>
#include <stdexcept>

#include "desktop/driver/Places.h"

namespace kelvane::desktop {
namespace {

constexpr int kMargin = 20;
constexpr int kBar = 17;

QRect CommandBar(QSize area) {
  constexpr int kLeft = 30;
  constexpr int kHeight = 73;
  return {kLeft, area.height() - kHeight - kMargin, area.width() - kMargin - kLeft, kHeight};
}

// In the command bar, in twips, as drawn.
const QHash<QString, QRect>& InCommandBar() {
  static const QHash<QString, QRect> drawing = {
      {"Label1(0)", Drawn(120, 720, 1695, 255)},
      {"Label1(1)", Drawn(4560, 720, 2415, 255)},
      {"Label1(2)", Drawn(7320, 720, 1695, 255)},
      {"Option1(0)", Drawn(4560 + 240, 120, 1335, 255)},
      {"Option1(1)", Drawn(4560 + 240, 120 + 240, 2055, 255)},
      {"Label3(3)", Drawn(14160, 480, 975, 255)},
      {"Label3(4)", Drawn(14160, 720, 1095, 255)},
      {"Label3(6)", Drawn(16560, 720, 3135, 255)},
      {"Label3(7)", Drawn(120, 360, 1695, 255)},
      {"Label3(8)", Drawn(9360, 60, 990, 210)},
      {"Shape7", Drawn(9240, 405, 5895, 690)},
      {"Shape8", Drawn(9240, 45, 5895, 255)},
  };
  return drawing;
}

}  // namespace

QRect JoinerPlaceIn(QSize area, const QString& control) {
  const QRect bar = CommandBar(area);
  if (InCommandBar().contains(control)) {
    QRect place = InCommandBar()[control];
    if (control == QLatin1String("Label3(6)")) {
      constexpr int kGap = 10;
      place.moveLeft(bar.width() - place.width() - kGap);
    }
    return place.translated(bar.topLeft());
  }

  constexpr int kTop = 40;
  constexpr int kListWidth = 313;
  constexpr int kChartLeft = 30;
  constexpr int kRulerHeight = 25;
  const int listLeft = area.width() - kMargin - kListWidth;
  // Half a pixel counts as a whole one on the screen.
  const int listTop = (area.height() + 1) / 2;
  const QRect frame(kChartLeft, kTop, listLeft - 10 - kChartLeft, bar.top() - 10 - kTop);
  const QRect viewport(frame.topLeft(), frame.size() - QSize(kBar + 1, kBar + 1));
  const QHash<QString, QRect> places = {
      {"Picture3", bar},
      {"Shape2", {kMargin, 30, area.width() - 30, area.height() - 45}},
      {"ListView1", {listLeft, kTop, kListWidth, area.height() / 2 - kTop - 10}},
      {"List1", {listLeft, listTop, kListWidth, bar.top() - 5 - area.height() / 2}},
      {"Picture1(0)", frame},
      {"Picture1(1)", viewport},
      {"Picture5", {viewport.topLeft(), QSize(viewport.width(), kRulerHeight)}},
      {"Picture1(2)", viewport.adjusted(0, kRulerHeight, 0, 0)},
      {"HScroll1", {frame.left(), frame.bottom() + 1 - kBar, frame.width() - kBar, kBar}},
      {"VScroll1", {frame.right() + 1 - kBar, frame.top(), kBar, frame.height() - kBar}},
  };
  if (!places.contains(control)) {
    throw std::invalid_argument("no place known for " + control.toStdString());
  }
  return places[control];
}

}  // namespace kelvane::desktop
