// The sound that the player hands to the sound system, which in these tests writes it into a file.
#include <QFile>
#include <cmath>
#include <cstring>
#include <vector>

#include "platform/PlayerTest.h"

namespace kelvane::testing {
namespace {

// The root mean square of each channel.
struct Loudness {
  double left = 0;
  double right = 0;
};

class PlayerSound : public PlayerTest {
 protected:
  void SetUp() override {
    UseSoundSystem(
        "pcm.silence { type null }\n"
        "pcm.writer { type file format raw slave.pcm silence file \"" +
        heard_.toUtf8() +
        "\" }\n"
        "pcm.!default { type plug slave { pcm writer format FLOAT_LE channels 2 } }\n");
  }
  void TearDown() override { qunsetenv("ALSA_CONFIG_PATH"); }

  void UseSoundSystem(const QByteArray& configuration) const {
    qputenv("ALSA_CONFIG_PATH", Write("sound.conf", configuration).toUtf8());
  }

  // Makes a file with the same tone on both channels.
  QString MakeStereo() const {
    return Make("stereo.flac",
                "-f lavfi -i aevalsrc='0.5*sin(440*2*PI*t)|0.5*sin(440*2*PI*t)':duration=2");
  }

  Loudness Hear(const QString& file) const {
    QFile::remove(heard_);
    player.setURL(file);
    return HearToTheEnd();
  }
  Loudness HearToTheEnd() const {
    EXPECT_TRUE(watch.AwaitEnd());
    const QByteArray bytes = ContentOf(heard_);
    std::vector<float> samples(static_cast<std::size_t>(bytes.size()) / sizeof(float));
    EXPECT_GT(samples.size(), 44'100U) << "less than half a second of two channels was heard";
    std::memcpy(samples.data(), bytes.constData(), samples.size() * sizeof(float));
    Loudness sum;
    for (std::size_t place = 0; place + 1 < samples.size(); place += 2) {
      sum.left += samples[place] * samples[place];
      sum.right += samples[place + 1] * samples[place + 1];
    }
    const auto pairs = static_cast<double>(samples.size() / 2);
    return {std::sqrt(sum.left / pairs), std::sqrt(sum.right / pairs)};
  }

  const QString heard_ = InFolder("heard.raw");
};

TEST_F(PlayerSound, IsHeardAgainWhenAFilePlaysOnAfterASeekAndSteps) {
  player.OpenPaused(MakePlain("red.mp4", "red", 2));
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  player.controls.setCurrentPosition(0.2);
  player.controls.step(-1);
  player.controls.step(3);
  player.controls.play();
  EXPECT_GT(HearToTheEnd().left, 0.01);
}

TEST_F(PlayerSound, IsTurnedDownOnTheSideOppositeToTheBalance) {
  const double full = 0.5 / std::sqrt(2);
  struct Balance {
    int value;
    double left;
    double right;
  };
  player.settings.setVolume(100);
  const QString file = MakeStereo();
  for (const Balance& balance :
       {Balance{-100, 1, 0}, {-40, 1, 0.6}, {0, 1, 1}, {25, 0.75, 1}, {100, 0, 1}}) {
    SCOPED_TRACE(balance.value);
    player.settings.setBalance(balance.value);
    const Loudness heard = Hear(file);
    EXPECT_NEAR(heard.left / full, balance.left, 0.05);
    EXPECT_NEAR(heard.right / full, balance.right, 0.05);
  }
}

TEST_F(PlayerSound, FollowsTheBalanceWithOneOrSixChannelsAsWell) {
  player.settings.setBalance(-100);
  for (const QString& layout : {u"mono"_s, u"5.1"_s}) {
    SCOPED_TRACE(layout.toStdString());
    const Loudness heard = Hear(Make(layout + ".flac",
                                     "-f lavfi -i sine=frequency=440:duration=2 -af "
                                     "aformat=channel_layouts=" +
                                         layout));
    EXPECT_GT(heard.left, 0.001);
    EXPECT_NEAR(heard.right / heard.left, 0, 0.01);
  }
}

TEST_F(PlayerSound, GetsLouderWithTheVolumeAndIsSilentAtZero) {
  const QString file = MakeStereo();
  player.settings.setVolume(0);
  double former = Hear(file).left;
  EXPECT_EQ(former, 0);
  for (const int volume : {30, 50, 100}) {
    player.settings.setVolume(volume);
    const double heard = Hear(file).left;
    EXPECT_GT(heard, former) << volume;
    former = heard;
  }
}

TEST_F(PlayerSound, HasHalfTheVolumeAndNoBalanceAtFirstAndRefusesValuesOutOfRange) {
  EXPECT_EQ(player.settings.volume(), 50);
  EXPECT_EQ(player.settings.balance(), 0);
  for (const int volume : {30, -1, 101}) player.settings.setVolume(volume);
  for (const int balance : {-40, -101, 101}) player.settings.setBalance(balance);
  EXPECT_EQ(player.settings.volume(), 30);
  EXPECT_EQ(player.settings.balance(), -40);
}

TEST_F(PlayerSound, IsMissingWithoutADeviceAndTheVideoPlaysOn) {
  UseSoundSystem("# no device\n");
  ::testing::internal::CaptureStdout();
  ::testing::internal::CaptureStderr();
  player.setURL(MakePlain("red.mp4", "red", 20));
  const bool played = watch.AwaitColour(kPlayedRed) && watch.AwaitPosition(0.5);
  form.reset();
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
  EXPECT_TRUE(played);
}

}  // namespace
}  // namespace kelvane::testing
