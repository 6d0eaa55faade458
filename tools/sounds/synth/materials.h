/// What struck things are made of: their modes around a pitch of 1 Hz, to be
/// taken to a pitch with `retuned`.
#pragma once

#include <vector>

#include "modal.h"

namespace vorn::synth {

std::vector<Mode> bell();        ///< cast bell: minor third, fifth, long hum
std::vector<Mode> smallBell();   ///< bright, few partials: hand bell, counter bell
std::vector<Mode> steelPanel();  ///< car body: dense and short
std::vector<Mode> tool();        ///< a spanner or anvil: hard and ringing
std::vector<Mode> wood();        ///< plank, block
std::vector<Mode> glass();       ///< a splinter
std::vector<Mode> stone();       ///< a pebble

}  // namespace vorn::synth
