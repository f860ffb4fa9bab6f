// The joiner receives what its tools print, and makes a section of every block with a duration,
// until the user has the sections transcoded: from then on the joiner ignores the text.
#include <QApplication>
#include <QTimer>
#include <memory>

#include "Input.h"
#include "Target.h"
#include "joiner/Form4.h"
#include "shared/SharedValues.h"

namespace kelvane::fuzz {
namespace {

// No section ever leaves a window, so a window with this many sections is replaced by a new one.
constexpr int kMostSections = 600;

enum Step : std::uint8_t { TranscodingBegins, StepCount };

class Joiner {
 public:
  Joiner() { form_.Load(); }

  bool IsFull() const { return sections_ >= kMostSections; }
  bool IsUsedUp() const { return IsFull() || transcoding_; }

  // If a duration is no time, the section counts as many seconds as the strip before has pixels.
  // This makes that strip's width 0.
  void ForgetWidth() {
    if (width_ != 0) Receive("Duration: 00:00:00.00");
  }

  void Receive(std::string_view block) {
    form_.objDOS_ReceiveOutputs(std::string(block));
    if (!transcoding_) {
      scratch_ = QString::fromUtf8(block);
      if (const std::optional<QString> found = DurationIn(scratch_.toStdString())) {
        duration_ = *found;
        TakeSection();
      }
    }
    AgreeOn("scratch box", form_.Find<TextBox>("Text1").Text(), scratch_);
    Agree(form_.findChild<PictureBox*>(StripName(sections_ + 1)) == nullptr, "a strip too many");
    AgreeOn("duration", VideoDuration, duration_);
    AgreeOn("rows", form_.Find<ListView>("ListView1").ListItems.Count(), sections_);
    AgreeOn("seconds in total", Total(TotalDurationSeconds),
            FormatGrouped(static_cast<double>(total_), 5));
    AgreeOn("time in total", Total(TotalRuntime), FormatTimeText(static_cast<double>(total_)));
  }

  // The list is empty, so no tool runs. A timer closes the message box at the end.
  void BeginTranscoding() {
    form_.Find<OptionButton>(QStringLiteral("Option1(%1)").arg(TranscodeAllSections)).Choose();
    QTimer::singleShot(0, [] {
      if (QWidget* message = QApplication::activeModalWidget()) message->close();
    });
    form_.Find<Label>(QStringLiteral("Label1(%1)").arg(JoinAllSections))
        .MouseUp({.Index = JoinAllSections, .Button = kLeftButton, .Shift = 0, .X = 0, .Y = 0});
    transcoding_ = true;
  }

 private:
  static QString StripName(int section) { return QStringLiteral("Picture2(%1)").arg(section + 1); }
  QString Total(int label) const {
    return form_.Find<Label>(QStringLiteral("Label3(%1)").arg(label)).Caption();
  }

  void TakeSection() {
    const int seconds = SecondsFromTimeText(duration_).value_or(width_);
    total_ += seconds;
    width_ = *ToInteger32(seconds / 10.0);
    ++sections_;
    const auto& strip = form_.Find<PictureBox>(StripName(sections_));
    AgreeOn("left of the strip", strip.Left(), static_cast<float>(left_));
    AgreeOn("width of the strip", strip.Width(), static_cast<float>(width_));
    AgreeOn("seconds in the row",
            form_.Find<ListView>("ListView1").ListItems(sections_).SubItems(2),
            QString::number(width_ * 10));
    left_ += width_;
  }

  Form4 form_;
  QString duration_ = VideoDuration;
  QString scratch_;
  std::int64_t total_ = 0;  // seconds
  std::int64_t left_ = 1;   // pixels, of the next strip
  int width_ = 0;           // pixels, of the last strip
  int sections_ = 0;
  bool transcoding_ = false;
};

void Run(std::string_view bytes) {
  static std::unique_ptr<Joiner> joiner;
  if (!joiner || joiner->IsUsedUp()) {
    joiner.reset();
    VideoDuration.clear();
    joiner = std::make_unique<Joiner>();
  }
  joiner->ForgetWidth();
  for (Input input(bytes); !input.AtEnd() && !joiner->IsFull();) {
    const auto [step, block] = NextEvent(input, StepCount);
    if (step == TranscodingBegins) {
      joiner->BeginTranscoding();
    } else {
      joiner->Receive(block);
    }
  }
  joiner->Receive({});
}

}  // namespace

const Target kJoiner = {"Joiner", Run};

}  // namespace kelvane::fuzz
