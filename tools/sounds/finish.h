/// From a rendering at twice the rate to samples ready for the file.
#pragma once

#include <cstdint>
#include <vector>

#include "recipe.h"

namespace vorn::sounds {

/// Brings `audio` to the file's rate, its loudness and its edges; samples stay
/// floating, one signal a channel.
synth::Channels mastered(const Audio& audio, const Recipe& recipe, const Layout& layout);

/// Interleaved samples at the file's bit depth, dithered; digital silence stays.
std::vector<std::int16_t> quantised(const synth::Channels& channels, const Layout& layout);

/// Loudness of `channels` as `meter` measures it.
double measured(const synth::Channels& channels, const Recipe& recipe, int rate);

}  // namespace vorn::sounds
