#include "platform/ListView.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTreeWidget>

#include "platform/Fonts.h"
#include "platform/PixelSized.h"

namespace kelvane {
namespace {

constexpr int kColumnWidth = 96;

}  // namespace

// The column headers. Qt draws them while they are buttons; otherwise they are flat and have the
// table's colours.
class ListView::Header : public PixelSized<QHeaderView> {
 public:
  Header() : PixelSized(Qt::Horizontal) {
    setSectionsMovable(false);
    setDefaultSectionSize(kColumnWidth);
    setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  }

 protected:
  // If the header is flat, also fills the part of it that no column covers.
  void paintEvent(QPaintEvent* event) override {
    QHeaderView::paintEvent(event);
    if (sectionsClickable()) return;
    const QRect bare(length() - offset(), 0, viewport()->width(), height());
    QPainter(viewport()).fillRect(bare, palette().color(QPalette::Base));
  }

  void paintSection(QPainter* painter, const QRect& place, int column) const override {
    if (sectionsClickable()) {
      QHeaderView::paintSection(painter, place, column);
      return;
    }
    constexpr int kTextMargin = 4;
    painter->fillRect(place, palette().color(QPalette::Base));
    painter->setPen(Qt::darkGray);
    painter->drawLine(place.bottomLeft(), place.bottomRight());
    painter->drawLine(place.topRight(), place.bottomRight());
    painter->setPen(palette().color(QPalette::Text));
    const QRect inside = place.adjusted(kTextMargin, 0, -kTextMargin, 0);
    const QString text = model()->headerData(column, orientation()).toString();
    painter->setFont(FittingFont(font(), text, inside.width()));
    painter->drawText(inside, Qt::AlignLeft | Qt::AlignVCenter,
                      painter->fontMetrics().elidedText(text, Qt::ElideRight, inside.width()));
  }
};

class ListView::Table : public PixelSized<QTreeWidget> {
 public:
  Table() {
    setHorizontalScrollBar(new PixelSized<QScrollBar>(Qt::Horizontal));
    setVerticalScrollBar(new PixelSized<QScrollBar>(Qt::Vertical));
    setHeader(new Header);
    header()->setSectionsClickable(true);
    setColumnCount(0);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
  }

 protected:
  // Passes the event on to the control, which raises MouseUp.
  void mouseReleaseEvent(QMouseEvent* event) override {
    QTreeWidget::mouseReleaseEvent(event);
    event->ignore();
  }
};

ListView::ListView(Container& container, const QString& name)
    : TextControl(container, name), table_(new Table) {
  FillWith(table_);
  setFocusProxy(table_);
}

bool ListView::HeaderButtons() const { return table_->header()->sectionsClickable(); }

void ListView::setHeaderButtons(bool buttons) {
  table_->header()->setSectionsClickable(buttons);
  table_->header()->viewport()->update();
}

int ListView::ColumnHeaderList::Add(const QString& text) {
  QTreeWidget& table = *list_.table_;
  table.setColumnCount(table.columnCount() + 1);
  table.headerItem()->setText(table.columnCount() - 1, text);
  return table.columnCount();
}

QString ListView::ListItem::Text() const { return SubItems(0); }

QString ListView::ListItem::SubItems(int index) const {
  return row_ == nullptr ? QString() : row_->text(index);
}

void ListView::ListItem::setSubItems(int index, const QString& text) {
  if (row_ != nullptr && index > 0 && index < row_->treeWidget()->columnCount()) {
    row_->setText(index, text);
  }
}

bool ListView::ListItem::Selected() const { return row_ != nullptr && row_->isSelected(); }

void ListView::ListItem::Select() {
  if (row_ != nullptr) row_->treeWidget()->setCurrentItem(row_);
}

int ListView::ListItemList::Count() const { return list_.table_->topLevelItemCount(); }

ListView::ListItem ListView::ListItemList::Add(const QString& text) {
  auto* row = new QTreeWidgetItem({text});
  list_.table_->addTopLevelItem(row);
  return ListItem(row);
}

ListView::ListItem ListView::ListItemList::operator()(int number) const {
  return ListItem(list_.table_->topLevelItem(number - 1));
}

}  // namespace kelvane
