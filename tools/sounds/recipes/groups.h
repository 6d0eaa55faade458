/// The groups the recipes stand in, a file each.
#pragma once

#include <span>

#include "recipe.h"

namespace vorn::sounds {

std::span<const Recipe> engineRecipes();
std::span<const Recipe> wallRecipes();
std::span<const Recipe> cockpitRecipes();
std::span<const Recipe> crashRecipes();
std::span<const Recipe> pitRecipes();
std::span<const Recipe> titleRecipes();
std::span<const Recipe> speechRecipes();
std::span<const Recipe> mapleCues();
std::span<const Recipe> ohioCues();
std::span<const Recipe> chagrinCues();
std::span<const Recipe> chardonCues();
std::span<const Recipe> erieCues();
std::span<const Recipe> mentorCues();
std::span<const Recipe> kirtlandCues();
std::span<const Recipe> genevaCues();
std::span<const Recipe> chesterlandCues();

}  // namespace vorn::sounds
