// The player opens the file that it is given, and none of the files and servers that the given file
// names.
#include <dlfcn.h>
#include <sys/inotify.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QDir>
#include <QFileInfo>
#include <QTcpServer>
#include <QtEndian>
#include <array>
#include <atomic>
#include <functional>
#include <ostream>
#include <vector>

#include "platform/PlayerTest.h"

namespace {

std::atomic<int> networkBinds = 0;

}  // namespace

// Replaces the system's bind() and counts the calls for the network: a session description makes a
// player listen for packets.
extern "C" int bind(int descriptor, const sockaddr* address, socklen_t length) noexcept {
  using Bind = int (*)(int, const sockaddr*, socklen_t);
  static const auto own = reinterpret_cast<Bind>(::dlsym(RTLD_NEXT, "bind"));
  if (address->sa_family == AF_INET || address->sa_family == AF_INET6) ++networkBinds;
  return own(descriptor, address, length);
}

namespace kelvane::testing {
namespace {

// Records which files of a folder are opened as long as this object lives.
class OpenedFiles {
 public:
  explicit OpenedFiles(const QString& folder) {
    EXPECT_GE(::inotify_add_watch(notifier_, QFile::encodeName(folder), IN_OPEN), 0);
  }
  OpenedFiles(const OpenedFiles&) = delete;
  OpenedFiles& operator=(const OpenedFiles&) = delete;
  ~OpenedFiles() { ::close(notifier_); }

  // Returns the names of the files opened since the last call, sorted, each once. An empty name
  // stands for the folder itself.
  QStringList Names() const {
    QStringList names;
    alignas(inotify_event) std::array<char, 4096> buffer{};
    for (ssize_t length = 0; (length = ::read(notifier_, buffer.data(), buffer.size())) > 0;) {
      for (const char* place = buffer.data(); place < buffer.data() + length;) {
        const auto& event = *reinterpret_cast<const inotify_event*>(place);
        names << (event.len > 0 ? QFile::decodeName(event.name) : QString());
        place += sizeof event + event.len;
      }
    }
    names.sort();
    names.removeDuplicates();
    return names;
  }

 private:
  const int notifier_ = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
};

class PlayerReferences : public PlayerTest {
 protected:
  PlayerReferences() {
    EXPECT_TRUE(server.listen(QHostAddress::LocalHost));
    MakePlain("other.mp4", "blue", 0.5);
    Make("other.mkv", "-i " + InFolder("other.mp4") + " -c copy");
  }

  void ExpectABlackPictureAndNoOtherFile(const QString& name) {
    ExpectABlackPictureAndNoOtherFile(name, [&] { player.setURL(InFolder(name)); });
  }
  void ExpectABlackPictureAndNoOtherFile(const QString& name, const std::function<void()>& open) {
    const int binds = networkBinds;
    const QFileInfo file(InFolder(name));
    const OpenedFiles opened(file.path());
    bool shows = false;
    open();
    EXPECT_TRUE(WaitFor([&] {
      shows |= watch.Colour() != kNothingPlayed;
      return !watch.Core().Active();
    }));
    EXPECT_FALSE(shows);
    EXPECT_EQ(opened.Names(), QStringList{file.fileName()});
    EXPECT_FALSE(server.waitForNewConnection(0));
    EXPECT_EQ(networkBinds, binds);
  }
  void ExpectARedPictureAndNoOtherFile(const QString& name) const {
    const OpenedFiles opened(files.path());
    player.setURL(InFolder(name));
    EXPECT_TRUE(watch.AwaitColour(kPlayedRed));
    EXPECT_TRUE(watch.AwaitEnd());
    EXPECT_EQ(opened.Names(), QStringList{name});
  }

