// Files that name others. The player opens the one that was chosen, and nothing else.
#include <arpa/inet.h>
#include <dlfcn.h>
#include <netinet/in.h>
#include <sys/inotify.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QDir>
#include <QFileInfo>
#include <QtEndian>
#include <algorithm>
#include <array>
#include <atomic>
#include <ostream>
#include <vector>

#include "platform/PlayerTest.h"

namespace {

std::atomic<int> networkBinds = 0;

}  // namespace

// Stands before the system's own: a session description makes the player listen, not ask.
extern "C" int bind(int descriptor, const sockaddr* address, socklen_t length) noexcept {
  using Bind = int (*)(int, const sockaddr*, socklen_t);
  static const auto own = reinterpret_cast<Bind>(::dlsym(RTLD_NEXT, "bind"));
  if (address->sa_family == AF_INET || address->sa_family == AF_INET6) ++networkBinds;
  return own(descriptor, address, length);
}

namespace kelvane::testing {
namespace {

// Listens on the loopback device and answers nothing.
class Server {
 public:
  Server() {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto* const any = reinterpret_cast<sockaddr*>(&address);
    EXPECT_EQ(::bind(socket_, any, length), 0);
    EXPECT_EQ(::listen(socket_, 8), 0);
    EXPECT_EQ(::getsockname(socket_, any, &length), 0);
    port_ = ntohs(address.sin_port);
  }
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;
  ~Server() { ::close(socket_); }

  QString Address() const { return u"http://127.0.0.1:%1"_s.arg(port_); }
  bool WasConnectedTo() const {
    const int connection = ::accept(socket_, nullptr, nullptr);
    if (connection >= 0) ::close(connection);
    return connection >= 0;
  }

 private:
  const int socket_ = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
  int port_ = 0;
};

// Notes what is opened in a folder from now on.
class Openings {
 public:
  explicit Openings(const QString& folder) {
    EXPECT_GE(::inotify_add_watch(notifier_, QFile::encodeName(folder), IN_OPEN), 0);
  }
  Openings(const Openings&) = delete;
  Openings& operator=(const Openings&) = delete;
  ~Openings() { ::close(notifier_); }

  // Each name once, in their order; the folder itself, where it was listed, as an empty one.
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

class FilesBesideOthers : public PlayerTest {
 protected:
  FilesBesideOthers() {
    MakePlain("other.mp4", "blue", 0.5);
    Make("other.mkv", "-i " + InFolder("other.mp4") + " -c copy");
  }

  void ExpectNothingButBlackOf(const QString& name) const {
    const int binds = networkBinds;
    const QFileInfo file(InFolder(name));
    const Openings opened(file.path());
    bool shows = false;
    player.setURL(InFolder(name));
    EXPECT_TRUE(WaitFor([&] {
      shows |= watch.Colour() != kNothingPlayed;
      return !watch.Core().Active();
    }));
    EXPECT_FALSE(shows);
    EXPECT_EQ(opened.Names(), QStringList{file.fileName()});
    EXPECT_FALSE(server.WasConnectedTo());
    EXPECT_EQ(networkBinds, binds);
  }
  // Of a red video.
  void ExpectThatItPlaysAlone(const QString& name) const {
    const Openings opened(files.path());
    player.setURL(InFolder(name));
    EXPECT_TRUE(watch.AwaitColour(kPlayedRed));
    EXPECT_TRUE(watch.AwaitEnd());
    EXPECT_EQ(opened.Names(), QStringList{name});
  }

