// Instructions and track descriptions.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "dialogue.h"
#include "options/help_texts.h"

namespace vorn {
namespace {

const Told kQuestion = {"queue  Select, track description that you wish to read. Maple Leaf Tri Oval track "};

/// What follows the choice of `track`: its description, then silence.
Told described(int track) {
  return {"purge", "queue " + trackDescription(track), "purge"};
}

TEST(Instructions, AreQueuedAsOneText) {
  Dialogue dialogue(" Reed Instructions. ");
  EXPECT_EQ(dialogue.play(""), (Told{"purge", "queue " + instructionsText()}));
}

TEST(Instructions, TheMenuIsThereAtOnceAndItsNextKeyCutsThemOff) {
  Dialogue dialogue(" Reed Instructions. ");
  dialogue.play("");
  const Told spoken = dialogue.trace().speech();
  ASSERT_GE(spoken.size(), 2u);
  EXPECT_EQ(spoken[spoken.size() - 2], "2");
  EXPECT_EQ(spoken.back(), "1 reed track descriptions ");
  EXPECT_LT(dialogue.trace().of("speak").back().at("ms").get<int>() -
                dialogue.trace().firstSaying("Vorn 1 tts instructions.")->at("ms").get<int>(),
            1000);
}

TEST(TrackDescriptions, EnterReadsTheFirstTrackToItsEnd) {
  Dialogue dialogue(" reed track descriptions ");
  EXPECT_EQ(dialogue.play(keys("Enter") + "wait quiet\nwait 400\n"), taken() + kQuestion + described(1));
  const auto& ms = dialogue.moments();
  EXPECT_GT(ms[4] - ms[3], 60 * 250) << "the voice takes 60 ms a letter";
}

TEST(TrackDescriptions, DownAndUpMoveAroundTheTenTracks) {
  Dialogue dialogue(" reed track descriptions ");
  EXPECT_EQ(dialogue.play(keys("Down Down Up Up Up Down Up Enter X")),
            taken() + kQuestion + taken("Painsville Oval Track") + taken("Chagrin River Speedway") +
                taken("Painsville Oval Track") + taken("Maple Leaf Tri Oval Track") +
                taken("Geneva Oval Track") + taken("Maple Leaf Tri Oval Track") + taken("Geneva Oval Track") +
                described(10));
}

TEST(TrackDescriptions, EveryTrackIsNamedAndDescribed) {
  const Told names = {"Maple Leaf Tri Oval Track",        "Painsville Oval Track",
                      "Chagrin River Speedway",           "Ohio Motor Speedway",
                      "Chardon Hill Top Raceway",         "Erie Lake Front Motor Speedway",
                      "Mentor Road Race Track",           "Kirtland Dirt Mile Oval Track",
                      "Chesterland Dirt Road Race Track", "Geneva Oval Track"};
  for (int track = 1; track <= 10; ++track) {
    Dialogue dialogue(" reed track descriptions ");
    std::string downs;
    Told moves;
    for (int i = 2; i <= track; ++i) {
      downs += "Down ";
      moves = moves + taken(names[i - 1]);
    }
    EXPECT_EQ(dialogue.play(keys(downs + "Enter") + "wait quiet\nwait 400\n"),
              taken() + kQuestion + moves + described(track));
  }
}

TEST(TrackDescriptions, AnyKeyStopsADescriptionAtOnce) {
  for (const char* key : {"Enter", "Escape", "F1", "Up", "X", "Space"}) {
    Dialogue dialogue(" reed track descriptions ");
    EXPECT_EQ(dialogue.play(keys("Enter") + "wait 2000\n" + keys(key) + "wait 400\n"),
              taken() + kQuestion + described(1))
        << key;
    const auto& ms = dialogue.moments();
    EXPECT_LE(ms[4] - ms[3], 2100) << key;
  }
}

TEST(TrackDescriptions, TheMenuListensAPauseAfterADescription) {
  Dialogue dialogue(" reed track descriptions ");
  // A key pressed in the 0.3 s that the dialogue ends with is not heard.
  EXPECT_EQ(dialogue.play(keys("Enter") + "wait 500\n" + keys("X") + "wait 100\n" + keys("Down")),
            taken() + kQuestion + described(1));
}

TEST(TrackDescriptions, AKeyThatMeansNothingIsSpokenAndTheChoiceIsTheFirstTrackAgain) {
  Dialogue dialogue(" reed track descriptions ");
  EXPECT_EQ(dialogue.play(keys("Down X Down F1 Down Escape Y N Enter X")),
            taken() + kQuestion +                                              //
                taken("Painsville Oval Track") + echoed("x") + kQuestion +     //
                taken("Painsville Oval Track") + echoedF1() + kQuestion +      //
                taken("Painsville Oval Track") + echoed("\x1b") + kQuestion +  //
                echoed("y") + kQuestion + echoed("n") + kQuestion + described(1));
}

}  // namespace
}  // namespace vorn
