// Whatever happens to the sound server, sound comes back. Runs within with_desktop.sh.

#include <SDL_video.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <string>

#include "desktop/driver.h"
#include "desktop/platform_test.h"
#include "desktop/player.h"
#include "desktop/sound_server.h"
#include "support/wav_maker.h"

namespace vorn {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;
using testing::HasSubstr;

/// The loudest sample of the next `seconds` of what the default sink plays.
double loudness(double seconds) {
  const Stereo heard = listen("@DEFAULT_MONITOR@", seconds);
  return std::max(peak(heard.left), peak(heard.right));
}

bool isHeardAgain() {
  const auto end = steady_clock::now() + 60s;
  while (steady_clock::now() < end) {
    if (loudness(0.3) > 0.01) return true;
  }
  return false;
}

/// The platform with an engine that never stops, in a thread's place: the test yields.
class SoundReturns : public PlatformTest {
 protected:
  SoundReturns() {
    folder.write("engine.wav", sine(22050));
    folder.write("brief.wav", sine(11025));
    DesktopOptions options;
    options.folder = folder.path();
    options.captions = &captions;
    platform = makeDesktopPlatform(options);
    platform->setCaption("Race");
    voice = platform->createVoice();
    device = platform->createSoundDevice();
    engine = load("engine");
    engine->Play(SoundBuffer::kLooping);
    EXPECT_TRUE(isHeardAgain());
  }
  static std::string sine(int frames) {
    return makeWav(frames, {},
                   [](int frame) { return 0.5 * std::sin(2 * std::numbers::pi * 1000 * frame / 22050); });
  }
  std::unique_ptr<SoundBuffer> load(const std::string& name) {
    return device->CreateSoundBufferFromFile("engineBuffer", name + ".wav", 224);
  }
  static std::string title() { return SDL_GetWindowTitle(SDL_GetWindowFromID(1)); }
  bool isGone() {
    return yieldUntil([] { return title() == "Race (no sound)"; });
  }
  bool isBack() {
    return yieldUntil([this] { return captions.str() == std::string(kSoundIsBack) + "\n"; }) &&
           title() == "Race" && isHeardAgain();
  }

