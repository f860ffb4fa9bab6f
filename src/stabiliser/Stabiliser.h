#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/LongJob.h"
#include "platform/WindowsMediaPlayer.h"
#include "sections/Form3.h"
#include "stabiliser/CloseOnSignal.h"
#include "stabiliser/Options.h"
#include "stabiliser/TimeScale.h"
#include "stabiliser/ToolLines.h"
#include "stabiliser/VideoFacts.h"

namespace kelvane {

class DOSOutputs;

// Returns both texts with an empty line between, or the first alone if the second is empty.
QString Paragraphs(const QString& first, const QString& second);

// Returns whether both paths lead to one existing file.
bool IsSameFile(const QString& one, const QString& other);

// The labels that MakeCommand takes, by their indices in Label10, Label12 and Label14. The only
// other one is Label6(0).
enum Transport : int { Play = 0, Pause = 1, Stop = 2, Rewind = 3 };
enum StabiliserCommand : int { Apply = 0, TestSettings = 2, ResetSettings = 3, LoadOther = 4 };
enum RegionCommand : int { ExtractRegion = 0, ViewRegion = 1 };

// The two passes, by index in pbar. Their read-outs are Label9(2) and Label9(3).
enum Pass : int { Detecting = 0, Transforming = 1 };

// The section window at work: shows the chosen video, extracts the marked section, tries the
// options on it, and stabilises a whole video.
//
// One tool runs at a time. The caption that started it then reads "Cancel", and the other captions
// that start tools do nothing. Unlike the other windows, this one examines a tool's outcome: a run
// that writes a video has succeeded if its exit status is 0 and the file has a video stream.
class Stabiliser : public Form3 {
  Q_OBJECT
 public:
  explicit Stabiliser(const QIcon& icon = ProductIcon());

 protected:
  void Form_Load() override;
  void Form_MouseMove(const MouseEvent& event) override;
  void Form_Unload() override;
  QString TimeTextAt(float X) const override;

 private:
  struct Video {
    QString path;           // absolute
    std::string shortPath;  // can go unquoted
    VideoFacts facts;
  };
  // Where a run's progress is shown, and how many seconds of video it processes.
  struct Progress {
    const char* purpose;  // of the LongJob
    ProgressBar& bar;
    Label& label;
    QString prefix;  // before the percentage
    double seconds;
  };
  // A run of both passes over a video or a part of it.
  struct Stabilising {
    const Video& video;
    std::optional<Span> span;
    StabiliserOptions options;
    std::string output;
  };

  void WireCommands();
  void WireTimeLine();
  // Returns the Label12 of that index. A ControlArray must have all indices from 0, but there is no
  // Label12(1).
  Label& Label12(int index) const;
  // Makes a caption light up under the pointer, and act when it is clicked with any button.
  void MakeCommand(Label& caption, void (Stabiliser::*action)());
  // Returns the label whose background lights up for this caption.
  Label& HighlightOf(Label& caption) const;
  void ClearHighlights();

  // Choosing videos. The setters return false and change nothing if the file can't be used, which a
  // message says, or if the probe is cancelled.
  void SelectVideo();
  void SelectDropped(const QString& path);
  void LoadOtherVideo();
  // Takes the paths that were typed, once no mouse button is held: the press that ends an edit may
  // begin a click on a caption, and that click takes the paths itself.
  void TakeTypedPaths();
  // Each chooses the video whose path was typed into its text box, and returns false if that fails
  // or is cancelled. If `clicked` is the caption that opens the dialog for this choice, the typed
  // path is discarded instead. While an action runs they have no effect and return true: its start
  // has taken the paths.
  bool TakeTypedSource(const Label* clicked = nullptr);
  bool TakeTypedOther(const Label* clicked = nullptr);
  bool SetSource(const QString& path);
  bool SetOtherVideo(const QString& path);
  // Empty if the user cancels.
  QString AskForVideo(const QString& title);
  // Empty if the user cancels, or after a message if the name can't be used.
  QString AskForOutput(const QString& title, const QString& input);
  // Sets `video`, or returns why the file can't be used; neither if the probe is cancelled.
  QString ReadVideo(const QString& path, std::optional<Video>& video);
  // The video that Apply works on; null if none is chosen.
  const Video* VideoToStabilise() const;

