// The joiner hears what its tools print, and makes a section of every block that tells a duration.
#include <memory>

#include "Input.h"
#include "PlainText.h"
#include "Target.h"
#include "joiner/Form4.h"
#include "shared/SharedValues.h"

namespace kelvane::fuzz {
namespace {

// The joiner's sections never go away. One that has taken in so many is replaced.
constexpr int kMostSections = 600;

enum Step : std::uint8_t { StepCount };  // nothing happens between two blocks

QString Text(std::string_view bytes) {
  return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

// Half of a pixel's ten seconds goes to the even number of pixels.
int PixelsOf(int seconds) {
  const int pixels = seconds / 10;
  const int rest = seconds % 10;
  return rest > 5 || (rest == 5 && pixels % 2 != 0) ? pixels + 1 : pixels;
}

class Joiner {
 public:
  Joiner() { form_.Load(); }

  bool Full() const { return sections_ >= kMostSections; }

  // Whatever an input before has left: the section before the next one's has no length.
  void ForgetLength() {
    if (pixels_ != 0) Hear("Duration: 00:00:00.00");
  }

  void Hear(std::string_view block) {
    form_.objDOS_ReceiveOutputs(std::string(block));
    const QString text = Text(block);
    AgreeOn("scratch box", Get<TextBox>("Text1").Text(), text);
    const std::string bytes = text.toStdString();
    if (const std::size_t word = Position(bytes, "duration:")) {
      duration_ = Text(TrimBlanks(Middle(Middle(bytes, word, 18), 10, 9)));
      TakeSection();
    }
    CheckTotals();
  }

 private:
  template <class Kind>
  Kind& Get(const char* name) const {
    return form_.Find<Kind>(QLatin1String(name));
  }
  template <class Kind>
  Kind& Get(const char* array, int index) const {
    return form_.Find<Kind>(QStringLiteral("%1(%2)").arg(QLatin1String(array)).arg(index));
  }

  void TakeSection() {
    // What is no time counts with the pixels of the section before.
    const int seconds = Seconds(duration_).value_or(pixels_);
    total_ += seconds;
    pixels_ = PixelsOf(seconds);
    ++sections_;
    CheckRow();
    CheckStrip();
    left_ += pixels_;
  }

  void CheckRow() const {
    const auto& list = Get<ListView>("ListView1");
    AgreeOn("number of rows", list.ListItems.Count(), sections_);
    const ListView::ListItem row = list.ListItems(sections_);
    AgreeOn("row", row.Text(), QString::number(sections_));
    AgreeOn("seconds in the row", row.SubItems(2), QString::number(pixels_ * 10));
  }

  void CheckStrip() const {
    const int index = sections_ + 1;
    const auto& strip = Get<PictureBox>("Picture2", index);
    AgreeOn("strip's left", strip.Left(), static_cast<float>(left_));
    AgreeOn("strip's top", strip.Top(), static_cast<float>(1 + 20 * (sections_ - 1)));
    AgreeOn("strip's width", strip.Width(), static_cast<float>(pixels_));
    AgreeOn("strip's height", strip.Height(), 17.0F);
    AgreeOn(
        "details", Get<Label>("Label2", index).Caption(),
        QStringLiteral("   Video Index: %1 Title:    ").arg(sections_, 2, 10, QLatin1Char('0')));
    Agree(form_.findChild<Line*>(QStringLiteral("Line1(%1)").arg(index)) != nullptr, "no rule");
    Agree(form_.findChild<PictureBox*>(QStringLiteral("Picture2(%1)").arg(index + 1)) == nullptr,
          "a strip too many");
  }

  void CheckTotals() const {
    AgreeOn("duration", VideoDuration, duration_);
    AgreeOn("number of rows", Get<ListView>("ListView1").ListItems.Count(), sections_);
    AgreeOn("total seconds", Get<Label>("Label3", TotalDurationSeconds).Caption(),
            Grouped(static_cast<double>(total_), 5, PlainSeparators()));
    AgreeOn("total run time", Get<Label>("Label3", TotalRuntime).Caption(), TimeText(total_));
  }

  Form4 form_;
  QString duration_ = VideoDuration;
  std::int64_t total_ = 0;
  std::int64_t left_ = 1;
  int pixels_ = 0;
  int sections_ = 0;
};

void Run(std::string_view bytes) {
  static std::unique_ptr<Joiner> joiner;
  if (!joiner || joiner->Full()) {
    joiner.reset();
    VideoDuration.clear();
    joiner = std::make_unique<Joiner>();
  }
  joiner->ForgetLength();
  for (Input input(bytes); !input.AtEnd() && !joiner->Full();) {
    joiner->Hear(Next(input, StepCount).block);
  }
  joiner->Hear({});
}

}  // namespace

const Target kJoiner = {"Joiner", Run};

}  // namespace kelvane::fuzz
