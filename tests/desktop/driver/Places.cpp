#include "desktop/driver/Places.h"

#include <QFile>
#include <QRegularExpression>
#include <QStringList>
#include <cmath>
#include <stdexcept>

namespace kelvane::desktop {
namespace {

// The parts, divided by '|', of the line that begins with `name`.
QStringList PartsOf(const QString& form, const QString& name) {
  QFile file(QString(KELVANE_WINDOW_TEXTS "/%1.txt").arg(form));
  if (file.open(QIODevice::ReadOnly)) {
    while (!file.atEnd()) {
      const QString line = QString::fromUtf8(file.readLine()).trimmed();
      if (line.startsWith(name + ' ')) return line.split(" | ");
    }
  }
  throw std::invalid_argument("no " + name.toStdString() + " in " + file.fileName().toStdString());
}

QList<int> NumbersIn(const QString& text) {
  static const QRegularExpression number("-?\\d+");
  QList<int> numbers;
  for (const auto& match : number.globalMatch(text)) numbers << match.captured().toInt();
  return numbers;
}

// Returns, for the window size `now`, a coordinate that is `first` at `firstSize` and `second` at
// `secondSize`.
int At(int now, int firstSize, int first, int secondSize, int second) {
  if (first == second) return first;
  const double slope = static_cast<double>(second - first) / (secondSize - firstSize);
  return first + static_cast<int>(std::floor((now - firstSize) * slope));
}

}  // namespace

QRect PlaceIn(const QString& form, QSize area, const QString& control) {
  const QStringList sizes = PartsOf(form, form);
  const QStringList places = PartsOf(form, control);
  const QList<int> size1 = NumbersIn(sizes.value(1));
  const QList<int> size2 = NumbersIn(sizes.last());
  const QList<int> place1 = NumbersIn(places.value(1));
  const QList<int> place2 = NumbersIn(places.last());
  if (place1.size() != 4) throw std::invalid_argument(control.toStdString() + " is hidden");
  const auto at = [&](int axis, int number) {
    return At(axis == 0 ? area.width() : area.height(), size1[axis], place1[number], size2[axis],
              place2[number]);
  };
  return {at(0, 0), at(1, 1), at(0, 2), at(1, 3)};
}

QString CaptionIn(const QString& form, const QString& control) {
  return PartsOf(form, control).first().section('"', 1, 1);
}

}  // namespace kelvane::desktop
