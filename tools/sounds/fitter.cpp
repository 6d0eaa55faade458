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

/// A sample that could give up or take on one character, and what that costs.
struct Step {
  std::size_t place;
  std::int16_t value;
  int cost;
};

/// The nearest value to `value` with `characters` characters, none special.
Step stepTo(std::size_t place, int value, int characters) {
  const std::int16_t stepped = nearest(value, [characters](int v) {
    return charactersOf(v) == characters && !isSpecial(lowByte(v)) && !isSpecial(highByte(v));
  });
  return {place, stepped, std::abs(stepped - value)};
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
    for (const Step& step : stepsFor(mark)) samples_[step.place] = step.value;
    std::copy(original_.begin() + static_cast<std::ptrdiff_t>(mark), original_.end(),
              samples_.begin() + static_cast<std::ptrdiff_t>(mark));
    samples_[mark] = asEndMark(samples_[mark]);
  }

 private:
  int count(std::size_t to) const {
    int sum = 0;
    for (std::size_t i = begin_; i < to; ++i) sum += charactersOf(samples_[i]);
    return sum;
  }

  /// In very quiet audio most bytes are NUL and do not count: values just above
  /// zero become -1, two characters each, until there are enough.
  void makeEnoughCharacters() {
    int missing = length_ - count(end_ - 1);
    for (int loudest = 0; missing > 0 && loudest <= 0xFF; ++loudest) {
      for (std::size_t i = begin_; i < end_ - 1 && missing > 0; ++i) {
        if (samples_[i] != loudest) continue;
        const int before = charactersOf(samples_[i]);
        samples_[i] = before == 0 && missing == 1 ? 1 : -1;
        missing -= charactersOf(samples_[i]) - before;
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

    std::size_t best = end_;
    int leastCost = std::numeric_limits<int>::max();
    for (std::size_t i = first; i <= last; ++i) {
      const std::vector<Step> steps = stepsFor(i);
      if (static_cast<int>(steps.size()) < std::abs(length_ - count(i))) continue;
      int cost = std::abs(asEndMark(original_[i]) - original_[i]);
      for (const Step& step : steps) cost += step.cost;
      if (cost >= leastCost) continue;
      leastCost = cost;
      best = i;
    }
    if (best == end_) throw std::runtime_error("no sample can carry the end mark");
    return best;
  }

  /// The cheapest single-character steps that make the count right for a mark
  /// at `mark`; fewer than needed when there are no more.
  std::vector<Step> stepsFor(std::size_t mark) const {
    const int missing = length_ - count(mark);
    const int direction = missing > 0 ? 1 : -1;
    std::vector<Step> steps;
    int smallest = 0;  // steps of one LSB found: when they suffice there is nothing cheaper
    for (std::size_t i = mark; i > begin_ && smallest < std::abs(missing); --i) {
      const int value = samples_[i - 1];
      const int characters = charactersOf(value) + direction;
      if (characters < 0 || characters > 2) continue;
      steps.push_back(stepTo(i - 1, value, characters));
      smallest += steps.back().cost == 1;
    }
    const auto needed = std::min<std::size_t>(steps.size(), static_cast<std::size_t>(std::abs(missing)));
    std::partial_sort(steps.begin(), steps.begin() + static_cast<std::ptrdiff_t>(needed), steps.end(),
                      [](const Step& a, const Step& b) { return a.cost < b.cost; });
    steps.resize(needed);
    return steps;
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
