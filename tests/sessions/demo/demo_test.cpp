// The demonstration: the built-in driver plays the whole game by himself.

#include "demo/virtual_demo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sndfile.hh>
#include <sstream>

#include "platform/common/windows1252.h"
#include "support/program.h"
#include "support/session.h"
#include "tracks/catalogue.h"

namespace vorn {
namespace {

using testing::HasSubstr;

/// A demonstration in a folder of its own, and what it leaves.
struct Shown {
  explicit Shown(int track) {
    linkSounds(folder);
    HeadlessOptions options;
    options.folder = folder.path();
    HeadlessConnections connections;
    connections.trace = &trace;
    std::ostringstream stream;
    demo = playVirtualDemo(track, options, connections, stream);
    captions = stream.str();
  }

  TemporaryFolder folder;
  TraceRecord trace;
  VirtualDemo demo{};
  std::string captions;
};

class Demonstrations : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(On, Demonstrations, testing::Range(1, 11), [](const auto& tested) {
  return std::string(allTracks()[tested.index]->name).substr(0, 4) + std::to_string(tested.param);
});

TEST_P(Demonstrations, GoFromTheTitleToTheFarewellByWayOfARecord) {
  const Track& track = *allTracks()[static_cast<std::size_t>(GetParam() - 1)];
  const Shown shown(GetParam());
  EXPECT_EQ(shown.demo.exitStatus, 0);
  EXPECT_THAT(shown.captions, HasSubstr(std::string(" Your time for 1 lap on the ") + track.name));
  EXPECT_THAT(shown.captions, HasSubstr(" Enter your name as the new record holder. "));
  EXPECT_THAT(shown.captions, HasSubstr(" Is demo correct, for the new record holder? yes "));
  EXPECT_THAT(shown.captions, HasSubstr(" Thank you for playing Vorn 1 tts, By Ostrin. "));
  for (const TraceLine& tick : shown.trace.ticks()) EXPECT_EQ(tick.at("wallTicks"), 0);
}

TEST(Demonstration, SaysAllThatIsSpoken) {
  const Shown shown(8);
  std::string spoken;
  for (const std::string& text : shown.trace.spoken()) {
    if (text.find_first_not_of(' ') != std::string::npos) spoken += text + "\n";
  }
  EXPECT_EQ(shown.captions, spoken);
}

TEST(Demonstration, LeavesNoTraceInThePlayersFiles) {
  TemporaryFolder before;
  linkSounds(before);
  EXPECT_EQ(Shown(8).folder.names(), before.names());
}

TEST(Demonstration, TakesTheTimeThatItPlays) {
  const Shown shown(8);
  EXPECT_EQ(shown.demo.milliseconds, shown.trace.lines().back().at("ms"));
}

// --- As a program

/// The program without a display, its folder elsewhere.
class WithoutDisplay : public testing::Test {
 protected:
  WithoutDisplay() { linkSounds(sounds); }

  Finished play(const std::vector<std::string>& options) const {
    std::vector<std::string> words{"env", "-u",          "DISPLAY",    "-u",       "WAYLAND_DISPLAY",
                                   "-C",  folder.path(), VORN_PROGRAM, "--folder", sounds.path()};
    words.insert(words.end(), options.begin(), options.end());
    return runProgram(words);
  }

  TemporaryFolder sounds, folder;
};

TEST_F(WithoutDisplay, TheDemonstrationIsHeardFromAFile) {
  const Finished finished = play({});
  EXPECT_EQ(finished.exitStatus, 0);
  EXPECT_THAT(finished.errors, HasSubstr("demo.wav"));
  EXPECT_THAT(finished.output, HasSubstr(" Your time for 1 lap on the Maple Leaf Tri Oval Track is, "));
  SndfileHandle heard(sounds.path() / "demo.wav");
  EXPECT_EQ(heard.channels(), 2);
  EXPECT_GT(heard.frames(), 60 * heard.samplerate());
}

TEST_F(WithoutDisplay, ATrackCanBeChosenForIt) {
  const Finished finished = play({"--demo", "--track", "9"});
  EXPECT_EQ(finished.exitStatus, 0);
  EXPECT_THAT(finished.output, HasSubstr("on the Chesterland Dirt Road Race Track is, "));
}

TEST_F(WithoutDisplay, ATrackIsOneOfTenAndForTheDemonstrationAlone) {
  for (const std::vector<std::string>& options :
       {std::vector<std::string>{"--track", "2"}, {"--demo", "--track", "0"}, {"--demo", "--track", "11"}}) {
    const Finished finished = play(options);
    EXPECT_EQ(finished.exitStatus, 2);
    EXPECT_THAT(finished.errors, HasSubstr("--track"));
    EXPECT_FALSE(sounds.has("demo.wav"));
  }
}

}  // namespace
}  // namespace vorn
