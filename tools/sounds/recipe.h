/// What a sound is made from: a recipe is one small function that fills a given
/// number of samples, and the data of how loud it is to be and how it ends.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "layout.h"
#include "synth/canvas.h"
#include "synth/loudness.h"
#include "synth/noise.h"

namespace vorn::sounds {

using synth::Signal;

/// A finished rendering: one signal a channel.
struct Audio {
  Audio(Signal mono) : channels{std::move(mono)} {}
  Audio(Signal left, Signal right) : channels{std::move(left), std::move(right)} {}
  synth::Channels channels;
};

/// How the game plays it.
enum class Play {
  kOnce,  ///< to its end
  kLoop,  ///< round and round: its ends meet
  kTape   ///< a tape of which stretches are played: open ends
};

/// How its loudness is measured.
enum class Meter {
  kWhole,          ///< over all of it, loops for 10 s
  kLoudestMoment,  ///< the loudest 400 ms
  kAsRendered      ///< the recipe itself has set it; only the peak is held
};

struct Level {
  double lufs;
  double peakDb;  ///< highest sample, dB below full scale
  Meter meter = Meter::kWhole;
};

/// How a sound starts and ends. An edge of 0 ms is left as rendered.
struct Edges {
  double fadeInMs = 0;
  double fadeOutMs = 0;
};

/// What a recipe gets: how long, at which rate, and its own chance.
class Recording {
 public:
  Recording(const Layout& layout, Play play) : layout_(layout), play_(play) {}

  /// Samples a second to render at: twice the file's, for clean high partials.
  double rate() const { return 2.0 * layout_.format.rate; }
  int frames() const { return 2 * layout_.frames(); }
  double seconds() const { return layout_.seconds(); }
  synth::Ends ends() const { return play_ == Play::kLoop ? synth::Ends::kMeeting : synth::Ends::kOpen; }
  std::string_view name() const { return layout_.entry.name; }
  const Layout& layout() const { return layout_; }

  /// An empty canvas of the whole length; a loop's ends meet.
  synth::Canvas canvas() const { return {rate(), frames(), ends()}; }
  /// A stream of chance that belongs to this file and `purpose`.
  synth::Noise noise(std::string_view purpose) const { return {synth::seedOf(name()), purpose}; }

 private:
  Layout layout_;
  Play play_;
};

struct Recipe {
  std::string_view name;
  std::string_view what;  ///< what one hears, for `--list`
  Play play;
  Level level;
  Edges edges;
  Audio (*render)(const Recording&);
};

/// All 108 recipes, in the catalogue's order.
std::span<const Recipe> allRecipes();

/// The recipe of `name`; null where there is none.
const Recipe* findRecipe(std::string_view name);

/// Renders, levels, trims, dithers and fits one file: its bytes. Takes up to a
/// few seconds. Uses toolkits with state of their own for the whole process
/// (sampling rate, C library chance, speech engine): make one sound a process
/// where it has to come out the same each time.
std::string makeSound(const Recipe& recipe);

}  // namespace vorn::sounds
