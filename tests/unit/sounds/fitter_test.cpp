// Every layout with every kind of recording: the file must come out with its
// size and figures, and play as it was recorded.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <random>
#include <sstream>

#include "checks.h"
#include "finish.h"
#include "fitter.h"
#include "recipe.h"
#include "support/item_figures.h"
#include "support_sounds.h"
#include "synth/instruments.h"

namespace vorn::sounds {
namespace {

using Samples = std::vector<std::int16_t>;

struct Material {
  std::string_view name;
  std::function<double(int i, std::mt19937& chance)> sample;  ///< -1..1
};

double flat(std::mt19937& chance) {
  return static_cast<double>(chance()) / std::mt19937::max() * 2 - 1;
}

const std::vector<Material>& materials() {
  static const std::vector<Material> all{
      {"full-scale noise", [](int, std::mt19937& chance) { return flat(chance); }},
      {"sine", [](int i, std::mt19937&) { return 0.9 * std::sin(i * 0.031); }},
      {"quiet sine", [](int i, std::mt19937&) { return 0.02 * std::sin(i * 0.031); }},
      {"digital silence", [](int, std::mt19937&) { return 0.0; }},
      {"dithered silence", [](int, std::mt19937& chance) { return (flat(chance) + flat(chance)) / 32768; }},
  };
  return all;
}

Samples recordingOf(const Layout& layout, const Material& material) {
  std::mt19937 chance(7);
  const double top = layout.format.bits == 8 ? 127 : 32767;
  Samples samples(static_cast<std::size_t>(layout.dataBytes / (layout.format.bits / 8)));
  for (std::size_t i = 0; i < samples.size(); ++i) {
    samples[i] = static_cast<std::int16_t>(std::lround(top * material.sample(static_cast<int>(i), chance)));
  }
  return samples;
}

Samples samplesOf(const Layout& layout, std::string_view bytes) {
  Samples samples;
  for (std::size_t i = layout.header.size(); i < bytes.size();
       i += static_cast<std::size_t>(layout.format.bits / 8)) {
    const auto low = static_cast<unsigned char>(bytes[i]);
    samples.push_back(layout.format.bits == 8
                          ? static_cast<std::int16_t>(low - 128)
                          : static_cast<std::int16_t>(low | static_cast<unsigned char>(bytes[i + 1]) << 8));
  }
  return samples;
}

/// Does `test` for the layout of every file.
void forEveryLayout(const std::function<void(const Layout&)>& test) {
  for (const CatalogueEntry& entry : soundCatalogue()) {
    SCOPED_TRACE(entry.name);
    test(layoutOf(entry.name));
  }
}

ItemFigures figuresOf(const Layout& layout) {
  return {layout.entry.items, layout.entry.lastItemLength};
}

TEST(EveryLayout, TakesAnyRecording) {
  forEveryLayout([](const Layout& layout) {
    for (const Material& material : materials()) {
      const std::string bytes = fitIntoFile(layout, recordingOf(layout, material));
      EXPECT_EQ(bytes.size(), static_cast<std::size_t>(layout.entry.bytes)) << material.name;
      EXPECT_EQ(readItems(bytes), figuresOf(layout)) << material.name;
      EXPECT_EQ(test::readItemsInOnePass(bytes), figuresOf(layout)) << material.name;
    }
  });
}

TEST(EveryLayout, ChangesSamplesOnlyWhereTheFiguresNeedIt) {
  forEveryLayout([](const Layout& layout) {
    for (const Material& material : materials()) {
      const Samples before = recordingOf(layout, material);
      const Samples after = samplesOf(layout, fitIntoFile(layout, before));
      ASSERT_EQ(after.size(), before.size());
      int largest = 0;
      for (std::size_t i = 0; i < before.size(); ++i)
        largest = std::max(largest, std::abs(after[i] - before[i]));
      const bool kept = layout.fit == Fit::kJunk || layout.fit == Fit::kDataSize;
      EXPECT_LE(largest, kept ? 0 : 300) << material.name;
    }
  });
}

TEST(EveryLayout, LeavesRoomForThePositionsThatArePlayed) {
  forEveryLayout([](const Layout& layout) {
    EXPECT_GT(layout.dataBytes, largestPositionPlayed(layout.entry.name));
    EXPECT_EQ(layout.dataBytes % layout.format.blockBytes(), 0);
  });
}

TEST(EveryLayout, RefusesARecordingOfAnotherLength) {
  forEveryLayout([](const Layout& layout) {
    Samples samples = recordingOf(layout, materials().front());
    samples.pop_back();
    EXPECT_THROW(fitIntoFile(layout, samples), std::logic_error);
  });
}

/// A change of one byte that moves an item, its length or the end of the data.
struct Mutation {
  std::string_view what;
  std::size_t place;
  char byte;
};

/// Where a file's last item begins, its end mark or the file's end, and the
/// delimiters in front; found on the NUL-free text, as offsets in the file.
struct Anatomy {
  std::vector<std::size_t> delimiters;
  std::size_t lastItem = 0, end = 0;
};

Anatomy dissect(std::string_view bytes) {
  Anatomy anatomy;
  anatomy.end = std::min(bytes.find('\x1A'), bytes.size());
  for (std::size_t i = 0; i < anatomy.end; ++i) {
    if (bytes[i] != ',' && bytes[i] != '\n' && bytes[i] != '\r') continue;
    anatomy.delimiters.push_back(i);
    anatomy.lastItem = i + 1;
  }
  return anatomy;
}

/// The mutations that the check must notice, at a few places of each kind.
std::vector<Mutation> mutations(std::string_view bytes) {
  const Anatomy anatomy = dissect(bytes);
  std::vector<Mutation> all;
  const std::size_t length = anatomy.end - anatomy.lastItem;
  for (std::size_t i = anatomy.lastItem; i < anatomy.end; i += std::max<std::size_t>(1, length / 7)) {
    if (bytes[i] == 0) {
      all.push_back({"NUL of the last item to a letter", i, 'x'});
      continue;
    }
    for (const char byte : {'\0', ',', '\r', '\n', '\x1A'}) all.push_back({"last item", i, byte});
  }
  for (std::size_t k = 0; k < anatomy.delimiters.size(); k += 1 + anatomy.delimiters.size() / 7) {
    for (const char byte : {'x', '\0', '\x1A'}) all.push_back({"delimiter", anatomy.delimiters[k], byte});
  }
  if (!anatomy.delimiters.empty()) {
    for (const char byte : {',', '\x1A'}) all.push_back({"earlier item", 1, byte});
  }
  if (anatomy.end < bytes.size()) {
    for (const char byte : {'x', '\0', ','}) all.push_back({"end mark", anatomy.end, byte});
  }
  return all;
}

TEST(EveryLayout, IsToldFromACopyWithOneByteChanged) {
  forEveryLayout([](const Layout& layout) {
    const std::string bytes = fitIntoFile(layout, recordingOf(layout, materials()[1]));
    for (const Mutation& mutation : mutations(bytes)) {
      std::string changed = bytes;
      changed[mutation.place] = mutation.byte;
      EXPECT_NE(readItems(changed), figuresOf(layout))
          << mutation.what << " at " << mutation.place << " became " << static_cast<int>(mutation.byte);
    }
  });
}

/// What was changed, as noise: dB below full scale.
double changeBetween(const Samples& before, const Samples& after, const Format& format) {
  double power = 0;
  for (std::size_t i = 0; i < before.size(); ++i) {
    power += std::pow((after[i] - before[i]) / std::exp2(format.bits - 1), 2);
  }
  return 10 * std::log10(power / static_cast<double>(before.size()) + 1e-20);
}

// Measured: -71 ("Start your engine.") to -90 dB; the 8-bit cue comes through untouched.
TEST(EveryRecipe, IsHardlyTouchedByTheFit) {
  constexpr double kInaudible = -60;
  int touched = 0;
  for (const Recipe& recipe : allRecipes()) {
    const Layout layout = layoutOf(recipe.name);
    if (layout.fit == Fit::kJunk || layout.fit == Fit::kDataSize) continue;  // the samples stay as they are
    synth::tuneToolkit(2.0 * layout.format.rate);
    const Audio audio = recipe.render(Recording(layout, recipe.play));
    const Samples before = quantised(mastered(audio, recipe, layout), layout);
    const Samples after = samplesOf(layout, fitIntoFile(layout, before));
    EXPECT_LT(changeBetween(before, after, layout.format), kInaudible) << recipe.name;
    ++touched;
  }
  EXPECT_EQ(touched, 8);
}

TEST(Layout, OfTheBrakeTapeIsAPlainHeader) {
  const Layout layout = layoutOf("vorn8");
  EXPECT_EQ(layout.header.size(), 44U);
  EXPECT_EQ(layout.dataBytes, 114866);
}

TEST(Layout, OfTheBrakeTapeKeepsTheFiguresInFrontOfWhatIsPlayed) {
  const Layout layout = layoutOf("vorn8");
  for (const Material& material : materials()) {
    const Samples before = recordingOf(layout, material);
    const Samples after = samplesOf(layout, fitIntoFile(layout, before));
    EXPECT_TRUE(std::equal(before.begin() + 500, before.end(), after.begin() + 500)) << material.name;
  }
}

TEST(Layout, OfTheEngineStartHasItsMarkInTheDataSize) {
  const Layout layout = layoutOf("vorn2");
  EXPECT_EQ(layout.header.size(), 44U);
  EXPECT_EQ(layout.dataBytes, 0x34C1A);
}

TEST(Layout, OfTheEightBitCueHasFifteenNulsInItsHeader) {
  const Layout layout = layoutOf("vorn1t8");
  EXPECT_EQ(std::count(layout.header.begin(), layout.header.end(), '\0'), 15);
  const std::string bytes = fitIntoFile(layout, recordingOf(layout, materials().front()));
  for (std::size_t i = layout.header.size(); i < bytes.size(); ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    ASSERT_TRUE(byte != 0 && !isSpecial(byte)) << i;
  }
}

TEST(Layout, OfTheLastEngineLeavesLittleToSpare) {
  EXPECT_EQ(layoutOf("vorn34").dataBytes, 264564);
}

TEST(Layout, OfAnUnknownNameIsRefused) {
  EXPECT_THROW(layoutOf("vorn99"), std::out_of_range);
}

}  // namespace
}  // namespace vorn::sounds
