// Adds a section with what the probe tool says of it, and marks one as removed.
#include "joiner/Form4.h"
#include "joiner/JoinTexts.h"
#include "media/CommandLines.h"
#include "media/Module1.h"
#include "media/ProbeReadings.h"
#include "platform/App.h"
#include "shared/Colours.h"
#include "shared/SharedValues.h"
#include "shared/TextHelpers.h"

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

constexpr float kStripHeight = 17;
constexpr float kStripGap = 3;
constexpr float kStripFontSize = 8;  // points

}  // namespace

void Form4::GetVideoData() {
  DOSOutputs objDOS;
  ConnectRunner(objDOS);
  Run(objDOS, [this] {
    return DurationProbeCommandLine(ToolsFolder(App::Path()), ToNarrow(FileShortPath));
  });
}

// Handles the output of every tool of this window, so a join's output can add sections too. Looks
// at one block alone, so it doesn't find a "Duration:" that is cut in two.
void Form4::objDOS_ReceiveOutputs(const std::string& CommandOutputs) {
  if (TranscodeLock) return;
  Text1.setText(FromNarrow(CommandOutputs));
  if (const auto duration = DurationReading().Append(ToNarrow(Text1.Text()))) {
    VideoDuration = FromNarrow(*duration);
    // If the text is no time, SectionSeconds stays: it is the width of the previous strip.
    if (const auto seconds = SecondsFromTimeText(VideoDuration)) SectionSeconds = *seconds;
    TotalSeconds += SectionSeconds;
    SectionSeconds = ToInteger32(SectionSeconds / double{kSecondsPerPixel}).value_or(0);
    AddVideoObject(SectionSeconds);
    LastListItem = ListView1.ListItems.Add(QString::number(ListView1.ListItems.Count() + 1));
    LastListItem.setSubItems(1, FileTitle);
    LastListItem.setSubItems(2, QString::number(SectionSeconds * kSecondsPerPixel));
  }
  Label3(TotalDurationSeconds).setCaption(FormatGrouped(static_cast<double>(TotalSeconds), 5));
  Label3(TotalRuntime).setCaption(FormatTimeText(static_cast<double>(TotalSeconds)));
}

// Each strip has a row of its own and begins where the one before ended. There is no strip with
// index 1, so the first one keeps the template's place.
void Form4::AddVideoObject(std::int32_t StripWidth) {
  if (TranscodeLock) return;
  const int index = Picture2.Count() + 1;
  const QString number = FormatDigits(index - 1, 2);
  PictureBox& strip = Picture2.Load(index);
  Label& details = Label2.Load(index);
  Line& rule = Line1.Load(index);

  strip.setWidth(static_cast<float>(StripWidth));
  StripSpan = ToInteger32(StripSpan + double{strip.Width()}).value_or(StripSpan);
  if (const PictureBox* previous = Picture2.Member(index - 1)) {
    strip.setTop(previous->Top() + previous->Height() + kStripGap);
    strip.setLeft(previous->Left() + previous->Width());
  }
  strip.setHeight(kStripHeight);
  strip.setVisible(true);
  strip.SetPrintFont(u"Arial"_s, kStripFontSize);
  strip.setForeColor(kWhite);
  strip.PrintAt(5, 1, number);

  details.setContainer(strip);
  details.setLeft(1);
  details.setTop(1);
  details.setHeight(10);
  details.setWidth(1);
  details.setCaption(u"   Video Index: %1 Title: %2   "_s.arg(number, FileTitle));
  details.setVisible(false);
  strip.setMeaning(details.Caption().trimmed());

  const float ruleY = strip.Height() + strip.Top() + 1;
  rule.SetEnds(0, ruleY, Picture1(Chart).ScaleWidth(), ruleY);
  rule.setVisible(true);

  strip.Refresh();
}

// Marks as removed the section whose strip was last right-clicked, wherever the menu was opened.
void Form4::mnu_RemoveSection_Click() {
  Picture2(MenuStrip).setBackColor(kGrey);
  Label2(MenuStrip).setCaption(kDeletedSection);
  Picture2(MenuStrip).setMeaning(kDeletedSection.trimmed());
  List1.setList(MenuStrip - 2, kDeletedSection);
}

}  // namespace kelvane
