/// The catalogue of the game's 108 sound files and the reader of their two
/// content figures. Pure: no file is opened here, nothing waits, nothing is
/// kept between calls.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace vorn {

/// What the check demands of one sound file.
struct CatalogueEntry {
  std::string_view name;  ///< base name in lower case, without ".wav"
  int bytes;              ///< exact size of the file
  int items;              ///< items its bytes yield, at least 1
  int lastItemLength;     ///< characters of the item read last, at least 0
};

/// The 108 files in the character order of their names, which is the order the
/// check walks them: vorn0, vorn1, vorn10 .. vorn19, vorn1t1, vorn1t10 .. vorn9.
std::span<const CatalogueEntry> soundCatalogue();

/// The entry called `name` (base name, lower case); null where there is none.
const CatalogueEntry* findInCatalogue(std::string_view name);

/// `name` with ".wav" behind it.
std::string soundFileName(std::string_view name);

/// Two figures of a file read as a text stream of items.
struct ItemFigures {
  int items = 0;           ///< reads made until the end, at least 1
  int lastItemLength = 0;  ///< characters of the last one

  friend bool operator==(const ItemFigures&, const ItemFigures&) = default;
};

/// Reads `bytes` item by item. Every byte is one character; NUL bytes are
/// dropped as if they were not there; byte 26 ends the data, as does the
/// physical end. Leading blanks of an item are skipped. An item that opens with
/// a double quote runs to the next quote, and what follows up to and including
/// the next delimiter is lost; any other item runs to the next delimiter.
/// Delimiters are the comma, CR LF, CR and LF.
ItemFigures readItems(std::string_view bytes);

}  // namespace vorn
