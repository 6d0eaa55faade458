#include "sound/catalogue.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace vorn {
namespace {

constexpr std::array<CatalogueEntry, 108> kCatalogue{{
    {"vorn0", 427110, 4, 323},    {"vorn1", 218498, 1, 145},     {"vorn10", 17684, 6, 124},
    {"vorn11", 31220, 3, 72},     {"vorn12", 31052, 126, 12526}, {"vorn13", 48020, 2, 69},
    {"vorn14", 4610, 4, 181},     {"vorn15", 9728, 1, 1216},     {"vorn16", 88318, 2, 269},
    {"vorn17", 6442, 2, 23},      {"vorn18", 44144, 3, 7},       {"vorn19", 1310, 2, 23},
    {"vorn1t1", 60968, 3, 24},    {"vorn1t10", 101698, 1, 438},  {"vorn1t11", 88450, 2, 38},
    {"vorn1t12", 52964, 4, 7},    {"vorn1t13", 22094, 7, 7},     {"vorn1t14", 48938, 3, 78},
    {"vorn1t15", 53146, 2, 5},    {"vorn1t16", 139032, 1, 51},   {"vorn1t17", 139032, 1, 82},
    {"vorn1t18", 139034, 16, 88}, {"vorn1t19", 139034, 16, 62},  {"vorn1t2", 31500, 8, 2807},
    {"vorn1t20", 139034, 11, 40}, {"vorn1t21", 139126, 1, 33},   {"vorn1t22", 139088, 1, 77},
    {"vorn1t23", 88318, 1, 256},  {"vorn1t24", 207314, 5, 161},  {"vorn1t25", 174096, 21, 32},
    {"vorn1t26", 176518, 1, 98},  {"vorn1t27", 110368, 3, 146},  {"vorn1t28", 23928, 2, 5579},
    {"vorn1t29", 211798, 2, 25},  {"vorn1t3", 37528, 2, 11},     {"vorn1t30", 53038, 66, 108},
    {"vorn1t31", 140416, 2, 5},   {"vorn1t32", 136828, 1, 431},  {"vorn1t33", 123772, 2, 67},
    {"vorn1t34", 118354, 2, 4},   {"vorn1t35", 114934, 2, 69},   {"vorn1t36", 136828, 1, 50},
    {"vorn1t37", 136940, 1, 83},  {"vorn1t38", 136998, 2, 59},   {"vorn1t39", 84066, 6, 21},
    {"vorn1t4", 24288, 7, 69},    {"vorn1t40", 132606, 7, 56},   {"vorn1t41", 181784, 4, 247},
    {"vorn1t42", 132418, 7, 85},  {"vorn1t43", 132418, 3, 126},  {"vorn1t44", 132494, 2, 25},
    {"vorn1t45", 132418, 2, 9},   {"vorn1t46", 145648, 3, 700},  {"vorn1t47", 176518, 10, 181},
    {"vorn1t48", 137012, 16, 66}, {"vorn1t49", 132530, 7, 109},  {"vorn1t5", 120190, 30, 11229},
    {"vorn1t50", 132610, 4, 54},  {"vorn1t51", 38364, 3, 5},     {"vorn1t52", 29340, 1, 192},
    {"vorn1t53", 113080, 3, 195}, {"vorn1t54", 167698, 30, 94},  {"vorn1t55", 132418, 22, 42},
    {"vorn1t56", 76784, 2, 23},   {"vorn1t57", 134740, 3, 65},   {"vorn1t58", 130794, 90, 13},
    {"vorn1t59", 132418, 9, 123}, {"vorn1t6", 14998, 38, 23},    {"vorn1t60", 132596, 10, 370},
    {"vorn1t61", 132418, 1, 617}, {"vorn1t62", 132588, 6, 298},  {"vorn1t63", 66268, 14, 8},
    {"vorn1t64", 132548, 3, 60},  {"vorn1t65", 75282, 39, 280},  {"vorn1t66", 145842, 1, 470},
    {"vorn1t67", 67646, 5, 94},   {"vorn1t68", 132468, 2, 147},  {"vorn1t69", 128202, 2, 28},
    {"vorn1t7", 38706, 2781, 23}, {"vorn1t70", 132612, 19, 46},  {"vorn1t71", 220712, 4, 3},
    {"vorn1t72", 93844, 68, 27},  {"vorn1t73", 366374, 67, 295}, {"vorn1t8", 19786, 1, 19771},
    {"vorn1t9", 61300, 14, 79},   {"vorn2", 216134, 1, 28},      {"vorn20", 8938, 2, 65},
    {"vorn21", 13784, 4, 1},      {"vorn22", 109150, 2, 17},     {"vorn23", 61922, 2, 23},
    {"vorn24", 114398, 2, 23},    {"vorn25", 132524, 1, 70},     {"vorn26", 105884, 1, 60},
    {"vorn27", 75884, 4, 1},      {"vorn28", 30914, 1, 2881},    {"vorn29", 26266, 7, 904},
    {"vorn3", 15824, 11, 56},     {"vorn30", 220544, 4, 51},     {"vorn31", 141206, 3, 27},
    {"vorn32", 112500, 3, 13},    {"vorn33", 202818, 1, 206},    {"vorn34", 264644, 11, 7},
    {"vorn4", 41288, 1, 7156},    {"vorn5", 33472, 13, 121},     {"vorn6", 8388, 1, 571},
    {"vorn7", 114704, 1, 447},    {"vorn8", 114910, 13, 56},     {"vorn9", 88244, 3, 187},
}};

constexpr char kEndOfData = 26;

constexpr bool isDelimiter(char c) {
  return c == ',' || c == '\r' || c == '\n';
}

/// Walks the characters of a text whose NULs count for nothing.
class Characters {
 public:
  explicit Characters(std::string_view text) : next_(text.begin()), end_(text.end()) {}

