/// All sounds in one file, small enough to be sent over a network: what stands before the
/// samples of each, the samples as FLAC, what stands behind them. Nothing is lost.
#pragma once

#include <string>

namespace vorn::sounds {

/// Writes the sounds of `folder`, which are right (`faultsOfFile`), to `file`. In front
/// stands the length of an index (four bytes, the lowest first) and the index, as JSON.
/// Samples of 8 bits stand in the upper half of 16. Throws `std::runtime_error`.
void writePack(const std::string& folder, const std::string& file);

}  // namespace vorn::sounds
