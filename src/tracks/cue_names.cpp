#include "tracks/cue_names.h"

#include <array>
#include <stdexcept>
#include <string>

namespace vorn {
namespace {

/// By number; there is no cue 0.
constexpr std::array<const char*, 72> kNames = {
    "",
    "gas can",
    "bicycle bell",
    "cuckoo clock",
    "ducks",
    "woman stomping grapes",
    "jaw harp",
    "frogs",
    "hammer on anvil",
    "steam locomotive",
    "harmonica song",
    "rooster",
    "slide whistle",
    "rubber duck",
    "snare drum",
    "cow with a bell",
    "paddle steamer",
    "loon",
    "xylophone",
    "hail on a tin roof",
    "kookaburra",
    "church bells",
    "fishing reel",
    "yodel",
    "hand bells",
    "sleigh bells",
    "sheep",
    "woodpecker",
    "chair lift",
    "pan pipes",
    "kazoo",
    "church organ",
    "eagle",
    "gulls",
    "concertina hornpipe",
    "bell buoy",
    "swimmers",
    "fog horn",
    "sonar ping",
    "waves and halyards",
    "typewriter",
    "siren",
    "barrel organ",
    "level-crossing bell",
    "grandfather clock",
    "telephone",
    "music box",
    "cash register",
    "barber",
    "bowling",
    "police whistle",
    "door bell",
    "terrier",
    "banjo and washboard",
    "horses galloping",
    "horse whinny",
    "train on a mouth organ",
    "fiddle reel",
    "dinner triangle",
    "carousel organ",
    "roller coaster",
    "musette accordion",
    "popcorn",
    "high striker",
    "theremin",
    "donkey",
    "turkeys",
    "hand pump",
    "pigs",
    "jug and spoons",
    "hens",
    "coyote",
};

}  // namespace

const char* cueName(int cue) {
  if (cue < 1 || cue >= static_cast<int>(kNames.size())) {
    throw std::out_of_range("there is no cue " + std::to_string(cue));
  }
  return kNames[cue];
}

}  // namespace vorn
