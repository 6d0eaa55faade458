/// A second reader of a sound file's items, on another plan than the game's.
#pragma once

#include <ostream>
#include <string_view>

#include "sound/catalogue.h"

namespace vorn {

inline void PrintTo(const ItemFigures& figures, std::ostream* out) {
  *out << figures.items << " items, the last of " << figures.lastItemLength;
}

}  // namespace vorn

namespace vorn::test {

/// A second item reader, one state a byte: what it is in the middle of decides
/// what the next byte means.
inline ItemFigures readItemsInOnePass(std::string_view bytes) {
  enum class State { kBlanks, kPlain, kQuoted, kAfterQuote, kAfterReturn };
  State state = State::kBlanks;
  int finished = 0, length = 0, lastLength = 0;
  bool open = false;  // something of an item, if only blanks, has been seen
  const auto finish = [&] {
    ++finished;
    lastLength = length;
    length = 0;
    open = false;
  };
  for (const char c : bytes) {
    if (c == 0) continue;
    if (c == 26) break;
    if (state == State::kAfterReturn) {
      state = State::kBlanks;
      if (c == '\n') continue;
    }
    open = true;
    const bool ends = c == ',' || c == '\r' || c == '\n';
    if (state == State::kQuoted) {
      if (c == '"') {
        state = State::kAfterQuote;
      } else {
        ++length;
      }
    } else if (ends) {
      finish();
      state = c == '\r' ? State::kAfterReturn : State::kBlanks;
    } else if (state == State::kBlanks && c == '"') {
      state = State::kQuoted;
    } else if (state == State::kPlain || (state == State::kBlanks && c != ' ')) {
      state = State::kPlain;
      ++length;
    }
  }
  if (open || finished == 0) finish();
  return {finished, lastLength};
}

}  // namespace vorn::test
