// The commands that start tools, and what becomes of the tools.
#include <QFileInfo>
#include <QPointer>
#include <QScopedValueRollback>
#include <algorithm>
#include <cmath>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

#include "media/DOSOutputs.h"
#include "media/Module1.h"
#include "media/ProbeReadings.h"
#include "platform/App.h"
#include "platform/MsgBox.h"
#include "shared/TextHelpers.h"
#include "stabiliser/NewFile.h"
#include "stabiliser/Stabiliser.h"

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

constexpr const char* kTransformsFile = "transforms.trf";
constexpr const char* kTestFile = "test.mp4";

// Returns whether the file of the motions is cut off: FFmpeg 5.1's filter ignores a full disk, and
// its text file then ends in the middle of a line. A missing or empty file counts as cut off; a
// binary file, as newer filters write, never does.
bool IsCutOff(const std::string& path) {
  constexpr std::string_view kText = "VID.STAB";
  std::ifstream file(path, std::ios::binary);
  std::string begin(kText.size(), '\0');
  file.read(begin.data(), static_cast<std::streamsize>(begin.size()));
  if (file && begin != kText) return false;
  file.clear();
  return !file.seekg(-1, std::ios::end) || file.get() != '\n';
}

std::string Tools() { return ToolsFolder(App::Path()); }

}  // namespace

QString Paragraphs(const QString& first, const QString& second) {
  return second.isEmpty() ? first : first + u"\n\n"_s + second;
}

void Stabiliser::RunCancellable(Label& caption, const std::function<QString()>& action) {
  if (cancelLabel_ != nullptr) return;
  cancelLabel_ = &caption;
  cancelled_ = false;
  succeeded_ = false;
  const QString designed = caption.Caption();
  caption.setCaption(u"Cancel"_s);
  const QPointer<QWidget> focused = focusWidget();
  UpdateCommands();
  // Qt moves the focus from a control that is disabled to the next one. The window takes it
  // instead.
  if (focusWidget() != focused) setFocus();
  QString message;
  try {
    message = action();
  } catch (const std::exception& error) {
    succeeded_ = false;
    message = FromNarrow(error.what());
  }
  longJob_.reset();
  cancelLabel_ = nullptr;
  caption.setCaption(designed);
  UpdateCommands();
  // With this reason the control shows its focus frame again if it showed one before.
  if (focused != nullptr && focusWidget() == this) focused->setFocus(Qt::ActiveWindowFocusReason);
  ClearProgress();
  if (Loaded() && !message.isEmpty()) MsgBox(message, succeeded_ ? kOKOnly : kExclamation);
}

// Enables what starts tools or takes paths; while a tool runs, only the caption that cancels it.
void Stabiliser::UpdateCommands() {
  ClearHighlights();
  const bool idle = cancelLabel_ == nullptr;
  for (Label* caption : {&Label6(0), &Label12(Apply), &Label12(TestSettings), &Label12(LoadOther),
                         &Label14(ExtractRegion), &Label14(ViewRegion)}) {
    caption->setEnabled(idle || caption == cancelLabel_);
  }
  Text1.setEnabled(idle);
  Text5.setEnabled(idle);
}

void Stabiliser::Cancel() {
  cancelled_ = true;
  if (tool_ != nullptr) tool_->End();
}

bool Stabiliser::RunTool(const std::string& commandLine,
                         const std::function<void(const std::string& line)>& take) {
  if (cancelled_) return false;
  DOSOutputs tool;
  tool.Waiting = DoEvents;
  tool.CutBlocks(EndOfLine);
  if (take) tool.ReceiveOutputs = IgnoringExceptions(take);
  const QScopedValueRollback<DOSOutputs*> current(tool_, &tool);
  printed_ = tool.ExecuteCommand(commandLine);
  toolPath_ = commandLine.substr(0, commandLine.find(' '));
  started_ = tool.ExitStatus().has_value();
  exitStatus_ = tool.ExitStatus().value_or(-1);
  return !cancelled_ && exitStatus_ == 0;
}

