#pragma once

#include "platform/TextControl.h"

class QTreeWidgetItem;

namespace kelvane {

// A table with a header over its columns, whose rows are selected whole and one at a time. Columns
// and rows are numbered from 1.
class ListView : public TextControl {
  Q_OBJECT
 public:
  ListView(Container& container, const QString& name);

  // Whether the header looks and acts like a row of push buttons, as it does at first: raised, and
  // answering to hover, press and click.
  bool HeaderButtons() const;
  void setHeaderButtons(bool buttons);

  class ColumnHeaderList {
   public:
    explicit ColumnHeaderList(ListView& list) : list_(list) {}
    // Adds a column of 96 pixels behind the others and returns its number.
    int Add(const QString& text);

   private:
    ListView& list_;
  };

  // A row, valid as long as the list. Without a row, its texts are empty and setting them does
  // nothing.
  class ListItem {
   public:
    explicit ListItem(QTreeWidgetItem* row = nullptr) : row_(row) {}
    QString Text() const;
    // The texts behind the first, from 1.
    QString SubItems(int index) const;
    void setSubItems(int index, const QString& text);
    bool Selected() const;
    // Selects this row instead of the one that was, and scrolls it into view.
    void Select();

   private:
    QTreeWidgetItem* row_;
  };

  class ListItemList {
   public:
    explicit ListItemList(ListView& list) : list_(list) {}
    int Count() const;
    // Adds a row behind the others.
    ListItem Add(const QString& text);
    // Returns no row if there is none of that number.
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
