// The main window hears what its tools print: as the size probe's answer first, and as text from
// then on. The model keeps all text as bytes and reads it from the beginning each time.
#include <cmath>
#include <limits>
#include <memory>

#include "Input.h"
#include "PlainText.h"
#include "Target.h"
#include "shared/SharedValues.h"
#include "workspace/Form1.h"

namespace kelvane::fuzz {
namespace {

// What may happen between two blocks.
enum Step : std::uint8_t { LoadBegins, SecondRunBegins, RegionIsMeasured, StepCount };

std::string WithWideBreaks(std::string_view block) {
  std::string wide;
  for (std::size_t i = 0; i < block.size(); ++i) {
    if (block[i] == '\n' && (i == 0 || block[i - 1] != '\r')) wide += '\r';
    wide += block[i];
  }
  return wide;
}

// One side of the canvas and what follows from it.
struct Side {
  QString caption;
  float size = 0;    // of the canvas; the number of the caption where it is one
  float length = 0;  // of the bars that lie along it
  float farBar = 0;  // where the bar at its end is
  int scrollMax = 0;

  // True if the canvas has another size on the screen.
  bool Take(const QString& text) {
    if (text == caption) return false;
    caption = text;
    const float before = size;
    const std::optional<double> number = Number(caption, PlainSeparators());
    if (number && *number >= 0 && *number <= double{std::numeric_limits<float>::max()}) {
      size = static_cast<float>(*number);
    }
    constexpr float kWidest = 16777215;
    return std::min(size, kWidest) != std::min(before, kWidest);
  }
  void Reset() {
    constexpr float kBarThickness = 5;
    length = size;
    farBar = size - kBarThickness;
    const double units = std::floor((double{size} * 2 + 15) / 30);
    if (units <= std::numeric_limits<std::int16_t>::max()) scrollMax = static_cast<int>(units);
  }
};

class Model {
 public:
  void Hear(std::string_view block) {
    if (!textComes) {
      if (TakeSize(WithWideBreaks(block))) return;
      textComes = true;
    }
    shown += QString::fromUtf8(block);
    store_ += block;
    if (const std::optional<QString> found = DurationIn(store_)) {
      heardDuration = true;
      duration = *found;
    }
  }

  bool textComes = false;
  QString shown;
  bool heardDuration = false;
  QString duration;
  const Side& width() const { return width_; }
  const Side& height() const { return height_; }

 private:
  // True where the block ends there.
  bool TakeSize(const std::string& block) {
    const std::size_t height = Position(block, "height=");
    if (Position(block, "width=") > 0) {
      Take(width_, Middle(block.substr(0, height == 0 ? 0 : height - 1), 7));
    }
    if (height == 0) return false;
    std::string digits(Middle(TrimBlanks(Middle(block, 12)), 8));
    const bool ends = !digits.empty() && digits.front() == '=';
    if (ends) std::erase(digits, '=');
    Take(height_, digits);
    return ends;
  }
  void Take(Side& side, std::string_view digits) {
    if (!side.Take(GroupedText(QString::fromUtf8(digits), PlainSeparators()))) return;
    width_.Reset();
    height_.Reset();
  }

  // No size is known, and the bars are on the edges of nothing.
  Side width_{QStringLiteral("0,000"), 0, 0, -5, 0};
  Side height_{QStringLiteral("0,000"), 0, 0, -5, 0};
  std::string store_;
};

class Window {
 public:
  Window() { form_.Load(); }

  // The first duration is never forgotten.
  bool CanBeginAnew() const { return !model_.heardDuration; }

  void Begin() {
    ProbeDimensionsDone = true;
    // No beginning of the word is left.
    form_.objDOS_ReceiveOutputs("........");
    Get<TextBox>("Text2").setText({});
    for (const char* size : {"Label1(1)", "Label1(3)"}) {
      Get<Label>(size).setCaption(QStringLiteral("1"));
      Get<Label>(size).setCaption(QStringLiteral("0,000"));
    }
    VideoDuration.clear();
    ProbeDimensionsDone = false;
    CropWidth = CropHeight = CropLeft = CropTop = width_ = height_ = 0;
    model_ = Model();
  }