  bool atEnd() {
    while (next_ != end_ && *next_ == 0) ++next_;
    return next_ == end_;
  }
  /// The character to be taken next; only when not at the end.
  char peek() const { return *next_; }
  char take() { return *next_++; }

  /// Takes a whole delimiter, CR LF being one.
  void takeDelimiter() {
    if (take() == '\r' && !atEnd() && peek() == '\n') take();
  }

  /// Takes everything in front of the next character that `stops`, or the end;
  /// returns how many characters that was.
  template <typename Predicate>
  int takeUntil(Predicate stops) {
    int taken = 0;
    for (; next_ != end_ && !stops(*next_); ++next_) taken += *next_ != 0;
    return taken;
  }

 private:
  std::string_view::const_iterator next_, end_;
};

int readItem(Characters& text) {
  text.takeUntil([](char c) { return c != ' ' && c != 0; });
  int length = 0;
  if (!text.atEnd() && text.peek() == '"') {
    text.take();
    length = text.takeUntil([](char c) { return c == '"'; });
    text.takeUntil(isDelimiter);
  } else {
    length = text.takeUntil(isDelimiter);
  }
  if (!text.atEnd()) text.takeDelimiter();
  return length;
}

}  // namespace

std::span<const CatalogueEntry> soundCatalogue() {
  return kCatalogue;
}

const CatalogueEntry* findInCatalogue(std::string_view name) {
  const auto found = std::find_if(kCatalogue.begin(), kCatalogue.end(),
                                  [name](const CatalogueEntry& entry) { return entry.name == name; });
  return found == kCatalogue.end() ? nullptr : &*found;
}

std::string soundFileName(std::string_view name) {
  return std::string(name) + ".wav";
}

ItemFigures readItems(std::string_view bytes) {
  Characters text(bytes.substr(0, bytes.find(kEndOfData)));
  ItemFigures figures;
  do {
    ++figures.items;
    figures.lastItemLength = readItem(text);
  } while (!text.atEnd());
  return figures;
}

}  // namespace vorn
