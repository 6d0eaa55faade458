#include "tracks/cue_names.h"

#include <gtest/gtest.h>

#include <iterator>
#include <stdexcept>

namespace vorn {
namespace {

const char* const kSpoken[] = {
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

TEST(CueNames, AreSpokenLikeThis) {
  int cue = 0;
  for (const char* name : kSpoken) EXPECT_STREQ(cueName(++cue), name) << cue;
}

TEST(CueNames, ThereAreNoneOfOtherNumbers) {
  EXPECT_THROW(cueName(0), std::out_of_range);
  EXPECT_THROW(cueName(static_cast<int>(std::size(kSpoken)) + 1), std::out_of_range);
}

}  // namespace
}  // namespace vorn
