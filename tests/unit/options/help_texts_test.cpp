#include "options/help_texts.h"
#include "state/track_names.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace vorn {
namespace {

// The texts as they are heard, written out whole.

TEST(Instructions, ReadLikeThis) {
  EXPECT_EQ(instructionsText(),
            "Vorn 1 tts instructions. I wrote Vorn 1 tts specifically for my Logitech MOMO Racing"
            " steering wheel joystick. It should work ok with other game controllers as well."
            " However some of the tracks may be very difficult if not impossible to drive via the"
            " keyboard. To play Vorn 1 tts, select start game from the main menu. Select a track to"
            " run. Enter the number of laps to run. Press the button to start your engine. Wait for"
            " the starter to count down to 0. You may play with the gas peddle and horn button while"
            " you wait. It will not actually say 0. Instead an air horn will sound. Shift into first"
            " gear and accelerate. Your race car has 4 gears. You can get up to a speed of just over"
            " 225 miles an hour. Besides your engine and the crowd you will hear a sound either on"
            " the left or right such as a gas can, a song, a woman stopping grapes or whatever."
            " Which ever side it is on, the next turn will be in that direction. The louder the"
            " sound gets the closer you are to the end of that straightaway. In the turn, you will"
            " also hear a sound on the side of the direction of the turn. Again the louder the"
            " sound, the closer you are to the end of that turn. There will be the sound of your"
            " tires going over an expansion joint between each straightaway and turn. You will also"
            " hear the crowd get louder as you get closer to the wall. If you get too close to the"
            " wall you will hear a bumping sound as you have gotten into the marbles. Using the"
            " button to report track position you are in the marbles below 4 and above 96. Pit road"
            " is right at the beginning of the front straightaway. Press the button to open pit"
            " road. You will now be on pit road. It is a turn and you will hear a warning as to the"
            " 50 mile per hour speed limit. You will want to get slowed up to 50 miles per hour by"
            " the time that you get to the straight part of pit road. You will now hear it say, Your"
            " pit box in, 5, 4, 3, 2, 1. You need to get over to that side and stomp on the brakes"
            " at about the time that it says the number 2. There are penalties for speeding on pit"
            " road, passing your pit box and not being close enough to the wall when you stop. If"
            " you get no penalties, you will receive a snack while they change your tires and fill"
            " your gas tank. Please be sure to arrow through the menus and check out the options and"
            " features. And have fun racing.");
}

TEST(TrackDescriptions, ReadLikeThis) {
  const char* const expected[] = {
      "Maple Leaf Tri Oval track layout. You start out accelerating down the front straightaway,"
      " then there is a long gradual two part turn to the left that puts you onto the long back"
      " straightaway.  At the end of the back straightaway is a slightly sharper turn to the left,"
      " then a short straightaway and finally an even sharper turn to the left that puts you back"
      " onto the front straightaway.",
      "Painsville Oval track layout. You start out accelerating down the front straightaway, then"
      " there is a two part turn to the left, the second part being much sharper than the first that"
      " puts you onto the long back straightaway.  At the end of the back straightaway is another"
      " two part turn to the left, the first part being much sharper than the second that puts you"
      " back onto the front straightaway.",
      "Chagrin River Speedway track layout. You start out accelerating down the front straightaway,"
      " then there is a U turn to the right followed by a left turn.  Next there is a right U turn"
      " followed by a left U turn, followed by a right U turn. Next is a turn to the left and a"
      " final right U turn that puts you back onto the front straightaway.",
      "Ohio Motor Speedway track layout. You start out accelerating down the front straightaway,"
      " then there is a right hand turn which is followed by a short straightaway.  Next is a sharp"
      " short left hand turn followed by a very short straightaway and then a long, gradual U turn"
      " to the right.  Now you are on the long back straightaway.  At the end of the back"
      " straightaway is a very sharp right hand turn followed by a short straightaway which heads"
      " you into an S turn.  Which has first a very sharp left turn followed by a very sharp right"
      " turn.  Once past the S turn you only have a short straightaway before the last right turn"
      " that puts you back onto the front straightaway.",
      "Chardon Hill Top Raceway track layout. You start out accelerating down the front"
      " straightaway, then there is a turn to the right which puts you on a down hill straightaway. "
      " At the bottom of the hill is a sharp short turn to the right followed by a very short"
      " straightaway and another sharp short turn to the right.  Now you are on a short straightaway"
      " leading you into a turn to the left.  Next is a longer straightaway with another turn to the"
      " left at the end of the straightaway.  Another short straightaway follows, then a very sharp"
      " short turn to the right, a very short straightaway and one more sharp short turn to the"
      " right which puts you onto an up hill straightaway and finally a right hand turn that puts"
      " you back onto the front straightaway.",
      "Erie Lake Front Motor Speedway track layout. You start out accelerating down the front"
      " straightaway.  Then there is a sharp two part U turn to the left.  Next is a short"
      " straightaway followed by a right turn.  Now another short straightaway followed by a two"
      " part sharp U turn to the left.  Now a short straightaway followed by a right turn.  And"
      " finally a short straightaway followed by a two part sharp U turn to the left that puts you"
      " back onto the front straightaway.",
      "Mentor Road Race Track layout. You start out accelerating down the front straightaway where"
      " you will then need to down shift going into the first very sharp turn to the right.  Now you"
      " are on a straightaway where you will again need to down shift going into the very sharp turn"
      " to the left.  Next you are again on a straightaway where you will again need to down shift"
      " going into the next turn to the right.  Now you are on the back straightaway where you will"
      " need to brake to make it around the next turn to the right.  Next you are on a short"
      " straightaway that leads into an S turn which is first a very sharp short turn to the left"
      " followed by a a very sharp short turn to the right.  Now just a short straightaway where you"
      " will need to brake going into the final sharp turn to the right that puts you back onto the"
      " front straightaway.",
      "Kirtland dirt mile oval track layout. You start out accelerating down the front straightaway"
      " into a two part left U turn which gets sharper in the center of the turn. Now you are on the"
      " back straightaway.  Now again a two part U turn to the left that gets sharper towards the"
      " center of the turn and back onto the front straightaway.",
      "Chesterland Dirt Road Race Track layout. You start out accelerating down a short"
      " straightaway. Now there is a very very sharp turn to the left followed by a very sharp turn"
      " to the right. Now a two part straightaway where you will need to jump over the swimming"
      " hole. at the end of the straightaway is a turn to the right. Now a long straightaway"
      " followed by a two part right U turn that gets sharper in the center of the turn and then"
      " back onto the front straightaway.",
      "Geneva Oval Track layout. You start out accelerating down the front straightaway. Now there"
      " is a two part high banked U turn to the left. Now you are on the back straightaway which is"
      " followed by another two part high banked U turn to the left. And back onto the front"
      " straightaway.",
  };
  for (int track = 1; track <= kTracks; ++track) {
    EXPECT_EQ(trackDescription(track), expected[track - 1]) << track;
  }
}

TEST(TrackDescriptions, ThereAreTenTracks) {
  EXPECT_THROW(trackDescription(0), std::out_of_range);
  EXPECT_THROW(trackDescription(11), std::out_of_range);
}

}  // namespace
}  // namespace vorn
