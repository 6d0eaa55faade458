#include "options/voice_settings.h"

#include <gtest/gtest.h>

#include "platform/common/forwarding_platform.h"
#include "support/game_rig.h"

namespace vorn {
namespace {

/// Counts how often chance is taken from the clock.
class CountingPlatform : public ForwardingPlatform {
 public:
  using ForwardingPlatform::ForwardingPlatform;
  void reseedRandom() override { ++reseeded; }
  int reseeded = 0;
};

TEST(Changevoice, TakesItsSampleByTheClock) {
  GameRig rig;
  CountingPlatform counting(rig.g.platform);
  GameState g(counting);
  g.directSound = counting.createSoundDevice();
  g.speechVoice = counting.createVoice();
  g.lastVoiceIndex = 1;  // two voices: nothing is asked
  changevoice(g);
  EXPECT_EQ(counting.reseeded, 1);
}

}  // namespace
}  // namespace vorn
