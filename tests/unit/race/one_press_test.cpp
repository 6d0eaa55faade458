// One press of the shift control is one shift, whatever else the controller does meanwhile.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "input/events.h"
#include "race/session.h"
#include "unit/race/on_track.h"

namespace vorn {
namespace {

/// In neutral with the gas down, on the controller.
void standReady(GameRig& rig) {
  putOnTrack(rig, 0, 0);
  rig.does("axis Y -10000");
  rig.g.gear = 0;
}

TEST(OnePress, LaunchesAndDoesNotShiftAgainWhenTheWheelMoves) {
  GameRig rig(Wheel::kController);
  standReady(rig);
  rig.does("button 8 down");
  EXPECT_EQ(tick(rig).gear, 1);
  for (const char* move : {"axis X 500", "axis X -500", "axis Y -9000"}) {
    rig.does(move);
    EXPECT_EQ(tick(rig).gear, 1) << move;
  }
  rig.does("button 8 up");
  EXPECT_EQ(tick(rig).gear, 1);
  rig.does("button 8 down");
  EXPECT_EQ(tick(rig).gear, 2);
}

TEST(OnePress, StaysSpentWhileAnotherButtonComesAndGoes) {
  GameRig rig(Wheel::kController);
  standReady(rig);
  rig.does("button 8 down");
  tick(rig);
  rig.does("button 6 down");
  EXPECT_EQ(tick(rig).gear, 1);
  rig.does("button 6 up");
  EXPECT_EQ(tick(rig).gear, 1);
}

TEST(SpendButton, LeavesAButtonThatIsUpReadyForItsNextPress) {
  GameRig rig(Wheel::kController);
  spendButton(rig.g, &InputState::btnHorn);
  rig.does("button 6 down");
  EXPECT_EQ(rig.g.btnHorn, 1);
}

TEST(SpendButtons, SpendsEveryButtonThatIsDown) {
  GameRig rig(Wheel::kController);
  rig.does("button 0 down");
  rig.does("button 8 down");
  spendButtons(rig.g);
  rig.does("axis X 3000");
  EXPECT_EQ(rig.g.btnSpeedometer, 0);
  EXPECT_EQ(rig.g.btnUpShift, 0);
  rig.does("button 0 up");
  rig.does("button 0 down");
  EXPECT_EQ(rig.g.btnSpeedometer, 1);
  EXPECT_EQ(rig.g.btnUpShift, 0);
}

}  // namespace
}  // namespace vorn
