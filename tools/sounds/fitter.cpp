#include "fitter.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <stdexcept>
#include <vector>

namespace vorn::sounds {
namespace {

using Samples = std::vector<std::int16_t>;

constexpr int kMarkSlack = 32;           // samples the end mark may lie off its place by count
constexpr int kCommaStretch = 24;        // samples out of which one is chosen to carry a comma
constexpr int kFrontSamples = 1000 / 2;  // the game never plays the brake from these

constexpr unsigned char lowByte(int value) {
  return static_cast<unsigned char>(value & 0xFF);
}
constexpr unsigned char highByte(int value) {
  return static_cast<unsigned char>(value >> 8 & 0xFF);
}
constexpr int charactersOf(int value) {
  return (lowByte(value) != 0) + (highByte(value) != 0);
}

/// The 16-bit value nearest to `wanted` that `suits`.
template <typename Predicate>
std::int16_t nearest(int wanted, Predicate suits) {
  using Limits = std::numeric_limits<std::int16_t>;
  for (int distance = 0;; ++distance) {
    for (const int value : {wanted - distance, wanted + distance}) {
      if (value >= Limits::min() && value <= Limits::max() && suits(value)) {
        return static_cast<std::int16_t>(value);
      }
    }
  }
}

std::int16_t withoutSpecials(int value) {
  return nearest(value, [](int v) { return !isSpecial(lowByte(v)) && !isSpecial(highByte(v)); });
}

std::int16_t asEndMark(int value) {
  return nearest(value, [](int v) { return lowByte(v) == kEndMark; });
}

/// A comma in the low byte. The high byte opens the next item, so it must be
/// one that an item reader neither drops nor skips nor takes for a quote.
std::int16_t asComma(int value) {
  return nearest(value, [](int v) {
    const unsigned char opener = highByte(v);
    return lowByte(v) == ',' && !isSpecial(opener) && opener != 0 && opener != ' ' && opener != '\t' &&
           opener != '"';
  });
}

/// Puts the end mark into the low byte of that sample of [begin, end) which
/// leaves exactly `length` characters in front of it from `begin` on.
class MarkPlacer {
 public:
  MarkPlacer(Samples& samples, std::size_t begin, std::size_t end, int length)
      : samples_(samples), original_(samples), begin_(begin), end_(end), length_(length) {}

  void place() {
    for (std::size_t i = begin_; i < end_; ++i) samples_[i] = withoutSpecials(samples_[i]);
    makeEnoughCharacters();
    const std::size_t mark = cheapestMark();
    stepCharacters(mark, length_ - count(begin_, mark));
    std::copy(original_.begin() + static_cast<std::ptrdiff_t>(mark), original_.end(),
              samples_.begin() + static_cast<std::ptrdiff_t>(mark));
    samples_[mark] = asEndMark(samples_[mark]);
  }

 private:
  int count(std::size_t from, std::size_t to) const {
    int sum = 0;
    for (std::size_t i = from; i < to; ++i) sum += charactersOf(samples_[i]);
    return sum;
  }

  /// In very quiet audio most bytes are NUL and do not count: values just above
  /// zero become -1, two characters each, until there are enough.
  void makeEnoughCharacters() {
    int missing = length_ - count(begin_, end_ - 1);
    for (int loudest = 0; missing > 0 && loudest <= 0xFF; ++loudest) {
      for (std::size_t i = begin_; i < end_ - 1 && missing > 0; ++i) {
        if (samples_[i] != loudest) continue;
        missing -= 2 - charactersOf(samples_[i]);
        samples_[i] = -1;
      }
    }
    if (missing > 0) throw std::runtime_error("too few samples for the last item");
  }

  /// Near the place where the count is reached, the sample for which its own
  /// change and the steps needed elsewhere are least.
  std::size_t cheapestMark() const {
    std::size_t exact = begin_;
    for (int sum = 0; exact < end_ - 1 && sum < length_; ++exact) sum += charactersOf(samples_[exact]);
    const std::size_t first = exact - std::min<std::size_t>(exact - begin_, kMarkSlack);
    const std::size_t last = std::min(exact + kMarkSlack, end_ - 1);

    std::size_t best = exact;
    int leastCost = std::numeric_limits<int>::max();
    for (std::size_t i = first; i <= last; ++i) {
      const int steps = length_ - count(begin_, i);
      if (!canStep(i, steps)) continue;
      const int cost = std::abs(asEndMark(original_[i]) - original_[i]) + std::abs(steps);
      if (cost >= leastCost) continue;
      leastCost = cost;
      best = i;
    }
    if (leastCost == std::numeric_limits<int>::max())
      throw std::runtime_error("no sample can carry the end mark");
    return best;
  }

