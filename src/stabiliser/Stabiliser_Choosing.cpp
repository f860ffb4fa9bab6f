// Which videos are worked on, and where the results go.
#include <QApplication>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTimer>
#include <filesystem>
#include <system_error>
#include <utility>

#include "media/Module1.h"
#include "media/OutputRemark.h"
#include "platform/App.h"
#include "platform/DialogLoop.h"
#include "platform/MsgBox.h"
#include "shared/TextHelpers.h"
#include "stabiliser/Stabiliser.h"

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

// Returns the reason why no new file can have this path, as a sentence without its full stop; empty
// if one can.
QString WhyNoOutput(const QString& path, const QString& input) {
  // An extension of digits alone is taken for the end of a date or of a version.
  static const QRegularExpression plainExtension(
      u"[^/]\\.(?=[0-9]*[A-Za-z])[A-Za-z0-9]{1,10}\\z"_s);
  static const QRegularExpression listExtension(u"\\.(m3u8|mpd|ism)\\z"_s,
                                                QRegularExpression::CaseInsensitiveOption);
  if (!plainExtension.match(path).hasMatch()) {
    return u"The name needs an extension that says the format, such as .mp4"_s;
  }
  if (listExtension.match(path).hasMatch()) {
    return u"This format is a list of several files. Choose another one, such as .mp4"_s;
  }
  if (IsSameFile(input, path)) {
    return u"This is the video that is read; choose another name"_s;
  }
  return {};
}

}  // namespace

bool IsSameFile(const QString& one, const QString& other) {
  std::error_code ignored;
  return std::filesystem::equivalent(ToNarrow(one), ToNarrow(other), ignored);
}

void Stabiliser::SelectVideo() {
  if (const QString path = AskForVideo(u"Extract Section From Video"_s); !path.isEmpty()) {
    SetSource(path);
  }
}

// Selects a file as a click on Label6(0) would: first discards a path that was typed for the time
// line, and takes one typed for the other video.
void Stabiliser::SelectDropped(const QString& path) {
  if (TakeTypedSource(&Label6(0)) && TakeTypedOther()) {
    cdialog.RunWithFile(path, [this] { SelectVideo(); });
  }
}

void Stabiliser::LoadOtherVideo() {
  if (const QString path = AskForVideo(u"Load Video"_s); !path.isEmpty()) SetOtherVideo(path);
}

QString Stabiliser::AskForVideo(const QString& title) {
  cdialog.DialogTitle = title;
  cdialog.FileName.clear();
  return cdialog.ShowOpen() ? cdialog.FileName : QString();
}

void Stabiliser::TakeTypedPaths() {
  constexpr int kInterval = 20;  // ms
  // The click that opened the dialog has taken the paths.
  if (DialogIsOpen()) return;
  if (QApplication::mouseButtons() != Qt::NoButton) {
    QTimer::singleShot(kInterval, this, [this] { TakeTypedPaths(); });
  } else if (TakeTypedSource()) {
    TakeTypedOther();
  }
}

bool Stabiliser::TakeTypedSource(const Label* clicked) {
  const QString former = source_ ? source_->path : QString();
  if (cancelLabel_ != nullptr || Text1.Text() == former) return true;
  const QString path = Trim(Text1.Text());
  const bool isDiscarded = path.isEmpty() || clicked == &Label6(0);
  if (!isDiscarded && SetSource(path)) return true;
  Text1.setText(former);
  return isDiscarded;
}

// An empty box stands for the video of the time line.
bool Stabiliser::TakeTypedOther(const Label* clicked) {
  const QString former = VideoToStabilise() != nullptr ? VideoToStabilise()->path : QString();
  if (cancelLabel_ != nullptr || Text5.Text() == former) return true;
  const QString path = Trim(Text5.Text());
  const bool isDiscarded = path.isEmpty() || clicked == &Label12(LoadOther);
  if (path.isEmpty()) otherVideo_.reset();
  if (!isDiscarded && SetOtherVideo(path)) return true;
  Text5.setText(VideoToStabilise() != nullptr ? VideoToStabilise()->path : QString());
  return isDiscarded;
}

bool Stabiliser::SetSource(const QString& path) {
  std::optional<Video> video;
  RunCancellable(Label6(0), [&] { return ReadVideo(path, video); });
  if (!video || !Loaded()) return false;
  source_ = std::move(video);
  sample_.clear();
  Text1.setText(source_->path);
  SectionSourceShortPath = FromNarrow(source_->shortPath);
  if (!otherVideo_) Text5.setText(source_->path);
  ShowTimeLine();
  wmp.OpenPaused(source_->path);
  return true;
}

bool Stabiliser::SetOtherVideo(const QString& path) {
  std::optional<Video> video;
  RunCancellable(Label12(LoadOther), [&] { return ReadVideo(path, video); });
  if (!video || !Loaded()) return false;
  otherVideo_ = std::move(video);
  Text5.setText(otherVideo_->path);
  return true;
}

const Stabiliser::Video* Stabiliser::VideoToStabilise() const {
  if (otherVideo_) return &*otherVideo_;
  return source_ ? &*source_ : nullptr;
}

QString Stabiliser::ReadVideo(const QString& path, std::optional<Video>& video) {
  constexpr double kLongest = 100 * 3600.0;  // seconds; the time line has at least a pixel for each
  const QFileInfo file(path);
  if (!file.isFile()) return u"There is no such file:\n%1"_s.arg(path);
  Video read;
  read.path = file.absoluteFilePath();
  QString reason;
  read.shortPath = GetShortFileName(
      ToNarrow(read.path),
      [&](const std::string& text, const std::string& /*title*/) { reason = FromNarrow(text); });
  if (read.shortPath.empty()) {
    return Paragraphs(u"This file can't be given to the tools:\n%1"_s.arg(path), reason);
  }
  if (!RunTool(VideoProbeLine(ToolsFolder(App::Path()), read.shortPath))) {
    return Failure(u"This file can't be read:\n%1"_s.arg(path));
  }
  read.facts = ReadVideoFacts(printed_);
  const QString chooseVideo = u"Choose a video."_s;
  if (!read.facts.HasVideo()) {
    return Paragraphs(u"This file has no video:\n%1"_s.arg(path), chooseVideo);
  }
  if (read.facts.still) {
    return Paragraphs(u"This file is a still picture:\n%1"_s.arg(path), chooseVideo);
  }
  if (read.facts.duration <= 0) {
    return Paragraphs(u"The length of this video isn't known:\n%1"_s.arg(path),
                      u"Make a copy and choose that: ffmpeg -i VIDEO -c copy COPY"_s);
  }
  if (read.facts.duration > kLongest) {
    return u"This file says that it lasts longer than 100 hours:\n%1"_s.arg(path);
  }
  video = std::move(read);
  return {};
}

QString Stabiliser::AskForOutput(const QString& title, const QString& input) {
  cdialog.DialogTitle = title;
  cdialog.FileName.clear();
  cdialog.Remark = [input](const QString& path) {
    const QString why = WhyNoOutput(path, input);
    return why.isEmpty() ? FromNarrow(FolderRemark(ToNarrow(path))) : why + u'.';
  };
  if (!cdialog.ShowSave()) return {};
  const QString path = cdialog.FileName;
  const QString why = WhyNoOutput(path, input);
  if (why.isEmpty()) return path;
  MsgBox(u"%1:\n%2"_s.arg(why, path), kExclamation);
  return {};
}

}  // namespace kelvane
