// Every track is finished by a driver who hears nothing but the turn calls and the slider.

#include <gtest/gtest.h>

#include <span>

#include "sessions/codriver/hearing_driver.h"
#include "sessions/tracks/one_race.h"
#include "sessions/tracks/wheel_script.h"
#include "tracks/catalogue.h"

namespace vorn {
namespace {

constexpr int kAhead = 40;  // tenths of a second
constexpr double kMostSlower = 1.15;

class ByEar : public testing::TestWithParam<int> {
 protected:
  const Track& track() const { return *allTracks()[static_cast<std::size_t>(GetParam() - 1)]; }
  double secondsOfTheDriverWhoSees() const {
    WheelScript driver(track());
    return OneRace(GetParam(), Device::kWheel, [&](const TickReport& tick) { return driver.after(tick); })
        .raceTime();
  }
};

INSTANTIATE_TEST_SUITE_P(On, ByEar, testing::Range(1, 11));

TEST_P(ByEar, IsAtMostAFewSecondsSlowerThanByEye) {
  AidSettings settings;
  settings.turn(AidKind::kTurnCalls, true);
  settings.turn(AidKind::kSlider, true);
  settings.callAhead = kAhead;
  HearingDriver driver(track().steerDrag, kAhead * 100);
  Session session;
  session.options.controller = true;
  session.codriver = CodriverOptions{.aids = settings.aids};
  session.folder.write(kAidFile, aidFileText(settings));
  session.script(offTheGrid(GetParam(), Device::kWheel));
  std::size_t heard = 0;
  Driver ears;
  ears.until = " Your time for ";
  ears.onTick = [&](const TickReport&) {
    const auto& lines = session.trace().lines();
    const std::span<const TraceLine> news(lines.begin() + static_cast<std::ptrdiff_t>(heard), lines.end());
    heard = lines.size();
    return driver.after(news);
  };
  session.drive(ears).script("get raceTime\nend").run();
  ASSERT_EQ(session.exitStatus(), 0) << session.diagnostics();
  ASSERT_TRUE(session.trace().said(" Your time for "));
  const double seconds = session.trace().values("raceTime").back();
  RecordProperty("seconds", std::to_string(seconds));
  EXPECT_LE(seconds, kMostSlower * secondsOfTheDriverWhoSees());
}

}  // namespace
}  // namespace vorn
