/// Which cues a driver of each track hears, in the order heard, each once. The game's
/// tables have the last word (`tracks/catalogue.cpp`): a test holds these to them, so
/// that sounds are made and looked over without the game.
#pragma once

#include <span>
#include <string_view>

namespace vorn::sounds {

struct TrackCues {
  std::string_view track;
  std::span<const int> cues;
};

std::span<const TrackCues> cuesOfTracks();

}  // namespace vorn::sounds
