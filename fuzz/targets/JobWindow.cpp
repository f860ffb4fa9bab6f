// The job window hears what the crop tool prints, and reads the time that has been done.
#include "Input.h"
#include "PlainText.h"
#include "Target.h"
#include "cropjob/Form2.h"
#include "cropjob/MainWindowStandIn.h"
#include "platform/Label.h"
#include "platform/ProgressBar.h"
#include "shared/SharedValues.h"

namespace kelvane::fuzz {
namespace {

constexpr int kDesignRange = 100;

// What may happen between two blocks.
enum Step : std::uint8_t { MainWindowIsMinimised, MainWindowComesBack, Cancel, StepCount };

struct Model {
  explicit Model(const QString& duration) {
    const std::optional<int> seconds = Seconds(duration);
    top = seconds.value_or(0) > 0 ? *seconds : kDesignRange;
  }

  // `text` is the block in characters.
  void Hear(const QString& text) {
    const QString time = TimeIn(text);
    if (time.isEmpty()) return;
    const QString percent = PercentText(value, top);
    if (const auto seconds = Seconds(time); seconds && *seconds <= top) value = *seconds;
    status =
        QLatin1String("Progress: ") + percent + QLatin1String("% Complete: Status: Cropping Video");
    title = minimised ? QLatin1String("Crop: ") + percent + QLatin1Char('%')
                      : QStringLiteral("Kelvane");
  }

  int top = 0;
  int value = 0;
  bool minimised = false;
  QString status;
  QString title;

 private:
  // Eight characters from the second one behind the first "time" on.
  static QString TimeIn(const QString& text) {
    for (qsizetype place = 0; place + 4 <= text.size(); ++place) {
      if (text.mid(place, 4).toLower() == u"time") return text.mid(place + 5, 8);
    }
    return {};
  }
};

// One for all inputs; every load of the job window begins anew in it.
testing::MainWindowStandIn& MainWindow() {
  static auto* const window = [] {
    auto* made = new testing::MainWindowStandIn;
    made->Load();
    return made;
  }();
  return *window;
}

Form2& JobWindow() {
  static auto* const window = new Form2(MainWindow());
  return *window;
}

void Begin(const QString& duration) {
  Form2& job = JobWindow();
  job.Unload();
  VideoDuration = duration;
  MainWindowMinimised = false;
  for (ProgressBar* bar : {&job.Find<ProgressBar>("pbar"), &MainWindow().JobProgress()}) {
    bar->setMax(kDesignRange);
    bar->setValue(0);
  }
  job.Find<Label>("Label1(2)").setCaption({});
  MainWindow().SetTitle({});
  job.Load();
}

void Compare(const Model& model) {
  const auto& bar = JobWindow().Find<ProgressBar>("pbar");
  const auto& mainBar = MainWindow().JobProgress();
  AgreeOn("range", bar.Max(), static_cast<float>(model.top));
  AgreeOn("the main window's range", mainBar.Max(), static_cast<float>(model.top));
  AgreeOn("value", bar.Value(), static_cast<float>(model.value));
  AgreeOn("the main window's value", mainBar.Value(), static_cast<float>(model.value));
  AgreeOn("status", JobWindow().Find<Label>("Label1(2)").Caption(), model.status);
  AgreeOn("title", MainWindow().Caption(), model.title);
}

void Hear(std::string_view block, Model& model) {
  JobWindow().objDOS_ReceiveOutputs(std::string(block));
  model.Hear(QString::fromUtf8(block));
  Compare(model);
}

void Run(std::string_view bytes) {
  constexpr std::size_t kDurationLength = 8;
  Input input(bytes);
  Begin(QString::fromUtf8(input.Take(kDurationLength)));
  Model model(VideoDuration);
  Compare(model);
  while (!input.AtEnd()) {
    const auto [step, block] = Next(input, StepCount);
    switch (step) {
      case MainWindowIsMinimised:
      case MainWindowComesBack:
        MainWindowMinimised = model.minimised = step == MainWindowIsMinimised;
        break;
      case Cancel:
        JobWindow().Unload();
        break;
      default:
        Hear(block, model);
        break;
    }
  }
  Hear({}, model);
}

}  // namespace

const Target kJobWindow = {"JobWindow", Run};

}  // namespace kelvane::fuzz
