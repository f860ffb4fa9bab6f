#pragma once

#include <QDirIterator>
#include <QFile>
#include <QString>
#include <map>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace kelvane::testing {

// The files of a folder and of the folders in it, with their contents.
class Snapshot {
 public:
  explicit Snapshot(QString folder) : folder_(std::move(folder)), contents_(Read()) {}

  // The sorted names of the files that are new or changed since construction.
  std::vector<std::string> Changed() const {
    std::vector<std::string> changed;
    for (const auto& [name, content] : Read()) {
      const auto former = contents_.find(name);
      if (former == contents_.end() || former->second != content) changed.push_back(name);
    }
    return changed;
  }

 private:
  std::map<std::string, QByteArray> Read() const {
    std::map<std::string, QByteArray> contents;
    QDirIterator each(folder_, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (each.hasNext()) {
      QFile file(each.next());
      const bool opened = file.open(QIODevice::ReadOnly);
      contents[file.fileName().mid(folder_.size() + 1).toStdString()] =
          opened ? file.readAll() : QByteArray();
    }
    return contents;
  }

  QString folder_;
  std::map<std::string, QByteArray> contents_;
};

// A case's name, the file name that is typed, what the dialog says about that, and the files that
// the tool then makes or changes. In `remark`, FOLDER stands for the folder of the files.
struct NewName {
  const char* name;
  QString typed;
  QString remark;
  std::vector<std::string> changed;
};

inline void PrintTo(const NewName& tested, std::ostream* out) { *out << tested.name; }

}  // namespace kelvane::testing
