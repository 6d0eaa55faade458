/// The figures of each sound of a set, and what they are in the company they are heard in.
#pragma once

#include <map>
#include <optional>
#include <span>
#include <string>

#include "hearing/figures.h"
#include "recipe.h"

namespace vorn::report {

/// A sound as read from its file.
struct Sound {
  const sounds::Recipe* recipe;
  int rate;
  synth::Channels channels;
  const synth::Signal& shown() const { return channels.front(); }
};

/// Throws `std::runtime_error` for a file that cannot be read.
Sound readSound(const sounds::Recipe& recipe, const std::string& folder);

/// The cue of a track that is most like another one, both without their pauses.
struct Neighbour {
  int cue;
  std::string_view track;
  double distance;  ///< shares of the median of all pairs
};

struct Judgement {
  hearing::Figures figures;            ///< of an engine: at full revolutions
  std::optional<Neighbour> neighbour;  ///< of a cue
  /// Of a cue: by how much it stands clear at its turn's end, dB, in its best third octave over the
  /// engine at full revolutions, walls and tyre that leave it least.
  std::optional<double> clear;
};

/// Judges `sounds`; what has to do with company is there when it is among them. Takes some seconds.
std::map<std::string_view, Judgement> judged(std::span<const Sound> sounds);

/// A line a sound, for eyes and screen readers alike.
std::string figuresAsText(std::span<const sounds::Recipe* const> recipes, const std::string& folder);

}  // namespace vorn::report
