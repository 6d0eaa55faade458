/// The partials of struck things: what a bell, a plate, a block of wood is to
/// the ear. `strike` sounds them.
#pragma once

#include <vector>

#include "modal.h"

namespace vorn::synth {

std::vector<Mode> churchBell(double hertz);      ///< `hertz` is the note one hears; it hums an octave lower
std::vector<Mode> handBell(double hertz);        ///< a clear note with its twelfth
std::vector<Mode> shimmeringBell(double hertz);  ///< thin and shimmering: every partial a beating pair
std::vector<Mode> gong(double hertz);            ///< a shallow steel cup
std::vector<Mode> anvil(double hertz);
std::vector<Mode> steelPlate(double hertz);
std::vector<Mode> tinCan(double hertz);
std::vector<Mode> triangle(double hertz);  ///< a bent steel rod
std::vector<Mode> cowBell(double hertz);
std::vector<Mode> coin(double hertz);
std::vector<Mode> woodBlock(double hertz);
std::vector<Mode> hollowWood(double hertz);  ///< half a coconut on a hard floor
std::vector<Mode> xylophoneBar(double hertz);
std::vector<Mode> combTooth(double hertz);  ///< the comb of a music box

}  // namespace vorn::synth
