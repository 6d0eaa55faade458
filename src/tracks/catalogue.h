/// The ten tracks. Pure data.
#pragma once

#include "tracks/track.h"

namespace vorn {

extern const Track kMaple;
extern const Track kPainsville;
extern const Track kChagrin;
extern const Track kOhio;
extern const Track kChardon;
extern const Track kErie;
extern const Track kMentor;
extern const Track kKirtland;
extern const Track kChesterland;
extern const Track kGeneva;

/// All of them in the order of the track menu.
std::span<const Track* const> allTracks();

}  // namespace vorn