  QTcpServer server;  // never answers
};

struct Reference {
  const char* kind;
  const char* name;
  QByteArray content;  // with SERVER for the server's address and FOLDER for the folder's path
};

void PrintTo(const Reference& reference, std::ostream* out) { *out << reference.kind; }

constexpr char kHls[] = "#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\nother.mp4\n#EXT-X-ENDLIST\n";

const Reference kReferences[]{
    {"Playlist", "movie.mp4", "#EXTM3U\nother.mp4\nSERVER/a.mp4\n"},
    {"HlsOfFiles", "movie.mp4", kHls},
    {"HlsByItsExtension", "movie.m3u8", kHls},
    {"HlsOfAServer", "movie.mp4", QByteArray(kHls).replace("other.mp4", "SERVER/a.ts")},
    {"EditList", "movie.mp4", "# mpv EDL v0\nother.mp4\nSERVER/a.mp4,0,1\n"},
    {"EditListOfAServer", "movie.mp4", "# mpv EDL v0\nSERVER/a.mp4,0,1\n"},
    {"CueSheet", "movie.mp4", "FILE \"other.mp4\" WAVE\n  TRACK 01 AUDIO\n    INDEX 01 00:00:00\n"},
    {"CueSheetOfAMissingFile", "movie.cue",
     "FILE \"none.wav\" WAVE\n  TRACK 01 AUDIO\n    INDEX 01 00:00:00\n"},
    {"Concatenation", "movie.mp4", "ffconcat version 1.0\nfile other.mp4\n"},
    {"NumberedPlaylist", "movie.pls", "[playlist]\nFile1=other.mp4\nFile2=SERVER/a.mp4\n"},
    {"Shortcut", "movie.url", "[InternetShortcut]\nURL=SERVER/a.mp4\n"},
    {"ReferenceList", "movie.mp4", "[Reference]\nRef1=SERVER/a.mp4\n"},
    {"DashManifest", "movie.mpd",
     "<?xml version=\"1.0\"?><MPD xmlns=\"urn:mpeg:dash:schema:mpd:2011\" type=\"static\" "
     "mediaPresentationDuration=\"PT1S\" minBufferTime=\"PT1S\" "
     "profiles=\"urn:mpeg:dash:profile:isoff-on-demand:2011\"><Period><AdaptationSet "
     "mimeType=\"video/mp4\"><Representation id=\"1\" bandwidth=\"1000\"><BaseURL>"
     "FOLDER/other.mp4</BaseURL></Representation></AdaptationSet></Period></MPD>"},
    {"SessionDescription", "movie.sdp",
     "v=0\no=- 0 0 IN IP4 127.0.0.1\ns=-\nc=IN IP4 127.0.0.1\nt=0 0\n"
     "m=video 5004 RTP/AVP 96\na=rtpmap:96 H264/90000\n"},
    {"SubtitleIndex", "movie.idx",
     "# VobSub index file, v7\nsize: 720x576\nid: en, index: 0\n"
     "timestamp: 00:00:00:000, filepos: 000000000\n"},
    {"DvdIndex", "VIDEO_TS.IFO", QByteArray("DVDVIDEO-VMG").leftJustified(4096, '\0')}};

class PlayerReferenceFile : public PlayerReferences,
                            public ::testing::WithParamInterface<Reference> {
 protected:
  void WriteReference() const {
    Write("movie.sub", "the subtitles of the index");
    const QString address = u"http://127.0.0.1:%1"_s.arg(server.serverPort());
    Write(GetParam().name, QByteArray(GetParam().content)
                               .replace("SERVER", address.toLatin1())
                               .replace("FOLDER", QFile::encodeName(files.path())));
  }
};

TEST_P(PlayerReferenceFile, IsTheOnlyFileThatIsOpened) {
  WriteReference();
  ExpectABlackPictureAndNoOtherFile(GetParam().name);
}

TEST_P(PlayerReferenceFile, IsTheOnlyFileThatOpenPausedOrASeekOpensIfThePictureIsFitted) {
  WriteReference();
  player.setFitsBox();
  const auto seek = [this] { player.controls.setCurrentPosition(0.2); };
  ExpectABlackPictureAndNoOtherFile(GetParam().name, [&] {
    player.OpenPaused(InFolder(GetParam().name));
    seek();
  });
  ExpectABlackPictureAndNoOtherFile(GetParam().name, seek);
}

INSTANTIATE_TEST_SUITE_P(Kinds, PlayerReferenceFile, ::testing::ValuesIn(kReferences),
                         [](const auto& instance) { return std::string(instance.param.kind); });

TEST_F(PlayerReferences, DoesNotUnpackAnArchive) {
  ASSERT_TRUE(RunTool(
      "cmake", {"-E", "tar", "cf", InFolder("movie.zip"), "--format=zip", InFolder("other.mkv")}));
  ExpectABlackPictureAndNoOtherFile("movie.zip");
}

// A player recognises a Blu-ray disc by either of these files.
TEST_F(PlayerReferences, DoesNotFollowTheIndexOfABluRay) {
  ASSERT_TRUE(QDir(files.path()).mkpath("BDMV/PLAYLIST"));
  Write("BDMV/index.bdmv", QByteArray("INDX0200").leftJustified(200, '\0'));
  Write("BDMV/MovieObject.bdmv", QByteArray("MOBJ0200").leftJustified(200, '\0'));
  ExpectABlackPictureAndNoOtherFile("BDMV/index.bdmv");
  ExpectABlackPictureAndNoOtherFile("BDMV/MovieObject.bdmv");
}

QByteArray BigEndian(qsizetype value, int bytes) {
  QByteArray big;
  for (int byte = bytes - 1; byte >= 0; --byte) big += static_cast<char>(value >> (8 * byte));
  return big;
}

// Returns an atom of a QuickTime movie.
QByteArray Atom(const QByteArray& name, const QByteArray& content) {
  return BigEndian(4 + name.size() + content.size(), 4) + name + content;
}

TEST_F(PlayerReferences, DoesNotFollowAMovieToTheFileWithItsPictures) {
  QByteArray movie = ContentOf(Make("other.mov", "-i " + InFolder("other.mp4") + " -an -c copy"));
  movie.remove(0, movie.indexOf("moov") - 4);
  const QByteArray path = "/other.mov";
  const QByteArray inTheMovie = Atom("url ", BigEndian(1, 4));
  const QByteArray names(134, '\0');  // names and dates, which players ignore
  const QByteArray levels = BigEndian(1, 2) + BigEndian(1, 2) + QByteArray(16, '\0');
  const QByteArray inTheOther =
      Atom("alis", names + levels + BigEndian(2, 2) + BigEndian(path.size(), 2) + path +
                       BigEndian(0xFFFF, 2) + BigEndian(0, 2));
  Replace(movie, inTheMovie, inTheOther);
  for (const char* around : {"moov", "trak", "mdia", "minf", "dinf", "dref"}) {
    ASSERT_EQ(movie.count(around), 1) << around;
    const qsizetype length = movie.indexOf(around) - 4;
    const auto before = qFromBigEndian<quint32>(movie.constData() + length);
    movie.replace(length, 4, BigEndian(before + inTheOther.size() - inTheMovie.size(), 4));
  }
  const QString file = Write("movie.mov", movie);
  QString printed;
  ASSERT_TRUE(RunTool("ffmpeg", {"-enable_drefs", "1", "-i", file, "-f", "null", "-"}, &printed))
      << printed.toStdString();
  ExpectABlackPictureAndNoOtherFile("movie.mov");
}

TEST_F(PlayerReferences, DoesNotPlayTheFilesOfAFolder) {
  ASSERT_TRUE(QDir(files.path()).mkdir("folder"));
  ASSERT_TRUE(QFile::rename(InFolder("other.mkv"), InFolder("folder/other.mkv")));
  const OpenedFiles opened(InFolder("folder"));
  player.setURL(InFolder("folder"));
  EXPECT_TRUE(watch.AwaitEnd());
  EXPECT_FALSE(opened.Names().contains("other.mkv"));
}

// A chapter of a Matroska file may name another file by that file's unique number; players look for
// such a file in the folder. Here the chapter's title is overwritten with the number of other.mkv,
// and the flag of a default edition with that of an ordered one.
TEST_F(PlayerReferences, DoesNotFollowAChapterToItsFile) {
  const QByteArray other = ContentOf(InFolder("other.mkv"));
  const qsizetype number = other.indexOf(QByteArray::fromHex("73a490"));
  ASSERT_GT(number, 0);
  const QString chapters =
      Write("chapters.txt",
            ";FFMETADATA1\n[CHAPTER]\nTIMEBASE=1/1000\nSTART=0\nEND=500\ntitle=123456789\n");
  QByteArray movie =
      ContentOf(Make("movie.mkv", "-i " + MakePlain("red.mp4", "red", 0.5) + " -i " + chapters +
                                      " -map_chapters 1 -c copy -write_crc32 0"));
  const QByteArray defaultFlag = QByteArray::fromHex("45db8101");
  const QByteArray orderedFlag = QByteArray::fromHex("45dd8101");
  Replace(movie, defaultFlag, orderedFlag);
  const QByteArray title =
      QByteArray::fromHex("80918589") + "123456789" + QByteArray::fromHex("437c83") + "und";
  Replace(movie, title, QByteArray::fromHex("6e6790") + other.mid(number + 3, 16));
  Write("movie.mkv", movie);
  ExpectARedPictureAndNoOtherFile("movie.mkv");
}

TEST_F(PlayerReferences, DoesNotOpenSoundTextOrCoverFilesBesideAVideo) {
  MakePlain("movie.mp4", "red", 0.5);
  Make("movie.mka", "-f lavfi -i sine=duration=1");
  for (const char* picture : {"movie.jpg", "cover.jpg"}) {
    Make(picture, "-i " + InFolder("other.mp4") + " -frames:v 1");
  }
  for (const char* text : {"movie.srt", "movie.en.srt"}) {
    Write(text, "1\n00:00:00,000 --> 00:00:01,000\nText\n");
  }
  ExpectARedPictureAndNoOtherFile("movie.mp4");
}

TEST_F(PlayerReferences, PlaysFilesWhoseNamesLookLikeAddressesOptionsOrPatterns) {
  const QString red = MakePlain("red.mp4", "red", 20);
  ASSERT_TRUE(QDir(files.path()).mkdir("http:"));
  ASSERT_TRUE(QDir(files.path()).mkdir("memory:"));
  const QString before = QDir::currentPath();
  ASSERT_TRUE(QDir::setCurrent(files.path()));
  for (const QString& name :
       {u"http://a.mp4"_s, u"memory://#EXTM3U"_s, u"-"_s, u"-version"_s, u"--pause.mp4"_s,
        u"%03d.mp4"_s, u"a%20b.mp4"_s, u"file:%2Fred.mp4"_s, u"~"_s, u"edl:a.mp4"_s,
        u"${path}.mp4"_s, u"*.mp4"_s, u"rote Fl\u00e4che \u8d64.mp4"_s}) {
    ASSERT_TRUE(QFile::copy(red, InFolder(name))) << name.toStdString();
    for (const QString& path : {InFolder(name), name}) {
      SCOPED_TRACE(path.toStdString());
      player.setURL(path);
      EXPECT_TRUE(watch.AwaitColour(kPlayedRed));
      EXPECT_TRUE(watch.AwaitMove());
      player.controls.stop();
      EXPECT_TRUE(watch.AwaitColour(kNothingPlayed));
    }
  }
  EXPECT_TRUE(QDir::setCurrent(before));
}

TEST_F(PlayerReferences, FollowsALinkOfTheFileSystem) {
  ASSERT_TRUE(QFile::link(MakePlain("red.mp4", "red", 5), InFolder("link.mp4")));
  player.setURL(InFolder("link.mp4"));
  EXPECT_TRUE(watch.AwaitColour(kPlayedRed));
}

TEST_F(PlayerReferences, PlaysAFileWithSeveralSoundsAndChaptersOfItsOwn) {
  const QString chapters =
      Write("chapters.txt",
            ";FFMETADATA1\n[CHAPTER]\nTIMEBASE=1/1000\nSTART=0\nEND=200\ntitle=One\n"
            "[CHAPTER]\nTIMEBASE=1/1000\nSTART=200\nEND=2000\ntitle=Two\n");
  for (const char* name : {"movie.mkv", "movie.mp4", "movie.mov"}) {
    SCOPED_TRACE(name);
    player.setURL(Make(name,
                       "-f lavfi -i color=red:size=320x180:rate=25:duration=2"
                       " -f lavfi -i sine=440:duration=2 -f lavfi -i sine=880:duration=2 -i " +
                           chapters +
                           " -map 0 -map 1 -map 2 -map_chapters 3"
                           " -pix_fmt yuv420p -preset ultrafast"));
    EXPECT_TRUE(watch.AwaitColour(kPlayedRed));
    EXPECT_TRUE(watch.AwaitPosition(1));
    EXPECT_TRUE(watch.AwaitEnd());
  }
}

}  // namespace
}  // namespace kelvane::testing
