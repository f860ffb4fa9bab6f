#include "platform/ListBox.h"

#include <QListWidget>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>

#include "platform/PixelSized.h"

namespace kelvane {
namespace {

constexpr int kLineSpacing = 2;

}  // namespace

class ListBox::Lines : public PixelSized<QListWidget> {
 public:
  Lines() {
    setHorizontalScrollBar(new PixelSized<QScrollBar>(Qt::Horizontal));
    setVerticalScrollBar(new PixelSized<QScrollBar>(Qt::Vertical));
    setItemDelegate(new Delegate(*this));
    setUniformItemSizes(true);
    setHorizontalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTextElideMode(Qt::ElideNone);
  }

  int extent() const { return extent_; }
  void setExtent(int pixels) {
    extent_ = pixels;
    setHorizontalScrollBarPolicy(pixels == 0 ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAlwaysOn);
    doItemsLayout();
  }

  void scrollTo(const QModelIndex& index, ScrollHint hint) override {
    const int horizontal = horizontalScrollBar()->value();
    QListWidget::scrollTo(index, hint);
    horizontalScrollBar()->setValue(horizontal);
  }

 protected:
  // Keeps Qt from making the first line the current one if no line is.
  void focusInEvent(QFocusEvent* event) override {
    const int line = currentRow();
    QListWidget::focusInEvent(event);
    setCurrentRow(line);
  }

  // Takes the range of the horizontal bar from the extent. Qt would take it from the items.
  void updateGeometries() override {
    const int horizontal = horizontalScrollBar()->value();
    QListWidget::updateGeometries();
    horizontalScrollBar()->setRange(0, std::max(0, extent_ - viewport()->width()));
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setValue(horizontal);
  }

 private:
  class Delegate : public QStyledItemDelegate {
   public:
    explicit Delegate(Lines& lines) : QStyledItemDelegate(&lines), lines_(lines) {}
    QSize sizeHint(const QStyleOptionViewItem& option,
                   const QModelIndex& /*index*/) const override {
      return {lines_.extent(), option.fontMetrics.height() + kLineSpacing};
    }

   private:
    Lines& lines_;
  };

  int extent_ = 0;
};

ListBox::ListBox(Container& container, const QString& name)
    : TextControl(container, name), lines_(new Lines) {
  FillWith(lines_);
}

void ListBox::AddItem(const QString& text) { lines_->addItem(text); }

int ListBox::ListCount() const { return lines_->count(); }

QString ListBox::List(int index) const {
  const QListWidgetItem* line = lines_->item(index);
  return line == nullptr ? QString() : line->text();
}

void ListBox::setList(int index, const QString& text) {
  if (QListWidgetItem* line = lines_->item(index)) line->setText(text);
}

int ListBox::ListIndex() const { return lines_->currentRow(); }

void ListBox::setListIndex(int index) {
  if (index >= -1 && index < ListCount()) lines_->setCurrentRow(index);
}

int ListBox::HorizontalExtent() const { return lines_->extent(); }

void ListBox::setHorizontalExtent(int pixels) { lines_->setExtent(pixels); }

}  // namespace kelvane
