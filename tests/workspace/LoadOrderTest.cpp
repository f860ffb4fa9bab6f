// What comes after what in a load.
#include "shared/SharedValues.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

// Writes down a whole load: changes of captions and texts, new sizes, runs of tools.
class LoadOrder : public MainWindowTest {
 protected:
  void Add(const std::string& event) {
    const Texts runs = tools_.Runs();
    for (; runsSeen_ < runs.size(); ++runsSeen_) events_.push_back("run: " + runs[runsSeen_]);
    events_.push_back(event);
  }

  // Text on one line.
  static std::string Line(QString text) {
    return text.replace(QLatin1String("\n"), QLatin1String("/")).toStdString();
  }

  void WriteEverythingDown() {
    Before(Path().Change, [this](int) {
      Add("path: " + Line(Path().Text()) + (VideoPath == Path().Text() ? ", known" : ""));
    });
    After(Path().Change, [this](int) { Add("path done"); });
    for (const ReadOut number : {SourceWidth, SourceHeight}) {
      Before(Get<Label>("Label1", number).Change, [this](int index) {
        Add("Label1(" + std::to_string(index) +
            "): " + Line(Get<Label>("Label1", index).Caption()));
      });
    }
    for (const WorkspaceBox box : {CanvasBox, HolderBox}) {
      Before(Get<PictureBox>("Picture1", box).Resize, [this](int index) {
        const auto& resized = Get<PictureBox>("Picture1", index);
        Add("Picture1(" + std::to_string(index) + "): " + std::to_string(resized.width()) + "x" +
            std::to_string(resized.height()));
      });
    }
    for (const MarkerBar bar : {LeftBar, TopBar, RightBar, BaseBar}) {
      Before(Bar(bar).Resize,
             [this](int index) { Add("Picture2(" + std::to_string(index) + "): resized"); });
    }
    Get<TextBox>("Text2").Change = [this](int) {
      Add("store: " + Line(Store()) + ", duration: " + VideoDuration.toStdString());
    };
    shown_ = std::make_unique<ShowWatch>([this] { Add("canvas shown"); });
    Canvas().installEventFilter(shown_.get());
  }

  const Texts& Events() {
    Add("end");
    return events_;
  }

 private:
  class ShowWatch : public QObject {
   public:
    explicit ShowWatch(std::function<void()> step) : step_(std::move(step)) {}
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
      if (event->type() == QEvent::Show) step_();
      return false;
    }

   private:
    std::function<void()> step_;
  };

  Texts events_;
  std::size_t runsSeen_ = 0;
  std::unique_ptr<ShowWatch> shown_;
};

TEST_F(LoadOrder, OfAVideoOfFourDigits) {
  const QString video = tools_.File(QStringLiteral("a.mp4"));
  WriteEverythingDown();
  Pick(video, SizeText(1920, 1080), QStringLiteral("Duration: 00:00:10.00\n"));
  EXPECT_EQ(Events(),
            (Texts{"path: " + video.toStdString(), "run: " + SizeRun(video), "Label1(1): 1,920",
                   "Picture1(3): 1920x209", "Picture1(2): 1920x249", "Picture2(1): resized",
                   "Picture2(3): resized", "Label1(3): 1,080", "Picture1(3): 1920x1080",
                   "Picture1(2): 1920x1080", "Picture2(0): resized", "Picture2(2): resized",
                   "run: " + DurationRun(video), "store: Duration: 00:00:10.00/, duration: ",
                   "path done", "canvas shown", "end"}));
  EXPECT_EQ(VideoDuration.toStdString(), "00:00:10");
}

TEST_F(LoadOrder, OfAVideoOfThreeDigits) {
  const QString video = tools_.File(QStringLiteral("a.mp4"));
  WriteEverythingDown();
  Pick(video, SizeText(640, 360), QStringLiteral("Duration: 00:00:10.00\n"));
  EXPECT_EQ(Events(),
            (Texts{"path: " + video.toStdString(), "run: " + SizeRun(video), "Label1(1): 0,640",
                   "Picture1(3): 640x209", "Picture1(2): 640x249", "Picture2(1): resized",
                   "Picture2(3): resized", "Label1(3): 0,360", "Picture1(3): 640x360",
                   "Picture1(2): 640x360", "Picture2(0): resized", "Picture2(2): resized",
                   "store: width=640/height=360/, duration: ", "run: " + DurationRun(video),
                   "store: width=640/height=360/Duration: 00:00:10.00/, duration: ", "path done",
                   "canvas shown", "end"}));
}

TEST_F(LoadOrder, OfASecondVideoOfTheSameSizeHasNoResize) {
  LoadVideoOf(1920, 1080);
  const QString video = tools_.File(QStringLiteral("b.mp4"));
  const Texts former = tools_.Runs();
  const QString store = Store();
  WriteEverythingDown();
  Pick(video, SizeText(1920, 1080), QStringLiteral("text\n"));
  EXPECT_EQ(Events(),
            (Texts{"run: " + former[0], "run: " + former[1], "path: " + video.toStdString(),
                   "run: " + SizeRun(video), "run: " + DurationRun(video),
                   "store: " + Line(store) + "text/, duration: 00:00:10", "path done", "end"}));
}

}  // namespace
}  // namespace kelvane::testing
