/// What every fuzzer shares.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>

namespace vorn {

/// Stops the fuzzer with what was found wrong.
inline void require(bool isTrue, const char* what) {
  if (isTrue) return;
  std::cerr << "not so: " << what << std::endl;
  std::abort();
}

inline std::string bytesOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace vorn
