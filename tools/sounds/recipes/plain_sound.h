/// A plain sound for any cue, made from what tells the cues apart: kind of
/// event, events a second, band.
#pragma once

#include "recipe.h"

namespace vorn::sounds {

Audio plainSound(const Recording& recording);

}  // namespace vorn::sounds
