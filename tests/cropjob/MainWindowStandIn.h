#pragma once

#include <QIcon>
#include <QPixmap>
#include <QString>
#include <array>
#include <functional>

#include "cropjob/MainWindow.h"
#include "platform/Form.h"
#include "platform/ProgressBar.h"

namespace kelvane::testing {

constexpr FormDesign kStandInDesign = {.name = "StandIn",
                                       .caption = "Kelvane",
                                       .clientWidth = 3000,
                                       .clientHeight = 1500,
                                       .backColor = 0,
                                       .labelColor = 0,
                                       .scale = ScaleMode::kTwips};
constexpr auto kStandInControls = std::to_array<ControlDesign>(
    {{.name = "pbar", .controlClass = ControlClass::kProgressBar, .place = {0, 0, 1500, 180}}});

// A window that does what the job window needs of the main window.
class MainWindowStandIn : public Form, public MainWindow {
 public:
  MainWindowStandIn() : Form(kStandInDesign, kStandInControls) {
    QPixmap picture(16, 16);
    picture.fill(Qt::red);
    icon_.addPixmap(picture);
  }

  ProgressBar& JobProgress() override { return Find<ProgressBar>(QStringLiteral("pbar")); }
  void SetTitle(const QString& title) override {
    setCaption(title);
    if (TitleSet) TitleSet();
  }
  QString ShownVideo() const override {
    if (VideoAsked) VideoAsked();
    return video;
  }
  QIcon Icon() const override { return icon_; }

  QString video;
  std::function<void()> TitleSet;
  std::function<void()> VideoAsked;

 private:
  QIcon icon_;
};

}  // namespace kelvane::testing
