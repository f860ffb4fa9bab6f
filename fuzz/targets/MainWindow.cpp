// The main window receives what its tools print: first the size probe's answer, and then any text.
// The model keeps all text and reads it from the beginning each time.
#include <QRegularExpression>
#include <cmath>
#include <limits>
#include <memory>

#include "Input.h"
#include "Target.h"
#include "shared/SharedValues.h"
#include "workspace/Form1.h"

namespace kelvane::fuzz {
namespace {

enum Step : std::uint8_t { LoadBegins, SecondRunBegins, RegionIsMeasured, StepCount };

// The width or the height of the canvas, and what follows from it. Lengths are in pixels.
struct Side {
  QString caption;
  float size = 0;         // of the canvas: the last caption that was a number >= 0
  float barLength = 0;    // of the bars that lie along it
  float barPosition = 0;  // of the bar at its right or lower end
  int scrollMax = 0;      // of that bar, in the bar's own unit

  // Returns whether the canvas changes its size on the screen.
  bool Take(const QString& text) {
    if (text == caption) return false;
    caption = text;
    const float before = size;
    if (const auto number = SingleFromText(caption); number && *number >= 0) size = *number;
    constexpr float kWidest = 16777215;
    return std::min(size, kWidest) != std::min(before, kWidest);
  }
  void Reset() {
    constexpr float kBarThickness = 5;
    barLength = size;
    barPosition = size - kBarThickness;
    const double units = std::floor((double{size} * 2 + 15) / 30);
    if (units <= std::numeric_limits<std::int16_t>::max()) scrollMax = static_cast<int>(units);
  }
};

class Model {
 public:
  void Receive(std::string_view block) {
    if (!sizeIsKnown && TakeSize(QString::fromLatin1(block))) return;
    sizeIsKnown = true;
    shown += QString::fromUtf8(block);
    store_ += block;
    if (const auto found = DurationIn(store_)) duration = found;
  }

  bool sizeIsKnown = false;
  QString shown;
  std::optional<QString> duration;
  Side width{QStringLiteral("0,000"), 0, 0, -5, 0};
  Side height{QStringLiteral("0,000"), 0, 0, -5, 0};

 private:
  // Takes the size from a block. Returns whether nothing else is to be done with the block: whether
  // the text that is cut as the height begins with "=", as it does after a width of four digits. A
  // character of `block` is a byte.
  bool TakeSize(QString block) {
    static const QRegularExpression kBareLineFeed(QStringLiteral("(?<!\r)\n"));
    block.replace(kBareLineFeed, QStringLiteral("\r\n"));
    const qsizetype heightWord = block.indexOf(u"height=", 0, Qt::CaseInsensitive);
    if (block.contains(u"width=", Qt::CaseInsensitive)) {
      Take(width, block.left(std::max<qsizetype>(heightWord, 0)).mid(6));
    }
    if (heightWord < 0) return false;
    QString digits = Trim(block.mid(11)).mid(7);
    const bool usedUp = digits.startsWith(u'=');
    if (usedUp) digits.remove(u'=');
    Take(height, digits);
    return usedUp;
  }
  void Take(Side& side, const QString& digits) {
    if (!side.Take(FormatGroupedText(QString::fromUtf8(digits.toLatin1())))) return;
    width.Reset();
    height.Reset();
  }

  std::string store_;
};

class Window {
 public:
  Window() { form_.Load(); }

  // The window keeps its first duration for good.
  bool IsUsedUp() const { return model_.duration.has_value(); }

  void Begin() {
    ProbeDimensionsDone = true;
    // Ends a word, such as "duration:", of which the last input had the beginning.
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
      const auto [step, block] = NextEvent(input, StepCount);
      switch (step) {
        case LoadBegins:
          ProbeDimensionsDone = model_.sizeIsKnown = false;
          break;
        case SecondRunBegins:
          ProbeDimensionsDone = model_.sizeIsKnown = true;
          break;
        case RegionIsMeasured:
          Measure();
          break;
        default:
          Receive(block);
          break;
      }
    }
    Receive({});
    Measure();
  }

 private:
  template <class Kind>
  Kind& Get(const char* name) const {
    return form_.Find<Kind>(QLatin1String(name));
  }
  QString Caption(const char* name) const { return Get<Label>(name).Caption(); }

  void Receive(std::string_view block) {
    form_.objDOS_ReceiveOutputs(std::string(block));
    model_.Receive(block);
    AgreeOn("caption of the width", Caption("Label1(1)"), model_.width.caption);
    AgreeOn("caption of the height", Caption("Label1(3)"), model_.height.caption);
    Agree(ProbeDimensionsDone == model_.sizeIsKnown, "whether the size is known");
    AgreeOn("stored text", Get<TextBox>("Text2").Text(), model_.shown);
    AgreeOn("duration", VideoDuration, model_.duration.value_or(QString()));
    const Side& width = model_.width;
    const Side& height = model_.height;
    const auto& canvas = Get<PictureBox>("Picture1(2)");
    AgreeOn("canvas width", canvas.Width(), width.size);
    AgreeOn("canvas height", canvas.Height(), height.size);
    AgreeOn("left bar's height", Get<PictureBox>("Picture2(0)").Height(), height.barLength);
    AgreeOn("top bar's width", Get<PictureBox>("Picture2(1)").Width(), width.barLength);
    AgreeOn("horizontal range", int{Get<HScrollBar>("HScroll1").Max()}, width.scrollMax);
    AgreeOn("vertical range", int{Get<VScrollBar>("VScroll1").Max()}, height.scrollMax);
  }

  void Measure() {
    Get<Timer>("Timer2").Tick();
    const float right = model_.width.barPosition;
    const float base = model_.height.barPosition;
    const auto fits = [](float number) { return number < 2147483648.0F; };
    AgreeOn("left", Caption("Label1(5)"), FormatGrouped(0));
    AgreeOn("top", Caption("Label1(7)"), FormatGrouped(0));
    AgreeOn("width", Caption("Label1(9)"), FormatGrouped(fits(right) ? right : 0));
    AgreeOn("height", Caption("Label1(11)"), FormatGrouped(fits(base) ? base : 0));
    AgreeOn("right", Caption("Label1(15)"), FormatGrouped(right));
    AgreeOn("base", Caption("Label1(13)"), FormatGrouped(base));
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
  if (!window || window->IsUsedUp()) {
    window.reset();
    window = std::make_unique<Window>();
  }
  window->Begin();
  window->Run(Input(input));
}

}  // namespace

const Target kMainWindow = {"MainWindow", Run};

}  // namespace kelvane::fuzz
