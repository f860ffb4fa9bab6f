#include "support/RecordingTools.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <fstream>

#include "platform/App.h"

namespace kelvane::testing {
namespace {

using namespace Qt::StringLiterals;

}  // namespace

RecordingTools::RecordingTools()
    : folder_(QDir::tempPath() + "/tools-XXXXXX"), formerPath_(App::Path()) {
  for (const char* tool : {"ffprobe", "ffplay", "ffmpeg"}) Make(tool);
  for (const char* name : {"size", "duration", "ffplay", "ffmpeg"}) {
    Write(name + u".commands"_s, u":\n"_s);
  }
  App::setPath(Path().toStdString());
}

RecordingTools::~RecordingTools() { App::setPath(formerPath_); }

void RecordingTools::Make(const QString& tool) const {
  // Each run records itself in one write, so that simultaneous runs don't mix.
  QString script = QStringLiteral(
      "#!/bin/sh\n"
      "line=TOOL\n"
      "for argument; do line=\"$line | $argument\"; done\n"
      "printf '%s\\n' \"$line\" >> 'FOLDER/runs'\n"
      "case TOOL$1 in\n"
      "ffprobe-v) . 'FOLDER/size.commands' ;;\n"
      "ffprobe*) . 'FOLDER/duration.commands' ;;\n"
      "*) . 'FOLDER/TOOL.commands' ;;\n"
      "esac\n");
  script.replace("FOLDER", Path()).replace("TOOL", tool);
  Write(tool, script);
  QFile(folder_.filePath(tool))
      .setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

// Replaces the file in one step, since a shell may still be reading it.
void RecordingTools::Write(const QString& name, const QString& text) const {
  QSaveFile file(folder_.filePath(name));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString() << " can't be opened";
  file.write(text.toUtf8());
  ASSERT_TRUE(file.commit()) << name.toStdString() << " can't be written";
}

QString RecordingTools::MakeFile(const QString& name) const {
  Write(name, u"contents"_s);
  return folder_.filePath(name);
}

std::string RecordingTools::PathOf(const char* name) const {
  return folder_.filePath(QLatin1String(name)).toStdString();
}

void RecordingTools::Remove(const QString& tool) const {
  ASSERT_TRUE(QFile::remove(folder_.filePath(tool))) << tool.toStdString() << " can't be removed";
}

std::vector<std::string> RecordingTools::Runs() const {
  std::vector<std::string> runs;
  std::ifstream file(PathOf("runs"));
  for (std::string line; std::getline(file, line);) {
    if (!line.empty()) runs.push_back(line);
  }
  return runs;
}

QString PrintCommands(const QString& text) {
  return u"printf '%s' '"_s + QString(text).replace(u'\'', u"'\\''"_s) + u"'\n"_s;
}

QString BlockEndingIn(const QString& end) { return end.rightJustified(256, u'.'); }

QString WaitCommands(const Gate& gate) { return QString::fromStdString(gate.WaitCommands()); }

}  // namespace kelvane::testing