  void Run(Input input) {
    while (!input.AtEnd()) {
      const auto [step, block] = Next(input, StepCount);
      switch (step) {
        case LoadBegins:
          ProbeDimensionsDone = model_.textComes = false;
          break;
        case SecondRunBegins:
          ProbeDimensionsDone = model_.textComes = true;
          break;
        case RegionIsMeasured:
          Measure();
          break;
        default:
          Hear(block);
          break;
      }
    }
    Hear({});
    Measure();
  }

 private:
  template <class Kind>
  Kind& Get(const char* name) const {
    return form_.Find<Kind>(QLatin1String(name));
  }
  QString Caption(const char* name) const { return Get<Label>(name).Caption(); }

  void Hear(std::string_view block) {
    form_.objDOS_ReceiveOutputs(std::string(block));
    model_.Hear(block);
    AgreeOn("caption of the width", Caption("Label1(1)"), model_.width().caption);
    AgreeOn("caption of the height", Caption("Label1(3)"), model_.height().caption);
    Agree(ProbeDimensionsDone == model_.textComes, "whether text comes next");
    AgreeOn("stored text", Get<TextBox>("Text2").Text(), model_.shown);
    AgreeOn("duration", VideoDuration, model_.duration);
    CheckCanvas();
  }

  void CheckCanvas() const {
    const Side& width = model_.width();
    const Side& height = model_.height();
    const auto& canvas = Get<PictureBox>("Picture1(2)");
    AgreeOn("canvas width", canvas.Width(), width.size);
    AgreeOn("canvas height", canvas.Height(), height.size);
    AgreeOn("left bar's height", Get<PictureBox>("Picture2(0)").Height(), height.length);
    AgreeOn("top bar's width", Get<PictureBox>("Picture2(1)").Width(), width.length);
    AgreeOn("horizontal range", int{Get<HScrollBar>("HScroll1").Max()}, width.scrollMax);
    AgreeOn("vertical range", int{Get<VScrollBar>("VScroll1").Max()}, height.scrollMax);
  }

  void Measure() {
    Get<Timer>("Timer2").Tick();
    const float right = model_.width().farBar;
    const float base = model_.height().farBar;
    const auto grouped = [](double number) { return Grouped(number, 4, PlainSeparators()); };
    const auto fits = [](float number) { return number < 2147483648.0F; };
    AgreeOn("left", Caption("Label1(5)"), grouped(0));
    AgreeOn("top", Caption("Label1(7)"), grouped(0));
    AgreeOn("width", Caption("Label1(9)"), grouped(fits(right) ? right : 0));
    AgreeOn("height", Caption("Label1(11)"), grouped(fits(base) ? base : 0));
    AgreeOn("right", Caption("Label1(15)"), grouped(right));
    AgreeOn("base", Caption("Label1(13)"), grouped(base));
    if (fits(right)) width_ = static_cast<std::int32_t>(right);
    if (fits(base)) height_ = static_cast<std::int32_t>(base);
    AgreeOn("crop width", CropWidth, width_);
    AgreeOn("crop height", CropHeight, height_);
    AgreeOn("crop left", CropLeft, 0);
    AgreeOn("crop top", CropTop, 0);
  }

  Form1 form_;
  Model model_;
  std::int32_t width_ = 0;
  std::int32_t height_ = 0;
};

void Run(std::string_view input) {
  static std::unique_ptr<Window> window;
  if (!window || !window->CanBeginAnew()) {
    window.reset();
    window = std::make_unique<Window>();
  }
  window->Begin();
  window->Run(Input(input));
}

}  // namespace

const Target kMainWindow = {"MainWindow", Run};

}  // namespace kelvane::fuzz