bool Stabiliser::RunLong(const std::string& commandLine, const Progress& progress) {
  if (!longJob_) longJob_.emplace(progress.purpose);
  processedSeconds_ = 0;
  return RunTool(commandLine, [&](const std::string& line) {
    const std::optional<double> seconds = ReadProgress(line);
    if (!seconds) return;
    processedSeconds_ = *seconds;
    ShowProgress(progress, *seconds);
    longJob_->SetProgress(*seconds / progress.seconds);
  });
}

QString Stabiliser::Failure(const QString& sentence) const {
  if (cancelled_) return {};
  if (!started_) {
    return Paragraphs(sentence, u"This tool can't be run: %1"_s.arg(FromNarrow(toolPath_)));
  }
  if (printed_.find("No such filter: 'vidstab") != std::string::npos) {
    return Paragraphs(sentence,
                      u"This ffmpeg lacks the filters vidstabdetect and vidstabtransform."_s);
  }
  const std::string complaint = LastComplaint(printed_);
  if (complaint.empty() && exitStatus_ < 0) {
    return Paragraphs(sentence, u"The tool was ended by signal %1."_s.arg(-exitStatus_));
  }
  return Paragraphs(sentence, FromNarrow(complaint));
}

void Stabiliser::ShowProgress(const Progress& progress, double seconds) {
  constexpr double kWhole = 100;
  const double percent = std::clamp(seconds / progress.seconds * kWhole, 0.0, kWhole);
  progress.label.setCaption(progress.prefix + FormatTwoDecimals(percent) + u'%');
  progress.label.repaint();  // at once; the bar does so by itself
  progress.bar.setValue(static_cast<float>(percent));
}

Stabiliser::Progress Stabiliser::ProgressOf(Pass pass, double seconds) const {
  return {"Stabilising a video", pbar(pass), Label9(2 + pass), u"Progress "_s, seconds};
}

Stabiliser::Progress Stabiliser::ProgressOfExtraction(double seconds) const {
  return {"Extracting a section of a video", pbar(2), Label15(1), QString(), seconds};
}

void Stabiliser::ClearProgress() {
  for (const Progress& each :
       {ProgressOf(Detecting, 1), ProgressOf(Transforming, 1), ProgressOfExtraction(1)}) {
    ShowProgress(each, 0);
  }
}

// The sound may go on after the last picture.
double Stabiliser::EndOfVideo() const {
  const VideoFacts& facts = source_->facts;
  if (facts.videoDuration <= 0) return facts.duration;
  return std::min(facts.videoStart + facts.videoDuration, facts.duration);
}

std::optional<Span> Stabiliser::MarkedSpan() const {
  const auto complain = [](const QString& sentence) { MsgBox(sentence, kExclamation); };
  if (!source_) {
    complain(u"Select a video first."_s);
  } else if (marks_[EndNeedle] <= marks_[StartNeedle]) {
    complain(u"The section ends before it starts. Move the red needle after the green one."_s);
  } else if (marks_[StartNeedle] >= EndOfVideo()) {
    complain(u"The section starts after the end of the video. Move the green needle."_s);
  } else {
    return Span{marks_[StartNeedle], marks_[EndNeedle] - marks_[StartNeedle]};
  }
  return std::nullopt;
}

void Stabiliser::ViewSection() {
  const std::optional<Span> span = MarkedSpan();
  if (!span) return;
  RunCancellable(Label14(ViewRegion), [&] {
    // The player's exit status is 0 even if it can't open the file.
    if (!QFileInfo(source_->path).isReadable()) {
      return u"The section can't be shown, since this file can't be read:\n%1"_s.arg(source_->path);
    }
    // By itself the player would end only after it has read the rest of the file.
    constexpr double kLastPicture = 0.3;  // seconds for which it is seen
    const double end = source_->facts.startTime + span->start + span->length + kLastPicture;
    bool played = false;
    const std::string line = ViewLine(Tools(), source_->shortPath, source_->facts, *span);
    const bool ended = RunTool(line, [&](const std::string& printed) {
      if (ReadPlayedTime(printed) >= end) played = true;
      if (played) tool_->End();
    });
    return played || ended ? QString() : Failure(u"The section can't be shown."_s);
  });
}

