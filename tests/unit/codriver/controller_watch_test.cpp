#include "codriver/controller_watch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AtTheWheel : public testing::Test {
 protected:
  AtTheWheel() {
    maps.joySteeringAxis = 1;
    maps.joyGasAxis = 2;
    maps.joyMapHorn = 6;
    maps.joyMapUpShift = 6;
    maps.joyMapSpeedometer = 20;  // the others stand on 0
  }
  std::vector<std::string> told() { return watch.after(wheel, maps); }

  JoystickState wheel;
  InputState maps;
  ControllerWatch watch{JoystickState{}};
};

TEST_F(AtTheWheel, NothingIsSaidOfWhatRests) {
  EXPECT_THAT(told(), IsEmpty());
  wheel.x = 3999;
  EXPECT_THAT(told(), IsEmpty());
}

TEST_F(AtTheWheel, AnAxisIsNamedWithItsSideAndItsPurpose) {
  wheel.x = -6000;
  EXPECT_THAT(told(), ElementsAre(" axis X left, steering. "));
  EXPECT_THAT(told(), IsEmpty());
  wheel.x = 0;
  EXPECT_THAT(told(), IsEmpty());  // on its way back
  wheel.x = 6000;
  EXPECT_THAT(told(), ElementsAre(" axis X right, steering. "));
}

TEST_F(AtTheWheel, AnAxisThatTheGameDoesNotHearIsSoCalled) {
  wheel.y = -10000;
  EXPECT_THAT(told(), ElementsAre(" axis Y forward, nothing. "));
  wheel.rx = 10000;
  EXPECT_THAT(told(), ElementsAre(" axis R X right, nothing. "));
}

TEST_F(AtTheWheel, PedalsOnOneAxisAreNoticedOnce) {
  wheel.ry = -10000;
  EXPECT_THAT(told(), ElementsAre(" axis R Y forward, gas. "));
  wheel.ry = 10000;
  EXPECT_THAT(told(), ElementsAre(" axis R Y back, brake. ",
                                  " Gas and brake share axis R Y, as the game wants it. "));
  wheel.ry = -10000;
  EXPECT_THAT(told(), ElementsAre(" axis R Y forward, gas. "));
}

TEST_F(AtTheWheel, AButtonIsNamedOnceAPressWithAllItsPurposes) {
  wheel.buttons[6] = 1;
  EXPECT_THAT(told(), ElementsAre(" button 6, horn and shift up. "));
  EXPECT_THAT(told(), IsEmpty());
  wheel.buttons[6] = 0;
  wheel.buttons[31] = 128;
  EXPECT_THAT(told(), ElementsAre(" button 31, nothing. "));
}

}  // namespace
}  // namespace vorn
