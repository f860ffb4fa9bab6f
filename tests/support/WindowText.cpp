#include "support/WindowText.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QFile>
#include <QHash>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMetaEnum>
#include <QScrollBar>
#include <QSlider>
#include <QStringList>
#include <utility>

#include "platform/CommandButton.h"
#include "platform/ContentArea.h"
#include "platform/Label.h"
#include "platform/ListBox.h"
#include "platform/ListView.h"
#include "platform/Menu.h"
#include "platform/OptionButton.h"
#include "platform/PictureBox.h"
#include "platform/ProgressBar.h"
#include "platform/ScrollBars.h"
#include "platform/Shapes.h"
#include "platform/TextBox.h"
#include "platform/Timer.h"
#include "support/Events.h"
#include "support/ScreenReader.h"

namespace kelvane::testing {
namespace {

using namespace Qt::StringLiterals;

QString Quoted(const QString& text) { return '"' + QString(text).replace('\t'_L1, "\\t"_L1) + '"'; }

QString Color(QRgb color) { return QStringLiteral("%1").arg(color & 0xFFFFFF, 6, 16, '0'_L1); }

QString Number(float number) { return QString::number(static_cast<double>(number)); }

QString Place(const Control& control) {
  if (const auto* line = qobject_cast<const Line*>(&control)) {
    return u"%1,%2 to %3,%4"_s.arg(Number(line->X1()), Number(line->Y1()), Number(line->X2()),
                                   Number(line->Y2()));
  }
  return u"%1,%2 %3x%4"_s.arg(Number(control.Left()), Number(control.Top()),
                              Number(control.Width()), Number(control.Height()));
}

// What a control looks like, without its place.
QString Look(const Control& control) {
  QStringList words;
  if (const auto* button = qobject_cast<const CommandButton*>(&control)) {
    words << Quoted(button->Caption());
  } else if (const auto* label = qobject_cast<const Label*>(&control)) {
    words << Quoted(label->Caption()) << Color(label->ForeColor());
    if (label->BackColor()) words << "on" << Color(*label->BackColor());
    if (label->Bordered()) words << "bordered";
    if (label->Alignment() != Qt::AlignLeft) {
      words << (label->Alignment() == Qt::AlignHCenter ? "centred" : "right");
    }
  } else if (const auto* line = qobject_cast<const Line*>(&control)) {
    words << Color(line->BorderColor());
  } else if (const auto* list = qobject_cast<const ListBox*>(&control)) {
    words << Color(list->ForeColor()) << "on" << Color(list->BackColor());
  } else if (const auto* table = qobject_cast<const ListView*>(&control)) {
    words << Color(table->ForeColor()) << "on" << Color(table->BackColor());
  } else if (const auto* option = qobject_cast<const OptionButton*>(&control)) {
    words << Quoted(option->Caption()) << Color(option->ForeColor());
    if (option->Value()) words << "chosen";
  } else if (const auto* box = qobject_cast<const PictureBox*>(&control)) {
    words << Color(box->BackColor());
    if (box->ForeColor() != 0) words << "prints" << Color(box->ForeColor());
    if (box->ContentOrigin() != QPoint()) words << "bordered";
    if (box->UnitsPerPixel() != 1) words << "twips";
  } else if (const auto* progress = qobject_cast<const ProgressBar*>(&control)) {
    words << Number(progress->Min()) + ".." + Number(progress->Max());
  } else if (qobject_cast<const ScrollBar*>(&control) != nullptr) {
    const auto* bar = control.findChild<QScrollBar*>();
    words << u"%1..%2 by %3 and %4"_s.arg(bar->minimum())
                 .arg(bar->maximum())
                 .arg(bar->singleStep())
                 .arg(bar->pageStep());
  } else if (const auto* shape = qobject_cast<const Shape*>(&control)) {
    words << Color(shape->BorderColor());
    if (shape->BorderWidth() != 1) words << "of" << QString::number(shape->BorderWidth());
    if (shape->FillColor()) words << "filled" << Color(*shape->FillColor());
  } else if (const auto* slider = control.findChild<QSlider*>()) {
    words << u"%1..%2 at %3"_s.arg(slider->minimum()).arg(slider->maximum()).arg(slider->value());
  } else if (const auto* field = qobject_cast<const TextBox*>(&control)) {
    words << Quoted(field->Text());
  }
  if (control.cursor().shape() != Qt::ArrowCursor) {
    words << QMetaEnum::fromType<Qt::CursorShape>().valueToKey(control.cursor().shape());
  }
  if (!control.ToolTipText().isEmpty()) words << "tip" << Quoted(control.ToolTipText());
  if (!control.Visible()) words << "hidden";
  return words.join(' ');
}

class Description {
 public:
  explicit Description(Form& form) : form_(form) {}

  std::string Of(const std::vector<QSize>& areas) {
    WriteWindow();
    WriteMenus();
    WriteControls(Area(), 0);
    form_.Load();
    AddWhatTheLoadChanges();
    form_.Show();
    for (Timer* timer : form_.findChildren<Timer*>()) timer->setEnabled(false);
    for (const QSize& area : areas) {
      const QSize rest = form_.size() - Area().size();
      form_.resize(area + rest);
      ServePendingEvents();
      AddPlaces();
    }
    if (areas.empty()) AddPlaces();
    return lines_.join('\n').toStdString() + "\n\nA screen reader is told:\n" + HeardIn(form_);
  }