  std::unique_ptr<Voice> voice;
  std::unique_ptr<SoundDevice> device;
  std::unique_ptr<SoundBuffer> engine;
};

TEST_F(SoundReturns, AfterTheServerHasBeenKilled) {
  soundServer("kill");
  EXPECT_TRUE(isGone());
  soundServer("start");
  EXPECT_TRUE(isBack());
}

TEST_F(SoundReturns, AfterTheOnlySinkHasBeenUnplugged) {
  soundServer("remove out");
  soundServer("add other");
  EXPECT_TRUE(yieldUntil([] { return loudness(0.3) > 0.01; }));
  soundServer("kill");
  soundServer("start");
}

TEST_F(SoundReturns, OnTheNewDefaultSink) {
  soundServer("add other");
  EXPECT_TRUE(yieldUntil([] { return loudness(0.3) > 0.01; })) << "the new sink plays nothing";
  soundServer("remove other");
  EXPECT_TRUE(yieldUntil([] { return loudness(0.3) > 0.01; })) << "the old sink plays nothing";
}

TEST_F(SoundReturns, WhenTheSinkTakesSamplesAgainAndMeanwhileSoundsEnd) {
  auto brief = load("brief");
  soundServer("suspend");
  brief->Play(SoundBuffer::kOnce);
  voice->Speak(" one two three ", speak_flags::kSynchronous);
  EXPECT_TRUE(yieldUntil([&] { return brief->GetStatus() == 0; }));
  EXPECT_TRUE(isGone());
  captions.str("");
  soundServer("resume");
  EXPECT_TRUE(isBack());
}

TEST_F(SoundReturns, WhenTheServerAnswersAgain) {
  soundServer("freeze");
  EXPECT_TRUE(isGone());
  soundServer("thaw");
  EXPECT_TRUE(isBack());
}

TEST_F(SoundReturns, AndWhereItDoesNotThePlatformStillEndsInTime) {
  soundServer("freeze");
  EXPECT_TRUE(isGone());
  engine.reset();
  device.reset();
  voice.reset();
  const auto start = steady_clock::now();
  platform.reset();
  EXPECT_LT(steady_clock::now() - start, 20s);
  soundServer("thaw");
}

/// The whole game, with something happening to the sound server in each of its phases.
class SoundReturnsTo : public testing::Test {
 protected:
  SoundReturnsTo() {
    copySounds(folder);
    folder.write("vorn1voc.cfg", "0\r\n5\r\n90\r\n0\r\n");
    // No marks of speed and no gears, so that every number heard is a position.
    folder.write("vorn1ops.cfg", "1\r\n2\r\n2\r\n1\r\n2\r\n1\r\n");
    player.emplace(folder.path());
  }
  /// Once the game has noticed that there is no sound there is some again; then the voice says so, and is
  /// heard.
  void loseAndFind(const std::string& loss, const std::string& find) {
    soundServer(loss);
    EXPECT_TRUE(isLossNoticed()) << loss;
    soundServer(find);
    const auto start = steady_clock::now();
    player->waitFor(kSoundIsBack);
    EXPECT_LT(steady_clock::now() - start, 20s) << loss;
    EXPECT_GT(loudness(0.8), 0.01) << loss;
  }
  bool isLossNoticed() {
    const auto end = steady_clock::now() + 60s;
    while (std::system("xdotool getwindowfocus getwindowname | grep -q '(no sound)'") != 0) {
      if (steady_clock::now() > end) return false;
      player->rest(50);
    }
    return true;
  }
  void startRace() {
    player->enterOneLap();
    player->rest(3500);
    player->startEngine();
    player->goAtTheHorn();
  }

  TemporaryFolder folder;
  std::optional<Player> player;
};

TEST_F(SoundReturnsTo, TitleMenuAndReading) {
  ASSERT_TRUE(isHeardAgain()) << "no title sound";
  loseAndFind("kill", "start");
  player->answer("Space");
  player->waitFor(" Select. Exit Game. ");
  // While there is no sink the server plays to one that leads nowhere, and moves
  // the sound to the next one by itself: nothing has failed.
  soundServer("remove out");
  player->rest(1000);
  soundServer("add other");
  player->rest(500);
  player->move("Down", " Reed Instructions. ");
  EXPECT_GT(loudness(0.8), 0.01) << "another sink";
  player->answer("Enter");
  player->hear(20'000);
  loseAndFind("suspend", "resume");
  player->answer("Space");
  player->rest(1000);
  player->move("Up", " Exit Game. ");
  player->answer("Enter");
  player->waitFor(" exiting program ");
  EXPECT_EQ(player->waitForEnd(), 0);
  soundServer("kill");
  soundServer("start");
}

TEST_F(SoundReturnsTo, RaceCrashAndPit) {
  player->answer("Space");
  player->waitFor(" Select. Exit Game. ");
  player->move("Up", " Start Game. ");
  player->answer("Enter");
  startRace();
  player->rest(500);
  loseAndFind("kill", "start");
  player->keys.press("RightCtrl");
  player->keys.press("Left");
  while (player->hear(1500)) {
  }  // until a crash: it answers no position
  player->keys.release("Left");
  player->keys.release("RightCtrl");
  loseAndFind("suspend", "resume");
  player->keys.tap("Escape");
  player->waitFor(" Select. Exit Game. ");
  player->move("Up", " Start Game. ");
  player->answer("Enter");
  startRace();
  player->keys.tap("Home", 500);
  EXPECT_THAT(PositionDriver(*player).driveToTheEnd(120), HasSubstr("pit"));  // too fast, or not at the box
  loseAndFind("kill", "start");
  player->waitFor(" go! go! go! ");
  EXPECT_GT(loudness(0.8), 0.01);
}

}  // namespace
}  // namespace vorn
