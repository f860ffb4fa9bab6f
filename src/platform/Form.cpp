#include "platform/Form.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QMenuBar>
#include <QScopedValueRollback>
#include <QTimerEvent>
#include <QWindow>
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/Timer.h"
#include "platform/WaylandOutputs.h"
#include "platform/WindowManager.h"

namespace kelvane {
namespace {

constexpr int kGeometrySettleTime = 200;  // ms

int PixelsOfTwips(float twips) {
  constexpr float kWidest = 32767;  // limit of window systems
  return static_cast<int>(std::lround(std::min(twips / kTwipsPerPixel, kWidest)));
}

// Returns `twips`, the size as assigned, if it still corresponds to the present size, `pixels`;
// otherwise the present size in twips.
float AsAssigned(float twips, int pixels) {
  return PixelsOfTwips(twips) == pixels ? twips : static_cast<float>(pixels) * kTwipsPerPixel;
}

}  // namespace

Form::Form(const FormDesign& design, std::span<const ControlDesign> controls,
           std::span<const MenuDesign> menus)
    : area_(new ContentArea(this, design.scale)),
      border_(design.border),
      least_(PixelsOfTwips(design.leastWidth), PixelsOfTwips(design.leastHeight)) {
  setObjectName(QLatin1String(design.name));
  setCaption(QLatin1String(design.caption));
  if (border_ == BorderStyle::kFixedDialog) {
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                   Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint |
                   Qt::MSWindowsFixedSizeDialogHint);
  }
  setAcceptDrops(true);
  BuildMenus(menus);
  BuildControls(design, controls);
  area_->MouseMove = [this](const MouseEvent& event) { Form_MouseMove(event); };

  const int width = PixelsOfTwips(design.clientWidth);
  SetSize(QSize(width, PixelsOfTwips(design.clientHeight) + BarHeight(width)));
  // Otherwise Qt would give the focus to the first control that takes it, without a focus frame.
  setFocus();
  LayOutArea();
}

void Form::Load() {
  if (Loaded()) return;
  SetLoaded();
  const HandlerScope scope(this);
  Form_Load();
}

void Form::Show(Form* owner) {
  // The minimum must be set before the compositor gives the first size. Qt before 6.8 gets none:
  // Qt 6.4 would enforce it even against the compositor, which would then end the program.
  constexpr bool kQtObeysCompositors = QT_VERSION >= QT_VERSION_CHECK(6, 8, 0);
  if (kQtObeysCompositors && RunsOnWayland()) {
    setMinimumSize(least_.expandedTo(minimumSize()));
  }
  if (owner != nullptr) {
    winId();  // makes the window handles
    owner->winId();
    windowHandle()->setTransientParent(owner->windowHandle());
  }
  show();
  raise();
  activateWindow();
}

void Form::Unload() {
  if (!Loaded() || unloading_) return;
  const HandlerScope scope(this);
  unloading_ = true;
  Form_QueryUnload();
  Form_Unload();
  unloading_ = false;
  SetUnloaded();
  for (Timer* timer : findChildren<Timer*>()) timer->setEnabled(false);
  hide();
}

float Form::Width() const { return AsAssigned(width_, width()); }

float Form::Height() const { return AsAssigned(height_, height()); }

void Form::setWidth(float width) {
  if (!std::isfinite(width) || width < 0 || !ChoosesItsSize()) return;
  width_ = width;
  ResizeTo(QSize(PixelsOfTwips(width), height()));
}

void Form::setHeight(float height) {
  if (!std::isfinite(height) || height < 0 || !ChoosesItsSize()) return;
  height_ = height;
  ResizeTo(QSize(width(), PixelsOfTwips(height)));
}

float Form::ScaleWidth() const { return area_->ScaleWidth(); }

float Form::ScaleHeight() const { return area_->ScaleHeight(); }

WindowState Form::State() const {
  if (isMinimized()) return WindowState::kMinimised;
  return isMaximized() ? WindowState::kMaximised : WindowState::kNormal;
}

// Returns whether the window may set its own size. If a window that is maximised, full screen,
// tiled or being resized exceeds the size that the compositor gave it, the compositor ends the
// program. Qt reports the first two of these states late, and the other two never.
bool Form::ChoosesItsSize() const { return !takesGivenSize_ && !isMaximized() && !isFullScreen(); }

void Form::SetSize(QSize size) {
  if (border_ == BorderStyle::kFixedDialog) {
    setFixedSize(size);
  } else {
    resize(size);
  }
}

void Form::ResizeTo(QSize size) {
  const QSize before = this->size();
  SetSize(size);
  if (isVisible() || this->size() == before) return;
  // Qt sends no resize event to a window that isn't shown.
  LayOutArea();
  RaiseResize();
}

// Makes timerEvent check the window's size soon after X has reported a geometry: a window manager
// may refuse a size by confirming the present one, and Qt sends no event then.
bool Form::nativeEvent(const QByteArray& eventType, void* message, qintptr* result) {
  if (IsGeometryNotice(eventType, message)) {
    dragged_ = dragged_ || PointerButtonHeld();
    geometrySettling_.start(kGeometrySettleTime, this);
  }
  return HandlerOwner::nativeEvent(eventType, message, result);
}

void Form::timerEvent(QTimerEvent* event) {
  if (event->timerId() != geometrySettling_.timerId()) {
    HandlerOwner::timerEvent(event);
    return;
  }
  const bool refused = isVisible() && windowHandle()->size() != size();
  if (refused && PointerButtonHeld()) return;
  geometrySettling_.stop();
  const bool dragged = std::exchange(dragged_, false);
  if (!refused) return;
  // Some window managers refuse every size while the user drags the window's edge: the size is
  // requested again after the drag.
  if (dragged && ChoosesItsSize()) {
    windowHandle()->resize(size());
  } else {
    TakeGivenSize();
  }
}

// Gives the widget the size that the window has on the screen, without requesting this size.
void Form::TakeGivenSize() {
  const QScopedValueRollback<bool> taking(takesGivenSize_, true);
  QResizeEvent given(windowHandle()->size(), size());
  QCoreApplication::sendEvent(windowHandle(), &given);
}

// Returns the height of the menu bar in a window of that width: 0 if all its titles are hidden.
int Form::BarHeight(int width) const {
  if (menuBar_ == nullptr) return 0;
  const bool anyVisible = std::ranges::any_of(menuBar_->actions(), &QAction::isVisible);
  return anyVisible ? menuBar_->heightForWidth(width) : 0;
}

void Form::LayOutArea() {
  const int barHeight = BarHeight(width());
  if (menuBar_ != nullptr) menuBar_->setGeometry(0, 0, width(), barHeight);
  area_->setGeometry(0, barHeight, width(), std::max(0, height() - barHeight));
}

void Form::RaiseResize() {
  if (!Loaded()) return;
  const HandlerScope scope(this);
  Form_Resize();
}

void Form::resizeEvent(QResizeEvent* event) {
  HandlerOwner::resizeEvent(event);
  LayOutArea();
  const bool given = event->spontaneous() && RunsOnWayland();
  const QScopedValueRollback<bool> taking(takesGivenSize_, takesGivenSize_ || given);
  RaiseResize();
}

void Form::changeEvent(QEvent* event) {
  HandlerOwner::changeEvent(event);
  if (event->type() != QEvent::WindowStateChange || isMinimized() == minimised_) return;
  minimised_ = isMinimized();
  RaiseResize();
}

void Form::closeEvent(QCloseEvent* event) {
  Unload();
  event->accept();
}

}  // namespace kelvane
