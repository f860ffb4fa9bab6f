// The joiner hears what its tools print, and makes a section of every block that tells a duration,
// until it transcodes: from then on it hears nothing.
#include <QApplication>
#include <QTimer>
#include <memory>

#include "Input.h"
#include "PlainText.h"
#include "Target.h"
#include "joiner/Form4.h"
#include "shared/SharedValues.h"

namespace kelvane::fuzz {
namespace {

// The joiner's sections never go away. One that has taken in so many is replaced, and so is one
// that has transcoded.
constexpr int kMostSections = 600;

// What may happen between two blocks.
enum Step : std::uint8_t { TranscodingBegins, StepCount };

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
  bool Transcoding() const { return transcoding_; }

  // Whatever an input before has left: the section before the next one's has no length.
  void ForgetLength() {
    if (pixels_ != 0) Hear("Duration: 00:00:00.00");
  }

  void Hear(std::string_view block) {
    form_.objDOS_ReceiveOutputs(std::string(block));
    if (!transcoding_) Take(QString::fromUtf8(block));
    AgreeOn("scratch box", Get<TextBox>("Text1").Text(), scratch_);
    Agree(!HasStrip(sections_ + 2), "a strip too many");
    CheckTotals();
  }

  // The join of an empty list runs no tool. Its message is closed once it is up.
  void BeginTranscoding() {
    Get<OptionButton>("Option1", TranscodeAllSections).Choose();
    QTimer::singleShot(0, [] {
      if (QWidget* message = QApplication::activeModalWidget()) message->close();
    });
    Get<Label>("Label1", JoinAllSections)
        .MouseUp({.Index = JoinAllSections, .Button = kLeftButton, .Shift = 0, .X = 0, .Y = 0});
    AgreeOn("process", Get<Label>("Label3", ProcessLine).Caption(),
            QStringLiteral("Process: Video Created."));
    transcoding_ = true;
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

  bool HasStrip(int index) const {
    return form_.findChild<PictureBox*>(QStringLiteral("Picture2(%1)").arg(index)) != nullptr;
  }

  void Take(const QString& text) {
    scratch_ = text;
    if (const std::optional<QString> found = DurationIn(text.toStdString())) {
      duration_ = *found;
      TakeSection();
    }
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
  QString scratch_;
  std::int64_t total_ = 0;
  std::int64_t left_ = 1;
  int pixels_ = 0;
  int sections_ = 0;
  bool transcoding_ = false;
};

void Run(std::string_view bytes) {
  static std::unique_ptr<Joiner> joiner;
  if (!joiner || joiner->Full() || joiner->Transcoding()) {
    joiner.reset();
    VideoDuration.clear();
    joiner = std::make_unique<Joiner>();
  }
  joiner->ForgetLength();
  for (Input input(bytes); !input.AtEnd() && !joiner->Full();) {
    const auto [step, block] = Next(input, StepCount);
    if (step == TranscodingBegins) {
      joiner->BeginTranscoding();
    } else {
      joiner->Hear(block);
    }
  }
  joiner->Hear({});
}

}  // namespace

const Target kJoiner = {"Joiner", Run};

}  // namespace kelvane::fuzz
