#include "support/RecordingTools.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStringList>
#include <array>

#include "platform/App.h"

namespace kelvane::testing {
namespace {

constexpr std::array kTools{"ffprobe", "ffplay", "ffmpeg"};

QString Quoted(QString text) {
  return QLatin1Char('\'') + text.replace(QLatin1Char('\''), QLatin1String("'\\''")) +
         QLatin1Char('\'');
}

}  // namespace

RecordingTools::RecordingTools()
    : folder_(QDir::tempPath() + QLatin1String("/tools-XXXXXX")), formerPath_(App::Path()) {
  for (const char* tool : kTools) Make(QLatin1String(tool));
  for (const char* name : {"size", "duration", "ffplay", "ffmpeg"}) {
    Write(QLatin1String(name) + QLatin1String(".commands"), QStringLiteral(":\n"));
  }
  App::setPath(Path().toStdString());
}

RecordingTools::~RecordingTools() { App::setPath(formerPath_); }

void RecordingTools::Make(const QString& tool) const {
  // One write for each run, so that runs at the same time don't mix.
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
  script.replace(QLatin1String("FOLDER"), Path()).replace(QLatin1String("TOOL"), tool);
  Write(tool, script);
  QFile(Path() + QLatin1Char('/') + tool)
      .setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

// In one step: a shell may still be reading the former commands.
void RecordingTools::Write(const QString& name, const QString& text) const {
  QSaveFile file(Path() + QLatin1Char('/') + name);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
  file.write(text.toUtf8());
  ASSERT_TRUE(file.commit()) << name.toStdString();
}

QString RecordingTools::File(const QString& name) const {
  Write(name, QStringLiteral("contents"));
  return Path() + QLatin1Char('/') + name;
}

std::string RecordingTools::PathOf(const char* name) const {
  return folder_.filePath(QLatin1String(name)).toStdString();
}

void RecordingTools::SizeProbeDoes(const QString& commands) const {
  Write(QStringLiteral("size.commands"), commands);
}

void RecordingTools::DurationProbeDoes(const QString& commands) const {
  Write(QStringLiteral("duration.commands"), commands);
}

void RecordingTools::PreviewDoes(const QString& commands) const {
  Write(QStringLiteral("ffplay.commands"), commands);
}

void RecordingTools::CropDoes(const QString& commands) const {
  Write(QStringLiteral("ffmpeg.commands"), commands);
}

void RecordingTools::Remove(const QString& tool) const {
  ASSERT_TRUE(QFile::remove(Path() + QLatin1Char('/') + tool)) << tool.toStdString();
}

std::vector<std::string> RecordingTools::Runs() const {
  std::vector<std::string> runs;
  QFile file(Path() + QLatin1String("/runs"));
  if (!file.open(QIODevice::ReadOnly)) return runs;
  const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
  for (const QString& line : lines) {
    if (!line.isEmpty()) runs.push_back(line.toStdString());
  }
  return runs;
}

QString Print(const QString& text) {
  return QStringLiteral("printf '%s' ") + Quoted(text) + QLatin1Char('\n');
}

QString BlockEndingIn(const QString& end) {
  constexpr qsizetype kBlock = 256;
  return QString(kBlock - end.size(), QLatin1Char('.')) + end;
}

QString Wait(const Gate& gate) { return QString::fromStdString(gate.Wait()); }

}  // namespace kelvane::testing
