// The cues of the Mentor road race (a town).

#include <array>

#include "groups.h"
#include "levels.h"
#include "plain_sound.h"

namespace vorn::sounds {
namespace {

constexpr std::array kRecipes{
    Recipe{"vorn1t40", "typewriter with carriage bell", Play::kLoop, kStraightCue, {}, &plainSound},
    Recipe{"vorn1t41", "hand-cranked siren", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t42", "barrel-organ waltz (original)", Play::kLoop, kStraightCue, {}, &plainSound},
    Recipe{"vorn1t43", "level-crossing bell", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t44", "grandfather clock tick-tock, one chime", Play::kLoop, kStraightCue, {}, &plainSound},
    Recipe{"vorn1t45", "telephone, two rings", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t46", "music box (original lullaby)", Play::kLoop, kStraightCue, {}, &plainSound},
    Recipe{"vorn1t47", "cash register ka-ching and coins", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t48", "barber: scissors and whistling", Play::kLoop, kStraightCue, {}, &plainSound},
    Recipe{"vorn1t49", "bowling: roll and strike", Play::kLoop, kStraightCue, {}, &plainSound},
    Recipe{"vorn1t50", "police whistle", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t51", "door bell ding-dong", Play::kLoop, kTurnCue, {}, &plainSound},
    Recipe{"vorn1t52", "terrier bark", Play::kLoop, kTurnCue, {}, &plainSound},
};

}  // namespace

std::span<const Recipe> mentorCues() {
  return kRecipes;
}

}  // namespace vorn::sounds