  /// A step of one LSB adds a character (low byte 00 to 01) or takes one (back).
  static bool isStep(int value, int steps) { return lowByte(value) == (steps > 0 ? 0x00 : 0x01); }

  bool canStep(std::size_t mark, int steps) const {
    int left = std::abs(steps);
    for (std::size_t i = mark; i > begin_ && left > 0; --i) left -= isStep(samples_[i - 1], steps);
    return left == 0;
  }

  void stepCharacters(std::size_t mark, int steps) {
    const int direction = steps > 0 ? 1 : -1;
    for (std::size_t i = mark; i > begin_ && steps != 0; --i) {
      std::int16_t& sample = samples_[i - 1];
      if (!isStep(sample, steps)) continue;
      sample = static_cast<std::int16_t>(sample + direction);
      steps -= direction;
    }
  }

  Samples& samples_;
  const Samples original_;
  std::size_t begin_, end_;
  int length_;
};

void fitLongItem(const Layout& layout, Samples& samples) {
  const int left = layout.entry.lastItemLength - readItems(layout.header).lastItemLength;
  MarkPlacer(samples, 0, samples.size(), left).place();
}

/// One comma in each stretch, in the sample that has to move least for it.
void fitInFront(const Layout& layout, Samples& samples) {
  std::size_t begin = 0, lastComma = 0;
  for (int comma = 1; comma < layout.entry.items; ++comma, begin += kCommaStretch) {
    const auto cost = [&samples](std::size_t i) { return std::abs(asComma(samples[i]) - samples[i]); };
    lastComma = begin;
    for (std::size_t i = begin; i < begin + kCommaStretch; ++i) {
      if (cost(i) < cost(lastComma)) lastComma = i;
    }
    const std::int16_t carrier = asComma(samples[lastComma]);
    for (std::size_t i = begin; i < begin + kCommaStretch; ++i) samples[i] = withoutSpecials(samples[i]);
    samples[lastComma] = carrier;
  }
  const int opener = 1;  // the last comma's high byte
  MarkPlacer(samples, lastComma + 1, kFrontSamples, layout.entry.lastItemLength - opener).place();
}

std::string sixteenBit(const Samples& samples) {
  std::string bytes;
  bytes.reserve(samples.size() * 2);
  for (const int value : samples) {
    bytes += static_cast<char>(lowByte(value));
    bytes += static_cast<char>(highByte(value));
  }
  return bytes;
}

/// Unsigned 8-bit samples, moved off every value that would not count as a
/// character of the one item.
std::string eightBit(const Samples& samples) {
  const auto counts = [](int byte) {
    return byte > 0 && byte <= 0xFF && !isSpecial(static_cast<unsigned char>(byte));
  };
  std::string bytes;
  for (const int value : samples) bytes += static_cast<char>(nearest(value + 128, counts));
  return bytes;
}

}  // namespace

std::string fitIntoFile(const Layout& layout, std::span<const std::int16_t> samples) {
  if (samples.size() * static_cast<std::size_t>(layout.format.bits / 8) !=
      static_cast<std::size_t>(layout.dataBytes)) {
    throw std::logic_error("the recording does not fill its file");
  }
  Samples fitted(samples.begin(), samples.end());
  if (layout.fit == Fit::kLongItem) fitLongItem(layout, fitted);
  if (layout.fit == Fit::kInFront) fitInFront(layout, fitted);
  std::string bytes = layout.header + (layout.format.bits == 8 ? eightBit(fitted) : sixteenBit(fitted));

  const ItemFigures figures = readItems(bytes);
  if (figures != ItemFigures{layout.entry.items, layout.entry.lastItemLength}) {
    throw std::runtime_error("the figures came out as " + std::to_string(figures.items) +
                             " items, the last of " + std::to_string(figures.lastItemLength) + " characters");
  }
  return bytes;
}

}  // namespace vorn::sounds