void Stabiliser::ExtractSection() {
  const std::optional<Span> span = MarkedSpan();
  if (!span) return;
  const QString path = AskForOutput(u"Save Selected Region As"_s, source_->path);
  if (path.isEmpty()) return;
  const std::array<double, 2> marks = marks_;
  RunCancellable(Label14(ExtractRegion), [&] {
    NewFile output(ToNarrow(path));
    const Progress progress = ProgressOfExtraction(span->length);
    if (!RunLong(ExtractLine(Tools(), source_->shortPath, source_->facts, *span, output.ToolPath()),
                 progress)) {
      return Failure(u"The section can't be extracted."_s);
    }
    const double rest = EndOfVideo() - span->start;
    const QString remark =
        CheckOutput(output.ToolPath(), source_->facts, std::min(span->length, rest));
    if (!succeeded_) return remark;
    output.Keep();
    // A loaded video that is overwritten is read again; if that fails, its old facts stay.
    if (otherVideo_ && IsSameFile(otherVideo_->path, path)) {
      (void)ReadVideo(otherVideo_->path, otherVideo_);
    }
    if (marks == marks_) sample_ = path;
    return Paragraphs(u"The selected region has been saved as\n%1"_s.arg(path), remark);
  });
}

// Tests the options on the sample or, if there is none, on the marked section.
void Stabiliser::TestOptions() {
  std::optional<Span> span;
  if (!QFileInfo::exists(sample_)) sample_.clear();
  if (sample_.isEmpty()) {
    span = MarkedSpan();
    if (!span) return;
  }
  RunCancellable(Label12(TestSettings), [&] {
    std::optional<Video> video = source_;
    if (!span) {
      video.reset();
      const QString reason = ReadVideo(sample_, video);
      if (!video) return reason;
    }
    const std::string output = PrivateWorkFile(kTestFile);
    if (wmp.URL() == FromNarrow(output)) wmp.OpenPaused(source_->path);
    const QString message = RunBothPasses({*video, span, TakeOptions(), output});
    if (succeeded_ && Loaded()) {
      wmp.setURL(FromNarrow(output));
    } else {
      std::error_code ignored;
      std::filesystem::remove(output, ignored);
    }
    return message;
  });
}

void Stabiliser::ApplyOptions() {
  if (VideoToStabilise() == nullptr) {
    MsgBox(u"Load the video that is to be stabilised first."_s, kExclamation);
    return;
  }
  const Video video = *VideoToStabilise();
  const QString path = AskForOutput(u"Save Stabilised Video As"_s, video.path);
  if (path.isEmpty()) return;
  bool replacesSource = false;
  RunCancellable(Label12(Apply), [&] {
    NewFile output(ToNarrow(path));
    const QString message = RunBothPasses({video, std::nullopt, TakeOptions(), output.ToolPath()});
    if (!succeeded_) return message;
    output.Keep();
    if (IsSameFile(sample_, path)) sample_.clear();
    replacesSource = source_ && IsSameFile(source_->path, path);
    return Paragraphs(u"The stabilised video has been saved as\n%1"_s.arg(path), message);
  });
  // If another video was stabilised, the new file may have replaced that of the time line. If the
  // new file can't be read, the facts of the replaced one stay.
  if (replacesSource && Loaded()) SetSource(source_->path);
}

QString Stabiliser::RunBothPasses(const Stabilising& run) {
  const std::string transforms = PrivateWorkFile(kTransformsFile);
  if (transforms.empty()) return u"There is no folder for the motions of the pictures."_s;
  const QString lack = LackOfRoom(run, transforms);
  if (!lack.isEmpty() && MsgBox(lack, kOKCancel | kExclamation) != MsgBoxResult::kOK) return {};
  const QString message = DetectAndTransform(run, transforms);
  std::error_code ignored;
  std::filesystem::remove(transforms, ignored);
  return message;
}