  const Server server;
};

struct Reference {
  const char* kind;
  const char* name;
  const char* text;  // with SERVER for the server's address and FOLDER for the folder's path
};

void PrintTo(const Reference& reference, std::ostream* out) { *out << reference.kind; }

constexpr std::array kReferences{
    Reference{"Playlist", "movie.mp4", "#EXTM3U\nother.mp4\nSERVER/a.mp4\n"},
    Reference{"HlsOfFiles", "movie.mp4",
              "#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\nother.mp4\n#EXT-X-ENDLIST\n"},
    Reference{"HlsByItsExtension", "movie.m3u8",
              "#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\nother.mp4\n#EXT-X-ENDLIST\n"},
    Reference{"HlsOfAServer", "movie.mp4",
              "#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\nSERVER/a.ts\n#EXT-X-ENDLIST\n"},
    Reference{"EditList", "movie.mp4", "# mpv EDL v0\nother.mp4\nSERVER/a.mp4,0,1\n"},
    Reference{"EditListOfAServer", "movie.mp4", "# mpv EDL v0\nSERVER/a.mp4,0,1\n"},
    Reference{"CueSheet", "movie.mp4",
              "FILE \"other.mp4\" WAVE\n  TRACK 01 AUDIO\n    INDEX 01 00:00:00\n"},
    Reference{"CueSheetOfAMissingFile", "movie.cue",
              "FILE \"none.wav\" WAVE\n  TRACK 01 AUDIO\n    INDEX 01 00:00:00\n"},
    Reference{"Concatenation", "movie.mp4", "ffconcat version 1.0\nfile other.mp4\n"},
    Reference{"NumberedPlaylist", "movie.pls", "[playlist]\nFile1=other.mp4\nFile2=SERVER/a.mp4\n"},
    Reference{"Shortcut", "movie.url", "[InternetShortcut]\nURL=SERVER/a.mp4\n"},
    Reference{"ReferenceList", "movie.mp4", "[Reference]\nRef1=SERVER/a.mp4\n"},
    Reference{"DashManifest", "movie.mpd",
              "<?xml version=\"1.0\"?><MPD xmlns=\"urn:mpeg:dash:schema:mpd:2011\" type=\"static\" "
              "mediaPresentationDuration=\"PT1S\" minBufferTime=\"PT1S\" "
              "profiles=\"urn:mpeg:dash:profile:isoff-on-demand:2011\"><Period><AdaptationSet "
              "mimeType=\"video/mp4\"><Representation id=\"1\" bandwidth=\"1000\"><BaseURL>"
              "FOLDER/other.mp4</BaseURL></Representation></AdaptationSet></Period></MPD>"},
    Reference{"SessionDescription", "movie.sdp",
              "v=0\no=- 0 0 IN IP4 127.0.0.1\ns=-\nc=IN IP4 127.0.0.1\nt=0 0\n"
              "m=video 5004 RTP/AVP 96\na=rtpmap:96 H264/90000\n"},
    Reference{"SubtitleIndex", "movie.idx",
              "# VobSub index file, v7\nsize: 720x576\nid: en, index: 0\n"
              "timestamp: 00:00:00:000, filepos: 000000000\n"}};

class AFileThatNames : public FilesBesideOthers, public ::testing::WithParamInterface<Reference> {};

TEST_P(AFileThatNames, OthersIsTheOnlyOneThatIsOpened) {
  const QString name = GetParam().name;
  Write("movie.sub", "what an index of subtitles belongs to");
  Write(name, QByteArray(GetParam().text)
                  .replace("SERVER", server.Address().toLatin1())
                  .replace("FOLDER", QFile::encodeName(files.path())));
  ExpectNothingButBlackOf(name);
}

INSTANTIATE_TEST_SUITE_P(Player, AFileThatNames, ::testing::ValuesIn(kReferences),
                         [](const auto& instance) { return std::string(instance.param.kind); });

QByteArray BigEndian(qsizetype value, int bytes) {
  QByteArray big;
  for (int byte = bytes - 1; byte >= 0; --byte) big += static_cast<char>(value >> (8 * byte));
  return big;
}

QByteArray LittleEndian(qsizetype value, int bytes) {
  QByteArray little = BigEndian(value, bytes);
  std::reverse(little.begin(), little.end());
  return little;
}

quint32 Checksum(const QByteArray& content) {
  quint32 sum = ~0U;
  for (const char byte : content) {
    sum ^= static_cast<unsigned char>(byte);
    for (int bit = 0; bit < 8; ++bit) sum = sum >> 1 ^ ((sum & 1) != 0 ? 0xEDB88320U : 0U);
  }
  return ~sum;
}

// The tool that packs isn't among those that the tests need: a file that is stored in an archive
// lies between two headers, by its length and checksum.
TEST_F(FilesBesideOthers, AreNotUnpackedFromAnArchive) {
  const QByteArray name = "other.mkv";
  const QByteArray inside = ContentOf(InFolder(name));
  const QByteArray size = LittleEndian(inside.size(), 4);
  const QByteArray about = LittleEndian(10, 2) + QByteArray(2 + 2 + 4, '\0') +
                           LittleEndian(Checksum(inside), 4) + size + size +
                           LittleEndian(name.size(), 2) + LittleEndian(0, 2);
  const QByteArray file = "PK\3\4" + about + name + inside;
  const QByteArray directory =
      "PK\1\2" + LittleEndian(10, 2) + about + QByteArray(2 + 2 + 2 + 4 + 4, '\0') + name;
  Write("movie.zip", file + directory + "PK\5\6" + LittleEndian(0, 4) + LittleEndian(1, 2) +
                         LittleEndian(1, 2) + LittleEndian(directory.size(), 4) +
                         LittleEndian(file.size(), 4) + LittleEndian(0, 2));
  ExpectNothingButBlackOf("movie.zip");
}

TEST_F(FilesBesideOthers, AreNotLookedForByTheIndexOfADisc) {
  constexpr int kTwoSectors = 4096;
  Write("VIDEO_TS.IFO", QByteArray("DVDVIDEO-VMG").leftJustified(kTwoSectors, '\0'));
  ExpectNothingButBlackOf("VIDEO_TS.IFO");
}

// The two files by either of which a disc of that kind is known, in their folder.
TEST_F(FilesBesideOthers, AreNotLookedForByTheIndexOfABluRay) {
  ASSERT_TRUE(QDir(files.path()).mkpath("BDMV/PLAYLIST"));
  Write("BDMV/index.bdmv", QByteArray("INDX0200").leftJustified(200, '\0'));
  Write("BDMV/MovieObject.bdmv", QByteArray("MOBJ0200").leftJustified(200, '\0'));
  ExpectNothingButBlackOf("BDMV/index.bdmv");
  ExpectNothingButBlackOf("BDMV/MovieObject.bdmv");
}

// What a QuickTime movie consists of.
QByteArray Box(const QByteArray& name, const QByteArray& content) {
  return BigEndian(4 + name.size() + content.size(), 4) + name + content;
}

// A movie may refer for its pictures to another file, which is known by its path.
TEST_F(FilesBesideOthers, AreNotOpenedForPicturesThatLieInThem) {
  QByteArray movie = ContentOf(Make("other.mov", "-i " + InFolder("other.mp4") + " -an -c copy"));
  movie.remove(0, movie.indexOf("moov") - 4);
  const QByteArray path = "/other.mov";
  const QByteArray inIt = Box("url ", BigEndian(1, 4));
  const QByteArray names(134, '\0');  // of volume and file, and dates: the path alone counts
  const QByteArray levels = BigEndian(1, 2) + BigEndian(1, 2) + QByteArray(16, '\0');
  const QByteArray elsewhere =
      Box("alis", names + levels + BigEndian(2, 2) + BigEndian(path.size(), 2) + path +
                      BigEndian(0xFFFF, 2) + BigEndian(0, 2));
  Replace(movie, inIt, elsewhere);
  for (const char* around : {"moov", "trak", "mdia", "minf", "dinf", "dref"}) {
    ASSERT_EQ(movie.count(around), 1) << around;
    const qsizetype length = movie.indexOf(around) - 4;
    const auto before = qFromBigEndian<quint32>(movie.constData() + length);
    movie.replace(length, 4, BigEndian(before + elsewhere.size() - inIt.size(), 4));
  }
  const QString file = Write("movie.mov", movie);
  QString printed;
  ASSERT_TRUE(RunTool("ffmpeg", {"-enable_drefs", "1", "-i", file, "-f", "null", "-"}, &printed))
      << printed.toStdString();
  ExpectNothingButBlackOf("movie.mov");
}

TEST_F(FilesBesideOthers, AreNotPlayedForTheirFolder) {
  ASSERT_TRUE(QDir(files.path()).mkdir("folder"));
  ASSERT_TRUE(QFile::rename(InFolder("other.mkv"), InFolder("folder/other.mkv")));
  const Openings opened(InFolder("folder"));
  player.setURL(InFolder("folder"));
  EXPECT_TRUE(watch.AwaitEnd());
  EXPECT_FALSE(opened.Names().contains("other.mkv"));
}

// A chapter may be said to lie in another file, which is known by its number and looked for in the
// folder.
TEST_F(FilesBesideOthers, AreNotOpenedForChaptersThatLieInThem) {
  const QByteArray other = ContentOf(InFolder("other.mkv"));
  const qsizetype number = other.indexOf(QByteArray::fromHex("73a490"));
  ASSERT_GT(number, 0);
  const QString chapters =
      Write("chapters.txt",
            ";FFMETADATA1\n[CHAPTER]\nTIMEBASE=1/1000\nSTART=0\nEND=500\ntitle=123456789\n");
  QByteArray movie =
      ContentOf(Make("movie.mkv", "-i " + MakePlain("red.mp4", "red", 0.5) + " -i " + chapters +
                                      " -map_chapters 1 -c copy -write_crc32 0"));
  const QByteArray byDefault = QByteArray::fromHex("45db8101");
  const QByteArray inOrder = QByteArray::fromHex("45dd8101");
  Replace(movie, byDefault, inOrder);
  const QByteArray title =
      QByteArray::fromHex("80918589") + "123456789" + QByteArray::fromHex("437c83") + "und";
  Replace(movie, title, QByteArray::fromHex("6e6790") + other.mid(number + 3, 16));
  Write("movie.mkv", movie);
  ExpectThatItPlaysAlone("movie.mkv");
}

TEST_F(FilesBesideOthers, AreNotTakenForTheirSoundTextOrCover) {
  MakePlain("movie.mp4", "red", 0.5);
  Make("movie.mka", "-f lavfi -i sine=duration=1");
  for (const char* picture : {"movie.jpg", "cover.jpg"}) {
    Make(picture, "-i " + InFolder("other.mp4") + " -frames:v 1");
  }
  for (const char* text : {"movie.srt", "movie.en.srt"}) {
    Write(text, "1\n00:00:00,000 --> 00:00:01,000\nText\n");
  }
  ExpectThatItPlaysAlone("movie.mp4");
}

// No name is an address, an option or a pattern.
TEST_F(FilesBesideOthers, AreTakenByTheirNamesWhateverTheseLookLike) {
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
      EXPECT_TRUE(watch.Moves());
      player.controls.stop();
      EXPECT_TRUE(watch.AwaitColour(kNothingPlayed));
    }
  }
  EXPECT_TRUE(QDir::setCurrent(before));
}

TEST_F(FilesBesideOthers, ArePlayedThroughALink) {
  ASSERT_TRUE(QFile::link(MakePlain("red.mp4", "red", 5), InFolder("link.mp4")));
  player.setURL(InFolder("link.mp4"));
  EXPECT_TRUE(watch.AwaitColour(kPlayedRed));
}

TEST_F(FilesBesideOthers, ThatHaveSeveralSoundsAndChaptersOfTheirOwnPlay) {
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