 private:
  void WriteWindow() {
    const QFont font = Area().font();
    lines_ << u"%1 %2 %3x%4 %5, %6 of %7 pixels"_s.arg(
        form_.objectName(), Quoted(form_.Caption()), Number(form_.ScaleWidth()),
        Number(form_.ScaleHeight()), Color(Area().BackColor()), font.family(),
        QString::number(font.pixelSize()));
    for (const Timer* timer : form_.findChildren<Timer*>()) {
      lines_ << u"%1 every %2 ms%3"_s.arg(timer->objectName())
                    .arg(timer->Interval())
                    .arg(timer->Enabled() ? "" : ", off");
    }
  }

  void WriteMenus() {
    QHash<QString, QString> names;  // by caption
    for (const Menu* menu : form_.findChildren<Menu*>())
      names[menu->Caption()] = menu->objectName();
    const auto write = [&](const QAction& entry, QLatin1String indent) {
      lines_ << indent + u"%1 Menu %2"_s.arg(names.take(entry.text()), Quoted(entry.text())) +
                    QLatin1String(entry.isVisible() ? "" : " hidden");
    };
    const auto* bar = form_.findChild<QMenuBar*>();
    if (bar == nullptr) return;
    for (const QAction* title : bar->actions()) {
      write(*title, ""_L1);
      for (const QAction* item : title->menu()->actions()) write(*item, "  "_L1);
    }
  }

  void WriteControls(const QWidget& container, int level) {
    const QObjectList& children = container.children();
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
      const auto* control = qobject_cast<const Control*>(*child);
      if (control == nullptr) continue;
      rows_.emplace_back(control->objectName(), lines_.size());
      lines_ << QString(2 * level, ' '_L1) + RowOf(*control);
      WriteControls(*control, level + 1);
    }
  }

  // Adds, after "=>", what the load has changed in timers and in the looks of controls. The place
  // of a hidden control is compared and added too, since AddPlaces leaves it out.
  void AddWhatTheLoadChanges() {
    qsizetype line = 1;
    for (const Timer* timer : form_.findChildren<Timer*>()) {
      if (lines_[line].endsWith("off"_L1) == timer->Enabled()) {
        lines_[line] += timer->Enabled() ? " => on"_L1 : " => off"_L1;
      }
      ++line;
    }
    for (const auto& [name, row] : rows_) {
      const auto& control = form_.Find<Control>(name);
      const bool hidden = !control.isVisibleTo(&Area());
      const QString before = lines_[row].trimmed();
      const QString now = RowOf(control);
      const QString place = hidden ? Place(control) + ' '_L1 : QString();
      if (hidden ? before != now : !before.endsWith(Look(control))) {
        lines_[row] += (u" => "_s + place + Look(control)).trimmed().prepend(' '_L1);
      }
    }
  }

  static QString RowOf(const Control& control) {
    return u"%1 %2 %3 %4"_s
        .arg(control.objectName(), control.metaObject()->className() + 9, Place(control),
             Look(control))
        .trimmed();
  }

  void AddPlaces() {
    const ContentArea& area = Area();
    lines_[0] += u" | %1x%2"_s.arg(area.width()).arg(area.height());
    for (const auto& [name, line] : rows_) {
      const auto& control = form_.Find<Control>(name);
      const QRect place = InSight(control);
      lines_[line] += control.isVisibleTo(&area) ? u" | %1,%2 %3x%4"_s.arg(place.x())
                                                       .arg(place.y())
                                                       .arg(place.width())
                                                       .arg(place.height())
                                                 : u" | -"_s;
    }
  }

  // The part of a control that its containers show, in the coordinates of the content area.
  QRect InSight(const Control& control) const {
    QRect place = control.geometry();
    for (const QWidget* around = control.parentWidget(); around != &Area();
         around = around->parentWidget()) {
      const auto* box = qobject_cast<const PictureBox*>(around);
      const int border = box->ContentOrigin().x();
      place &= box->rect().adjusted(border, border, -border, -border);
      place.translate(box->pos());
    }
    return place;
  }

  const ContentArea& Area() const {
    return *form_.findChild<ContentArea*>(QString(), Qt::FindDirectChildrenOnly);
  }

  Form& form_;
  QStringList lines_;
  std::vector<std::pair<QString, qsizetype>> rows_;  // name and number in lines_ of each control
};

}  // namespace

std::string DescribeWindow(Form& form, const std::vector<QSize>& areas) {
  return Description(form).Of(areas);
}

void ExpectWindowText(Form& form, const std::vector<QSize>& areas) {
  QFile file(QStringLiteral(KELVANE_WINDOW_TEXTS "/%1.txt").arg(form.objectName()));
  const std::string description = DescribeWindow(form, areas);
  if (qEnvironmentVariableIsSet("KELVANE_RENEW_WINDOW_TEXTS")) {
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(description.data(), static_cast<qint64>(description.size()));
    FAIL() << file.fileName().toStdString() << " was written";
  }
  ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
  EXPECT_EQ(description, file.readAll().toStdString())
      << "If the change is meant, run this test with KELVANE_RENEW_WINDOW_TEXTS=1 and look at what "
         "that changes in "
      << file.fileName().toStdString();
}

}  // namespace kelvane::testing
