#include "desktop/driver/StabiliserWindow.h"

#include "desktop/driver/Windows.h"

namespace kelvane::desktop {

void StabiliserWindow::Click(const char* command) { screen_.Click(Place(command).center()); }

bool StabiliserWindow::ChooseFile(const char* command, const QString& path) {
  const QList<WindowId> known = screen_.Windows();
  Click(command);
  const WindowId dialog = screen_.AwaitNew(known);
  return dialog != 0 && TypeFileName(screen_, dialog, path);
}

bool StabiliserWindow::ConfirmMessage(std::chrono::milliseconds patience) {
  const WindowId box = screen_.Await("Kelvane", patience);
  if (box == 0 || !WaitFor([&] { return screen_.Active(box); })) return false;
  screen_.PressKey(kReturn);
  return WaitFor([&] { return !screen_.Exists(box); });
}

bool StabiliserWindow::AwaitCommand(const char* command, const QString& caption,
                                    std::chrono::milliseconds patience) {
  screen_.MovePointer(BareGround());
  // Leaves out the border. The first command has none at its top and base: the one around it
  // belongs to a taller label.
  const int border = QLatin1String(command) == "Label6(0)" ? 0 : 1;
  const QRect inside = Place(command).adjusted(1, border, -1, -border);
  return WaitFor(
      [&] { return ShowsCaption(screen_.Picture(inside), caption, kDark, Justify::kCentre); },
      patience);
}

bool StabiliserWindow::AwaitColour(QRgb colour) {
  constexpr int kTolerance = 24;
  return WaitFor([&] { return IsNear(screen_.Pixel(Place("wmp").center()), colour, kTolerance); });
}

int StabiliserWindow::Progress(const char* bar) const {
  const QRect place = Place(bar);
  const QImage picture = screen_.Picture(place);
  return CountOf(picture, QRect(0, place.height() / 2, place.width(), 1), kGrey);
}

}  // namespace kelvane::desktop
