#include "platform/common/controller_info.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "input/control_maps.h"
#include "platform/headless/headless_platform.h"
#include "state/game_state.h"

namespace vorn {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

const ControllerFacts kG920{
    .name = "Driving wheel", .vendor = 0x046d, .product = 0xc262, .axes = 4, .buttons = 3, .hats = 1};
const ControllerFacts kPad{
    .name = "Pad", .kind = ControllerKind::kGamepad, .axes = kPadAxes, .buttons = kPadButtons};
const ControllerFacts kPedals{.name = "Sim Pedals", .vendor = 0x0eb7, .product = 0x183b, .axes = 3};

TEST(ControllerInfo, TellsOfEachAxisAndButtonOfAWheel) {
  EXPECT_THAT(
      controllerInfo({kG920}),
      ElementsAre("Controller 1: Driving wheel (046d:c262), a wheel of a known model. The game uses it.",
                  "Axis 0: steering.", "Axis 1: gas; in menus previous.", "Axis 2: brake; in menus next.",
                  "Axis 3: clutch, of which the game has none.",
                  "Directional pad, up and down: gas and brake; in menus previous and next.",
                  "Button 0: speed; in menus select.", "Button 1: position across the track.",
                  "Button 2: start the engine, later the fuel gauge."));
}

TEST(ControllerInfo, CallsAGamepadsControlsByTheirPlaces) {
  const auto lines = controllerInfo({kPad});
  EXPECT_EQ(lines.size(), 1U + kPadAxes + kPadButtons);
  EXPECT_EQ(lines[0], "Controller 1: Pad (0000:0000), a gamepad. The game uses it.");
  EXPECT_THAT(lines, Contains("Right trigger: gas; in menus previous."));
  EXPECT_THAT(lines, Contains("Bottom button (A, cross): button 0, speed; in menus select."));
  EXPECT_THAT(lines, Contains("Right button (B, circle): button 6, horn."));
  EXPECT_THAT(lines, Contains("Directional pad, up: as the left stick pushed that way."));
  EXPECT_THAT(lines, Contains("Guide (home): button 10, nothing unless configured."));
}

TEST(ControllerInfo, PedalsAreUsedBesideAWheelAlone) {
  EXPECT_THAT(controllerInfo({kPedals, kG920}),
              Contains("Controller 1: Sim Pedals (0eb7:183b), pedals. The game uses it."));
  const auto withPad = controllerInfo({kPedals, kPad});
  EXPECT_THAT(withPad, Contains("Controller 1: Sim Pedals (0eb7:183b), pedals. The game does not use it."));
  EXPECT_THAT(withPad, Contains("Controller 2: Pad (0000:0000), a gamepad. The game uses it."));
}

TEST(ControllerInfo, OfSeveralTheFirstIsUsed) {
  const auto lines = controllerInfo({kPad, kG920});
  EXPECT_THAT(lines, Contains(testing::EndsWith("a gamepad. The game uses it.")));
  EXPECT_THAT(lines, Contains(testing::EndsWith("a wheel of a known model. The game does not use it.")));
}

TEST(ControllerInfo, SaysSoWhereNothingIsConnected) {
  EXPECT_THAT(controllerInfo({}), ElementsAre("No game controller is connected."));
}

TEST(ControllerInfo, ButtonsMeanWhatTheDefaultControlMapGivesThem) {
  HeadlessPlatform platform({}, {});
  GameState g(platform);
  jhk(g);
  ControllerFacts stick{.name = "Stick", .axes = 2, .buttons = 12};
  const auto lines = controllerInfo({stick});
  const auto expectUse = [&](int number, const std::string& use) {
    EXPECT_THAT(lines, Contains("Button " + std::to_string(number) + ": " + use + "."));
  };
  expectUse(g.joyMapSpeedometer, "speed; in menus select");
  expectUse(g.joyMapTrackPosition, "position across the track");
  expectUse(g.joyMapStartEngine, "start the engine, later the fuel gauge");
  expectUse(g.joyMapPitRoad, "pit road");
  expectUse(g.joyMapSayGear, "gear");
  expectUse(g.joyMapSayLap, "lap");
  expectUse(g.joyMapHorn, "horn");
  expectUse(g.joyMapElapsedTime, "elapsed time");
  expectUse(g.joyMapUpShift, "shift up; in menus back to the first entry");
  expectUse(g.joyMapDownShift, "shift down");
  expectUse(10, "nothing unless configured");
}

}  // namespace
}  // namespace vorn
