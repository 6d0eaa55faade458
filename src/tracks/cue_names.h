/// What the cues of the tracks sound like, in two words. Pure.
#pragma once

namespace vorn {

/// The name of cue 1..71; any other number throws `std::out_of_range`.
const char* cueName(int cue);

}  // namespace vorn
