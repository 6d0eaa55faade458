#include "layout.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <stdexcept>

namespace vorn::sounds {
namespace {

constexpr Format kUsual{22050, 16, 1};
constexpr Format kShort{16000, 16, 1};  // where the usual rate would leave too little time

struct FormatException {
  std::string_view name;
  Format format;
};
constexpr std::array kFormatExceptions{
    FormatException{"vorn0", {22050, 16, 2}},  FormatException{"vorn3", kShort},
    FormatException{"vorn6", kShort},          FormatException{"vorn10", kShort},
    FormatException{"vorn11", kShort},         FormatException{"vorn12", kShort},
    FormatException{"vorn13", kShort},         FormatException{"vorn14", kShort},
    FormatException{"vorn15", kShort},         FormatException{"vorn21", kShort},
    FormatException{"vorn1t4", kShort},        FormatException{"vorn1t6", kShort},
    FormatException{"vorn1t8", {16000, 8, 1}}, FormatException{"vorn1t13", kShort},
    FormatException{"vorn1t28", kShort},       FormatException{"vorn1t52", kShort}};

struct FitException {
  std::string_view name;
  Fit fit;
};
constexpr std::array kFitExceptions{
    FitException{"vorn2", Fit::kDataSize},    FitException{"vorn4", Fit::kLongItem},
    FitException{"vorn12", Fit::kLongItem},   FitException{"vorn15", Fit::kLongItem},
    FitException{"vorn1t2", Fit::kLongItem},  FitException{"vorn1t5", Fit::kLongItem},
    FitException{"vorn1t28", Fit::kLongItem}, FitException{"vorn8", Fit::kInFront},
    FitException{"vorn1t8", Fit::kWholeFile}};

constexpr int kChunkHeaderBytes = 8;
/// Above this many items the first ones are left empty: with a letter in each
/// they would cost more bytes than the recording can spare.
constexpr int kManyItems = 1000;

std::string littleEndian(std::uint32_t value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> (8 * i) & 0xFF);
  return text;
}

std::string chunk(std::string_view id, std::uint32_t size) {
  return std::string(id) + littleEndian(size, 4);
}

bool hasSpecial(std::string_view bytes) {
  return std::any_of(bytes.begin(), bytes.end(),
                     [](char c) { return isSpecial(static_cast<unsigned char>(c)); });
}

int characters(std::string_view bytes) {
  return static_cast<int>(bytes.size() - std::count(bytes.begin(), bytes.end(), '\0'));
}

std::string fmtChunk(const Format& format) {
  const auto block = static_cast<std::uint32_t>(format.blockBytes());
  const auto rate = static_cast<std::uint32_t>(format.rate);
  return chunk("fmt ", 16) + littleEndian(1, 2) +
         littleEndian(static_cast<std::uint32_t>(format.channels), 2) + littleEndian(rate, 4) +
         littleEndian(rate * block, 4) + littleEndian(block, 2) +
         littleEndian(static_cast<std::uint32_t>(format.bits), 2);
}

std::string riffStart(const CatalogueEntry& entry) {
  return chunk("RIFF", static_cast<std::uint32_t>(entry.bytes - 8)) + "WAVE";
}

/// The items in front of the last one, each with the comma that ends it. The
/// first of them begins with the file's very first characters.
std::string itemsInFront(int commas) {
  std::string text;
  for (int i = 0; i < commas; ++i) text += i > 0 && commas > kManyItems ? "," : "V,";
  return text;
}

/// A JUNK chunk that begins with `text`, filled up to an even size whose own
/// bytes say nothing to an item reader.
std::string junkChunk(std::string text) {
  if (text.size() % 2 != 0) text += 'V';
  while (hasSpecial(littleEndian(static_cast<std::uint32_t>(text.size()), 4))) text += "VV";
  return chunk("JUNK", static_cast<std::uint32_t>(text.size())) + text;
}

int delimitersIn(std::string_view bytes) {
  return static_cast<int>(
      std::count_if(bytes.begin(), bytes.end(), [](char c) { return c == ',' || c == '\n' || c == '\r'; }));
}

/// All figures in the JUNK chunk: the items, the last item's letters, the mark.
std::string junkWithFigures(const CatalogueEntry& entry, std::string_view start) {
  const int commas = entry.items - 1 - delimitersIn(start);
  if (commas > 0) {
    return junkChunk(itemsInFront(commas) + std::string(static_cast<std::size_t>(entry.lastItemLength), 'V') +
                     static_cast<char>(kEndMark));
  }
  // One item: it began with the file, so what stands in front of the letters
  // counts too, and that includes the chunk's own size.
  std::string letters;
  for (;; letters += 'V') {
    const std::string junk = junkChunk(letters + static_cast<char>(kEndMark));
    const int length =
        characters(start) + characters(junk.substr(0, kChunkHeaderBytes)) + static_cast<int>(letters.size());
    if (length == entry.lastItemLength) return junk;
    if (length > entry.lastItemLength)
      throw std::logic_error("no room for the item of " + std::string(entry.name));
  }
}

std::string extraChunk(const CatalogueEntry& entry, Fit fit, std::string_view start) {
  if (fit == Fit::kJunk) return junkWithFigures(entry, start);
  if (fit == Fit::kLongItem && entry.items > 1) {
    return junkChunk(itemsInFront(entry.items - 1 - delimitersIn(start)));
  }
  return {};
}

template <typename Table>
auto findByName(const Table& table, std::string_view name) {
  return std::find_if(table.begin(), table.end(), [name](const auto& row) { return row.name == name; });
}

}  // namespace

Layout layoutOf(std::string_view name) {
  const CatalogueEntry* entry = findInCatalogue(name);
  if (entry == nullptr) throw std::out_of_range("no sound is called " + std::string(name));
  const auto format = findByName(kFormatExceptions, name);
  const auto fit = findByName(kFitExceptions, name);

  Layout layout{*entry, fit == kFitExceptions.end() ? Fit::kJunk : fit->fit,
                format == kFormatExceptions.end() ? kUsual : format->format, riffStart(*entry), 0};
  layout.header += extraChunk(*entry, layout.fit, layout.header);
  layout.header += fmtChunk(layout.format);
  layout.dataBytes = entry->bytes - static_cast<int>(layout.header.size()) - kChunkHeaderBytes;
  layout.header += chunk("data", static_cast<std::uint32_t>(layout.dataBytes));
  if (layout.dataBytes % layout.format.blockBytes() != 0) {
    throw std::logic_error("the data of " + std::string(name) + " is no whole number of frames");
  }
  return layout;
}

}  // namespace vorn::sounds
