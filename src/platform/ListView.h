#pragma once

#include "platform/TextControl.h"

class QTreeWidgetItem;

namespace kelvane {

// A table with column headers. Whole rows are selected, one at a time. Columns and rows are
// numbered from 1.
class ListView : public TextControl {
  Q_OBJECT
 public:
  ListView(Container& container, const QString& name);

  // Whether the headers look and act like push buttons, as they do at first: raised, and reacting
  // to hover, press and click.
  bool HeaderButtons() const;
  void setHeaderButtons(bool buttons);

  class ColumnHeaderList {
   public:
    explicit ColumnHeaderList(ListView& list) : list_(list) {}
    // Adds a column of 96 pixels at the right and returns its number.
    int Add(const QString& text);

   private:
    ListView& list_;
  };

  // A row, valid while the list exists, or no row: then the texts are empty and setters do nothing.
  class ListItem {
   public:
    explicit ListItem(QTreeWidgetItem* row = nullptr) : row_(row) {}
    QString Text() const;
    // The texts after the first, numbered from 1. A text beyond the columns is empty, and setting
    // it has no effect.
    QString SubItems(int index) const;
    void setSubItems(int index, const QString& text);
    bool Selected() const;
    // Selects this row alone and scrolls it into view.
    void Select();

   private:
    QTreeWidgetItem* row_;
  };

  class ListItemList {
   public:
    explicit ListItemList(ListView& list) : list_(list) {}
    int Count() const;
    // Appends a row, which the list owns.
    ListItem Add(const QString& text);
    // Returns an item without a row if there is no row of that number.
    ListItem operator()(int number) const;

   private:
    ListView& list_;
  };

  ColumnHeaderList ColumnHeaders{*this};
  ListItemList ListItems{*this};

 private:
  class Header;
  class Table;

  Table* table_;
};

}  // namespace kelvane
