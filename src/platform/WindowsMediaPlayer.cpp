#include "platform/WindowsMediaPlayer.h"

#include <QPaintEvent>
#include <QPainter>

#include "platform/Colours.h"
#include "platform/Container.h"

namespace kelvane {

WindowsMediaPlayer::WindowsMediaPlayer(Container* container, const QString& name)
    : Control(container, name) {
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void WindowsMediaPlayer::paintEvent(QPaintEvent* event) {
  QPainter(this).fillRect(event->rect(), QColor(kBlack));
}

}  // namespace kelvane
