/// Standard output as each system writes to it without waiting.
#pragma once

#include <cstddef>
#include <string_view>

namespace vorn {

/// Before the first text. From now on writing to a pipe that nobody reads fails,
/// instead of ending the program or holding it up.
void prepareCaptionOutput();

/// Writes as much of `text` as standard output takes at once. Returns how many bytes that were.
std::size_t writeCaption(std::string_view text);

}  // namespace vorn
