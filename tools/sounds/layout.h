/// Where everything of a sound file lies: its format, its header and the number
/// of data bytes that are left for the recording. The size and the item figures
/// of a file are given; the layout is what makes room for them, so it is known
/// before a recording exists. Pure; nothing waits.
#pragma once

#include <string>
#include <string_view>

#include "sound/catalogue.h"

namespace vorn::sounds {

/// How a file comes to its item figures.
enum class Fit {
  kJunk,      ///< delimiters and end mark in a JUNK chunk in front; the samples stay as they are
  kDataSize,  ///< plain header; the low byte of the data size is the end mark
  kLongItem,  ///< delimiters, if any, in a JUNK chunk; the end mark is the low byte of a sample
  kInFront,   ///< plain header; delimiters and end mark are low bytes of the first samples
  kWholeFile  ///< plain header, 8 bit; the one item is the file, so no sample may end it
};

struct Format {
  int rate;      ///< samples a second
  int bits;      ///< 16 (signed) or 8 (unsigned)
  int channels;  ///< 1 or 2

  int blockBytes() const { return bits / 8 * channels; }
};

struct Layout {
  CatalogueEntry entry;
  Fit fit;
  Format format;
  std::string header;  ///< everything in front of the first sample
  int dataBytes;       ///< what the recording must fill exactly

  int frames() const { return dataBytes / format.blockBytes(); }
  double seconds() const { return static_cast<double>(frames()) / format.rate; }
};

/// The layout of the catalogue's file `name`. Throws `std::out_of_range` for a
/// name that is not in the catalogue.
Layout layoutOf(std::string_view name);

/// Whether a byte ends an item or the data: comma, LF, CR or 26.
constexpr bool isSpecial(unsigned char byte) {
  return byte == 0x0A || byte == 0x0D || byte == 0x1A || byte == 0x2C;
}

constexpr unsigned char kEndMark = 0x1A;

}  // namespace vorn::sounds
