// What has no action has none: the user clicks and points at everything, and nothing follows.
#include <QApplication>
#include <QMouseEvent>
#include <algorithm>
#include <set>

#include "platform/WindowsMediaPlayer.h"
#include "sections/SectionWindowTest.h"

namespace kelvane::testing {
namespace {

// The controls that answer to the mouse, with the arrays' names.
const std::set<std::string> kLive = {"Label6",   "Picture3", "Picture4", "Label7",
                                     "Picture5", "Picture6", "Label1",   "Picture2"};

std::string ArrayOf(const std::string& name) { return name.substr(0, name.find('(')); }

class NoAction : public SectionWindowTest {
 protected:
  // All that a user could see change, in words and in a picture.
  std::vector<std::string> State() const {
    std::vector<std::string> state;
    for (const Control* control : form_->findChildren<Control*>()) {
      std::string line =
          control->objectName().toStdString() + ": " + std::to_string(control->Left()) + " " +
          std::to_string(control->Top()) + " " + std::to_string(control->Width()) + " " +
          std::to_string(control->Height()) + " " + (control->Visible() ? "shown " : "hidden ") +
          control->ToolTipText().toStdString();
      if (const auto* label = qobject_cast<const Label*>(control)) {
        line += " " + label->Caption().toStdString() + " " + Hex(label->ForeColor()) + " " +
                Hex(label->BackColor()) + (label->FontBold() ? " bold" : "");
      }
      if (const auto* box = qobject_cast<const TextBox*>(control)) {
        line += " " + box->Text().toStdString();
      }
      if (const auto* bar = qobject_cast<const ProgressBar*>(control)) {
        line += " " + std::to_string(bar->Value());
      }
      state.push_back(line);
    }
    state.push_back("player: " + Get<WindowsMediaPlayer>("wmp").URL().toStdString());
    state.push_back("short path: " + SectionSourceShortPath.toStdString());
    return state;
  }

  std::vector<std::string> ControlsWithoutAction() const {
    std::vector<std::string> names;
    for (const Control* control : form_->findChildren<Control*>()) {
      const std::string name = control->objectName().toStdString();
      if (!name.empty() && !kLive.contains(ArrayOf(name))) names.push_back(name);
    }
    return names;
  }

  static void UseTheMouseOn(Control& control) {
    MovePointerOver(control);
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
      Click(control, button);
    }
    QMouseEvent again(QEvent::MouseButtonDblClick, QPointF(2, 2),
                      control.mapToGlobal(QPointF(2, 2)), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(&control, &again);
    Release(control);
    PumpOnce();
  }
};

TEST_F(NoAction, NothingFollowsFromAnythingThatHasNoAction) {
  // Text1 is among them: a text box takes the keyboard and that is all.
  const std::vector<std::string> names = ControlsWithoutAction();
  ASSERT_GT(names.size(), 60U);
  const DialogAnswers none({});
  const std::vector<std::string> before = State();
  for (const std::string& name : names) {
    UseTheMouseOn(Get<Control>(name.c_str()));
    EXPECT_EQ(State(), before) << name;
    EXPECT_EQ(tools_.Runs(), std::vector<std::string>{}) << name;
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr) << name;
  }
}

TEST_F(NoAction, NobodyHearsOfTheirEvents) {
  for (const std::string& name : ControlsWithoutAction()) {
    const auto& control = Get<Control>(name.c_str());
    EXPECT_FALSE(control.MouseDown) << name;
    EXPECT_FALSE(control.MouseMove) << name;
    EXPECT_FALSE(control.MouseUp) << name;
    EXPECT_FALSE(control.DblClick) << name;
  }
}

struct Wired {
  const char* array;
  int count;
  const char* events;
};

// The other way round: what is wired, complete.
TEST_F(NoAction, TheEventsThatAreHeardAreThese) {
  for (const auto& [array, count, events] : std::vector<Wired>{{"Label6", 2, "Up"},
                                                               {"Picture3", 2, "Move Up"},
                                                               {"Picture4", 2, "Down Move"},
                                                               {"Label7", 2, "Down Move Up Double"},
                                                               {"Label1", 7, "Down Move Up"},
                                                               {"Picture2", 7, "Move"}}) {
    for (int index = 0; index < count; ++index) {
      const auto& control = Get<Control>(array, index);
      QStringList heard;
      if (control.MouseDown) heard << "Down";
      if (control.MouseMove) heard << "Move";
      if (control.MouseUp) heard << "Up";
      if (control.DblClick) heard << "Double";
      EXPECT_EQ(heard.join(' ').toStdString(), events) << control.objectName().toStdString();
    }
  }
  EXPECT_TRUE(Get<Control>("Picture5").MouseMove);
  EXPECT_TRUE(Get<Control>("Picture6").MouseDown);
  EXPECT_TRUE(Get<Control>("Picture6").MouseMove);
  EXPECT_FALSE(Get<Control>("Picture5").MouseDown);
  EXPECT_FALSE(Get<Control>("Picture6").MouseUp);
  for (int index = 0; index < 14; ++index) EXPECT_TRUE(Get<Label>("Label2", index).Change);
  EXPECT_FALSE(Get<HScrollBar>("HScroll1").Change);
  EXPECT_FALSE(Get<HScrollBar>("HScroll1").Scroll);
  EXPECT_FALSE(Get<TextBox>("Text1").Change);
  EXPECT_FALSE(Get<TextBox>("Text5").Change);
}

}  // namespace
}  // namespace kelvane::testing
