/// Puts a finished recording into its file, so that the file has its exact size
/// and item figures. Runs last: nothing may be dithered or resampled after it.
/// Pure; nothing waits.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "layout.h"

namespace vorn::sounds {

/// The bytes of the file. `samples` are interleaved and fill
/// `layout.dataBytes` exactly; 8-bit samples run from -128 to 127. Most files
/// keep every sample; where the figures need a certain byte among the samples,
/// the few that have to move move as little as they can.
/// Throws `std::runtime_error` when the figures cannot be met.
std::string fitIntoFile(const Layout& layout, std::span<const std::int16_t> samples);

}  // namespace vorn::sounds
