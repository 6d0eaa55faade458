/// What the game says about itself: the instructions and how each track runs.
/// The wording, its spellings and its double blanks are the product. Pure.
#pragma once

#include <string>

namespace vorn {

/// All instructions as one text.
std::string instructionsText();
/// Title and course of track 1..10; any other throws `std::out_of_range`.
std::string trackDescription(int track);

}  // namespace vorn