QString Stabiliser::DetectAndTransform(const Stabilising& run, const std::string& transforms) {
  const QString sentence = u"The video can't be stabilised."_s;
  const std::string tools = Tools();
  const VideoFacts& facts = run.video.facts;
  const double seconds = run.span ? run.span->length : facts.duration;
  const Progress first = ProgressOf(Detecting, seconds);
  const Progress second = ProgressOf(Transforming, seconds);
  if (!RunLong(DetectLine(tools, run.video.shortPath, facts, run.span, run.options, transforms),
               first)) {
    return Failure(sentence);
  }
  // For a part of a video in which a tool may seek too far, the line has -copyts. The times that
  // ffmpeg reports then count from the first one that it reports, so they don't tell the length.
  const double processed = run.span && facts.seeksLate ? 0 : processedSeconds_;
  if (IsCutOff(transforms)) {
    return Paragraphs(sentence, u"The disk of the folder %1 is full."_s.arg(
                                    FromNarrow(std::filesystem::path(transforms).parent_path())));
  }
  ShowProgress(first, seconds);
  if (!RunLong(TransformLine(tools, run.video.shortPath, facts, run.span, run.options, transforms,
                             run.output),
               second)) {
    return Failure(sentence);
  }
  return CheckOutput(run.output, facts, processed);
}

QString Stabiliser::CheckOutput(const std::string& output, const VideoFacts& source,
                                double seconds) {
  constexpr double kTolerance = 0.25;  // seconds
  constexpr double kPictures = 3;      // that a tool may write after its last report
  const bool isRead = RunTool(VideoProbeLine(Tools(), output));
  const VideoFacts facts = ReadVideoFacts(printed_);
  if (!isRead || !facts.HasVideo()) {
    return Failure(u"The tool has written no video that can be read."_s);
  }
  succeeded_ = true;
  const double length = facts.videoDuration > 0 ? facts.videoDuration : facts.duration;
  // A length may include the time before the first picture.
  const double tolerance =
      source.videoStart +
      (facts.rate > 0 ? std::max(kTolerance, kPictures / facts.rate) : kTolerance);
  if (seconds <= 0 || length <= 0 || std::abs(length - seconds) <= tolerance) return {};
  return u"Its video is %1 seconds long instead of %2."_s.arg(FormatTwoDecimals(length),
                                                              FormatTwoDecimals(seconds));
}

QString Stabiliser::LackOfRoom(const Stabilising& run, const std::string& transforms) {
  // The most bytes that the first pass writes for a pixel, for each unit of accuracy. If there is
  // little detail, it writes a third of that.
  constexpr double kBytesPerPixel = 1600.0 / (1280 * 720);
  constexpr double kUsualRate = 30;
  constexpr double kMegabyte = 1e6;
  const VideoFacts& facts = run.video.facts;
  const double pictures =
      (run.span ? run.span->length : facts.duration) * (facts.rate > 0 ? facts.rate : kUsualRate);
  const double needed =
      pictures * facts.width * facts.height * kBytesPerPixel * run.options.accuracy;
  const std::filesystem::path folder = std::filesystem::path(transforms).parent_path();
  std::error_code unknown;
  const std::filesystem::space_info space = std::filesystem::space(folder, unknown);
  if (unknown || static_cast<double>(space.available) >= needed) return {};
  return u"The first pass may need up to %1 MB in the folder %2, which has less. Go on?"_s
      .arg(std::ceil(needed / kMegabyte), 0, 'f', 0)
      .arg(FromNarrow(folder));
}

StabiliserOptions Stabiliser::TakeOptions() {
  std::array<QString, 7> readOuts;
  for (int option = StepSize; option <= UnSharpLY; ++option) {
    readOuts.at(static_cast<std::size_t>(option)) = Label2(OptionReadOut(option)).Caption();
  }
  const StabiliserOptions options = StabiliserOptions::FromReadOuts(readOuts);
  for (int option = StepSize; option <= UnSharpLY; ++option) {
    const auto at = static_cast<std::size_t>(option);
    Label2(OptionReadOut(option))
        .setCaption(FormatDigits(options.Values().at(at),
                                 static_cast<int>(designedReadOuts_.at(at).size())));
  }
  return options;
}

void Stabiliser::ResetOptions() {
  for (int option = StepSize; option <= UnSharpLY; ++option) {
    const auto at = static_cast<std::size_t>(option);
    Label1(option).setLeft(designedThumbs_.at(at));
    Shape2(option).Outline(Label1(option), 1);
    Label2(OptionReadOut(option)).setCaption(designedReadOuts_.at(at));
  }
}

}  // namespace kelvane