  // The time line.
  void ShowTimeLine();
  void DrawTimes();
  void MoveNeedle(Needle needle, double time);
  // Moves the needle and shows the video's picture at that time.
  void SetMark(Needle needle, double time);
  void DragNeedle(const MouseEvent& event);
  void MarkHere(Needle needle);
  bool StepNeedle(const KeyEvent& event);
  void ScrollTimeLine(double notches);
  // Scrolls as far as needed to show the needle.
  void ScrollTo(const PictureBox& needle);
  // Moves the strip's left edge to `left`, but not so far that the strip leaves a gap in the frame
  // of the time line. A strip that is shorter than the frame stays at its left.
  void MoveStrip(float left);
  void ShowFrameAt(double time);
  // When the last picture of the source ends, in seconds.
  double EndOfVideo() const;
  // The marked section; std::nullopt, after a message, if there is none.
  std::optional<Span> MarkedSpan() const;

  void PlayVideo();
  void PauseVideo();
  void StopVideo();
  void RewindVideo();

  // What runs tools.
  void ViewSection();
  void ExtractSection();
  void TestOptions();
  void ApplyOptions();
  // Runs `action` while the caption reads "Cancel", then shows the message that it returns, or that
  // of its exception, unless the window has been unloaded. Has no effect while another action runs.
  void RunCancellable(Label& caption, const std::function<QString()>& action);
  void UpdateCommands();
  void Cancel();
  // Runs a tool to its end and serves the window meanwhile. Calls `take` with each line that the
  // tool prints. Sets printed_, toolPath_, started_ and exitStatus_. Returns whether the exit
  // status is 0; false, possibly without a run, if the action is cancelled.
  bool RunTool(const std::string& commandLine,
               const std::function<void(const std::string& line)>& take = {});
  // Does what RunTool does, shows the progress of ffmpeg, and sets processedSeconds_.
  bool RunLong(const std::string& commandLine, const Progress& progress);
  // These return why the run failed or, on success, a remark on the length; empty if there is
  // neither or the run is cancelled.
  QString RunBothPasses(const Stabilising& run);
  QString DetectAndTransform(const Stabilising& run, const std::string& transforms);
  // Returns a question if the disk may lack room for what the first pass writes.
  static QString LackOfRoom(const Stabilising& run, const std::string& transforms);
  // Probes the output of a run on `source` and sets succeeded_. Returns why the output can't be
  // used, or a remark if its length differs from `seconds`, the expected one (0 if unknown).
  QString CheckOutput(const std::string& output, const VideoFacts& source, double seconds);
  // Returns the sentence with the reason that the last tool gave; empty if the run is cancelled.
  QString Failure(const QString& sentence) const;
  Progress ProgressOf(Pass pass, double seconds) const;
  Progress ProgressOfExtraction(double seconds) const;
  static void ShowProgress(const Progress& progress, double seconds);
  void ClearProgress();

  // Returns the options in their ranges, and shows them in the read-outs.
  StabiliserOptions TakeOptions();
  void ResetOptions();

  std::optional<Video> source_;      // of the time line
  std::optional<Video> otherVideo_;  // to be stabilised instead of the source
  // The path of the extracted section; empty once other marks or another source are chosen.
  QString sample_;
  TimeScale scale_{1};
  std::array<double, 2> marks_{};  // by needle, in seconds

  std::unique_ptr<CloseOnSignal> closeOnSignal_;
  Label* pressed_ = nullptr;        // the caption whose release is awaited
  bool pressedToCancel_ = false;    // it read "Cancel" then; the run may end before the release
  Label* cancelLabel_ = nullptr;    // the one that reads "Cancel"
  DOSOutputs* tool_ = nullptr;      // the one that runs
  std::optional<LongJob> longJob_;  // from the first tool with a progress to the end of the action
  bool cancelled_ = false;
  bool started_ = false;         // whether the last tool could be started
  int exitStatus_ = 0;           // of the last tool, or minus the signal; -1 if neither is known
  std::string toolPath_;         // of the last tool
  bool succeeded_ = false;       // whether the last output can be used
  std::string printed_;          // by the last tool
  double processedSeconds_ = 0;  // of video, by the last RunLong

  std::vector<Label*> commands_;  // the labels that MakeCommand took
  std::array<QString, 7> designedReadOuts_;
  std::array<float, 7> designedThumbs_{};

  ControlArray<Label> Label9{*this, "Label9"};
  ControlArray<Label> Label10{*this, "Label10"};
  ControlArray<Label> Label14{*this, "Label14"};
  ControlArray<Label> Label15{*this, "Label15"};
  TextBox& Text5 = Find<TextBox>("Text5");
  WindowsMediaPlayer& wmp = Find<WindowsMediaPlayer>("wmp");
};

}  // namespace kelvane
