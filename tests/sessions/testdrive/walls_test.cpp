// The walls tell where across the track the car is: the nearer one is the louder.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numeric>
#include <sstream>

#include "platform/headless/headless_platform.h"
#include "race/walls.h"
#include "sound/loading.h"
#include "sound/playback.h"
#include "state/game_state.h"
#include "support/session.h"
#include "testdrive/mix_ear.h"

namespace vorn {
namespace {

constexpr int kPlaceStep = 5;  // lateral units
/// What is heard at each place: the whole loop of a wall sound, so that all places hear the same.
constexpr std::array kLoopMs{0, 1995, 2592, 1402};
constexpr int kGlideMs = 50;  // to new volumes

double product(const synth::Signal& one, const synth::Signal& other) {
  return std::inner_product(one.begin(), one.end(), other.begin(), 0.0);
}

double decibels(double powerRatio) {
  return 10 * std::log10(powerRatio);
}

/// What is heard of the walls at one place across the track.
struct Place {
  int lateralPosition;
  double ears;   ///< dB of the right ear over the left one
  double walls;  ///< dB of the right wall over the left one, each in its ear
};

/// Nothing but the walls, from the left one to the right one.
class Crossing {
 public:
  explicit Crossing(int wallSound) : listenMs_(kLoopMs[static_cast<std::size_t>(wallSound)]) {
    linkSounds(folder_);
    HeadlessOptions options;
    options.folder = folder_.path();
    std::istringstream statements("wait 1000000\n");  // until the listener has heard enough
    StreamScript script(statements, "walls");
    HeadlessConnections connections;
    connections.script = &script;
    connections.render = &mix_;
    connections.trace = &trace_;
    HeadlessPlatform platform(options, connections);
    platform.run([&] {
      cross(platform, wallSound);
      return 0;
    });
  }

  std::vector<Place> places() const {
    std::vector<Place> places;
    const auto courseOf = [this](const std::string& buffer) {
      return asLoudAsRecorded(coursesOf(trace_.lines(), buffer, mix_.duration()).front());
    };
    const BufferCourse left = courseOf("wallLeftBuffer"), right = courseOf("wallRightBuffer");
    const Recording recording = readWav(left.file, folder_.read(left.file));
    for (std::size_t i = 0; i < heardFrom_.size(); ++i) {
      const std::int64_t from = heardFrom_[i], to = from + listenMs_;
      const auto leftEar = mix_.heard(Ear::kLeft, from, to), rightEar = mix_.heard(Ear::kRight, from, to);
      const auto leftWall = playedAlone(left, recording, from, to);
      const auto rightWall = playedAlone(right, recording, from, to);
      TwoShares inLeftEar, inRightEar;
      inLeftEar.hear(leftEar, leftWall, rightWall);
      inRightEar.hear(rightEar, leftWall, rightWall);
      places.push_back({static_cast<int>(i) * kPlaceStep,
                        decibels(product(rightEar, rightEar) / product(leftEar, leftEar)),
                        2 * decibels(inRightEar.ofOther() / inLeftEar.ofOne())});
    }
    return places;
  }

 private:
  void cross(Platform& platform, int wallSound) {
    GameState g(platform);
    g.directSound = platform.createSoundDevice();
    g.wallSound = wallSound;
    g.engineSound = 1;
    setwaves(g);
    sars(g);
    for (int place = 0; place <= 100; place += kPlaceStep) {
      g.lateralPosition = place;
      SetWind(g);
      for (int ms = 0; ms < kGlideMs; ++ms) platform.yield();
      heardFrom_.push_back(mix_.duration());
      for (int ms = 0; ms < listenMs_; ++ms) platform.yield();
    }
  }

  const int listenMs_;
  TemporaryFolder folder_;
  MixEar mix_;
  TraceRecord trace_;
  std::vector<std::int64_t> heardFrom_;  ///< ms, a place each
};

class Walls : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(Each, Walls, testing::Values(1, 2, 3));

TEST_P(Walls, TellTheLateralPosition) {
  const std::vector<Place> places = Crossing(GetParam()).places();
  ASSERT_EQ(places.size(), 100U / kPlaceStep + 1);
  for (std::size_t i = 0; i < places.size(); ++i) {
    const Place& place = places[i];
    SCOPED_TRACE(place.lateralPosition);
    const int fromMiddle = place.lateralPosition - 50;
    // The nearer a wall, the louder, evenly all the way.
    EXPECT_NEAR(place.walls, 0.4 * fromMiddle, 1);
    // The louder ear is that on the side of the nearer wall. Close to a wall its
    // sound comes in from the side to the middle, and the ears differ less again.
    if (fromMiddle != 0 && std::abs(fromMiddle) <= 45) {
      EXPECT_GT(place.ears * (fromMiddle > 0 ? 1 : -1), 0.5);
    }
    if (i == 0) continue;
    EXPECT_GT(place.walls, places[i - 1].walls);
    if (std::abs(fromMiddle) <= 15) {
      EXPECT_GT(place.ears, places[i - 1].ears);
    }
  }
}

}  // namespace
}  // namespace vorn
