// The file that a tool writes under a temporary name.
#include "stabiliser/NewFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <QTemporaryDir>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace kelvane {
namespace {

namespace fs = std::filesystem;

class NewFiles : public ::testing::Test {
 protected:
  static void Write(const std::string& path, const std::string& text) {
    std::ofstream(path) << text;
  }
  static std::string Content(const std::string& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  std::string PathOf(const QString& name) const { return folder_.filePath(name).toStdString(); }
  QStringList Names() const { return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden); }

 private:
  QTemporaryDir folder_{QDir::tempPath() + "/100% \"my\" vidéos-XXXXXX"};
};

TEST_F(NewFiles, HaveATemporaryNameBesideTheirOwnUntilTheyAreKept) {
  const std::string path = PathOf("my \"new\" ä.mp4");
  {
    NewFile file(path);
    const fs::path tool = file.ToolPath();
    EXPECT_TRUE(tool.filename().string().starts_with(".kelvane-"));
    EXPECT_EQ(tool.extension(), ".mp4");
    EXPECT_EQ(tool.string().find_first_of(" %\""), std::string::npos);
    EXPECT_TRUE(fs::equivalent(tool.parent_path(), fs::path(path).parent_path()));
    EXPECT_FALSE(fs::exists(path));
    Write(tool, "new");
    file.Keep();
  }
  EXPECT_EQ(Content(path), "new");
  EXPECT_EQ(Names(), QStringList("my \"new\" ä.mp4"));
}

TEST_F(NewFiles, LeaveAnExistingFileUntouchedUnlessTheyAreKept) {
  const std::string path = PathOf("clip.mp4");
  Write(path, "former");
  Write(NewFile(path).ToolPath(), "new");
  EXPECT_EQ(Content(path), "former");
  EXPECT_EQ(Names(), QStringList("clip.mp4"));
  NewFile file(path);
  Write(file.ToolPath(), "new");
  file.Keep();
  EXPECT_EQ(Content(path), "new");
}

TEST_F(NewFiles, AreRefusedAtOnceIfTheFileSystemRefusesTheName) {
  constexpr int kTooLong = 256;  // bytes
  EXPECT_THROW(NewFile(PathOf(QString(kTooLong, 'a'))), std::system_error);
  EXPECT_EQ(Names(), QStringList());
}

// The dialog doesn't ask before such a link is replaced.
TEST_F(NewFiles, DoNotReplaceALinkThatLeadsNowhere) {
  fs::create_symlink(PathOf("missing.mp4"), PathOf("link.mp4"));
  EXPECT_THROW(NewFile(PathOf("link.mp4")), std::system_error);
  EXPECT_TRUE(fs::is_symlink(PathOf("link.mp4")));
}

TEST_F(NewFiles, HaveTheModeThatTheUmaskAllows) {
  const mode_t former = ::umask(S_IWGRP | S_IRWXO);
  const NewFile file(PathOf("clip.mp4"));
  ::umask(former);
  EXPECT_EQ(fs::status(file.ToolPath()).permissions(), fs::perms(0640));
}

TEST_F(NewFiles, CanNotBeMadeInAFolderThatIsNotThere) {
  EXPECT_THROW(NewFile(PathOf("missing/clip.mp4")), std::system_error);
}

}  // namespace
}  // namespace kelvane
