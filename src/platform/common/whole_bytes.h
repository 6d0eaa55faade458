/// All bytes of a file, from systems that move as many at a time as they like.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

namespace vorn {

/// All bytes there are, or as many as `atMost`; about `expected` of them. `read(to, most)` returns how many
/// it has put there, 0 at the end.
template <typename Read>
std::string readAll(std::uint64_t expected, std::size_t atMost, Read&& read) {
  std::string bytes(static_cast<std::size_t>(std::min<std::uint64_t>(expected, atMost)), '\0');
  std::size_t done = 0;
  while (done < atMost) {
    if (done == bytes.size()) bytes.resize(done + 1);  // one more, to see the end
    const std::size_t got = read(bytes.data() + done, bytes.size() - done);
    if (got == 0) break;
    done += got;
  }
  bytes.resize(done);
  return bytes;
}

/// `write(from, most)` returns how many it has taken.
template <typename Write>
void writeAll(std::string_view bytes, Write&& write) {
  while (!bytes.empty()) bytes.remove_prefix(write(bytes.data(), bytes.size()));
}

/// Adds `bytes` to an open file, all of them or none.
template <typename File>
void appendWhole(const File& file, std::string_view bytes) {
  const auto before = file.size();
  try {
    file.write(bytes);
    file.reachDisk();
  } catch (...) {
    file.cutTo(before);
    throw;
  }
}

}  // namespace vorn
