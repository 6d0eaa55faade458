/// The ten tracks by name, in the order of the track menu.
#pragma once

#include <array>

namespace vorn {

inline constexpr int kTracks = 10;

struct TrackName {
  const char* spoken;  ///< as the player knows it
  const char* word;    ///< stands for it in the names of record files
};

inline constexpr std::array<TrackName, kTracks> kTrackNames{{
    {"Maple Leaf Tri Oval Track", "maple"},
    {"Painsville Oval Track", "pain"},
    {"Chagrin River Speedway", "chagrin"},
    {"Ohio Motor Speedway", "ohio"},
    {"Chardon Hill Top Raceway", "chardon"},
    {"Erie Lake Front Motor Speedway", "erie"},
    {"Mentor Road Race Track", "mentor"},
    {"Kirtland Dirt Mile Oval Track", "kirtland"},
    {"Chesterland Dirt Road Race Track", "chesterland"},
    {"Geneva Oval Track", "geneva"},
}};

}  // namespace vorn
