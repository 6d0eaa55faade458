#include "finish.h"

#include <algorithm>
#include <cmath>

#include "fitter.h"
#include "synth/instruments.h"
#include "synth/resample.h"

namespace vorn::sounds {
namespace {

constexpr int kLevelRounds = 8;
constexpr double kCloseEnough = 0.05;  // dB

synth::Ends endsOf(Play play) {
  return play == Play::kLoop ? synth::Ends::kMeeting : synth::Ends::kOpen;
}

constexpr double kNoOffset = 0.0003;  // of full scale

/// Takes the mean out. Open ends keep their value: the correction swells from
/// and back to nothing, and is left out where it would only move the silence.
void removeOffset(Signal& signal, synth::Ends ends) {
  double mean = 0;
  for (const double value : signal) mean += value / static_cast<double>(signal.size());
  if (ends == synth::Ends::kOpen && std::abs(mean) < kNoOffset) return;
  for (std::size_t i = 0; i < signal.size(); ++i) {
    const double share = (static_cast<double>(i) + 0.5) / static_cast<double>(signal.size());
    signal[i] -= ends == synth::Ends::kMeeting ? mean : mean * (1 - std::cos(synth::kTwoPi * share));
  }
}

/// Gain and peak limiting pull at each other; a few rounds settle both.
void level(synth::Channels& channels, const Recipe& recipe, const Layout& layout) {
  const double ceiling = synth::gainOf(recipe.level.peakDb);
  for (int round = 0; round < kLevelRounds; ++round) {
    const double missing = recipe.level.meter == Meter::kAsRendered
                               ? 0
                               : recipe.level.lufs - measured(channels, recipe, layout.format.rate);
    if (round > 0 && std::abs(missing) < kCloseEnough) return;
    for (Signal& channel : channels) {
      synth::scale(channel, synth::gainOf(std::clamp(missing, -60.0, 90.0)));
      removeOffset(channel, endsOf(recipe.play));  // holding uneven peaks leaves one
    }
    synth::limitPeaks(channels, ceiling, layout.format.rate, endsOf(recipe.play));
  }
}

}  // namespace

double measured(const synth::Channels& channels, const Recipe& recipe, int rate) {
  if (recipe.level.meter == Meter::kLoudestMoment) return synth::loudestMoment(channels, rate);
  return synth::loudnessOfWhole(channels, rate, endsOf(recipe.play));
}

synth::Channels mastered(const Audio& audio, const Recipe& recipe, const Layout& layout) {
  synth::Channels channels;
  const auto frames = [&layout](double ms) { return synth::framesOf(layout.format.rate, ms / 1000); };
  for (const Signal& rendered : audio.channels) {
    Signal whole = rendered;
    whole.resize(static_cast<std::size_t>(2 * layout.frames()));
    channels.push_back(synth::decimated(whole, endsOf(recipe.play)));
    synth::fadeIn(channels.back(), frames(recipe.edges.fadeInMs));
    synth::fadeOut(channels.back(), frames(recipe.edges.fadeOutMs));
  }
  level(channels, recipe, layout);
  return channels;
}

std::vector<std::int16_t> quantised(const synth::Channels& channels, const Layout& layout) {
  synth::Noise dither(synth::seedOf(layout.entry.name), "dither");
  const double top = std::exp2(layout.format.bits - 1) - 1;
  std::vector<std::int16_t> samples;
  samples.reserve(channels.size() * channels.front().size());
  for (std::size_t i = 0; i < channels.front().size(); ++i) {
    for (const Signal& channel : channels) {
      const double value = channel[i] == 0 ? 0 : channel[i] * top + dither.triangular();
      samples.push_back(static_cast<std::int16_t>(std::lround(std::clamp(value, -top, top))));
    }
  }
  return samples;
}

std::string makeSound(const Recipe& recipe) {
  const Layout layout = layoutOf(recipe.name);
  const Recording recording(layout, recipe.play);
  synth::tuneToolkit(recording.rate());
  const synth::Channels channels = mastered(recipe.render(recording), recipe, layout);
  return fitIntoFile(layout, quantised(channels, layout));
}

}  // namespace vorn::sounds
