#include "judge.h"

#include <fmt/format.h>
#include <algorithm>
#include <cmath>
#include <sndfile.hh>
#include <stdexcept>

#include "hearing/din.h"
#include "hearing/fingerprint.h"
#include "recipes/engine_models.h"
#include "recipes/track_cues.h"
#include "sound/catalogue.h"
#include "synth/resample.h"

namespace vorn::report {
namespace {

using hearing::Signal;
using sounds::EngineTape;

constexpr std::array<std::string_view, 3> kWalls{"vorn16", "vorn23", "vorn24"};
constexpr std::string_view kTyre = "vorn9";

using ByName = std::map<std::string_view, const Sound*>;

std::size_t fullRevolutions(const EngineTape& tape) {
  return static_cast<std::size_t>(tape.step) * 100 / 2;
}

/// The number of a cue; 0 for what is none.
int cueOf(std::string_view name) {
  constexpr std::string_view kCue = "vorn1t";
  constexpr int kLastCue = 71;  // behind it stand the voices of the pit
  if (!name.starts_with(kCue)) return 0;
  const int number = std::stoi(std::string(name.substr(kCue.size())));
  return number <= kLastCue ? number : 0;
}

std::string nameOf(int cue) {
  return "vorn1t" + std::to_string(cue);
}

hearing::Figures figuresOf(const Sound& sound) {
  for (const EngineTape& tape : sounds::engineTapes()) {
    if (tape.name == sound.recipe->name) {
      return hearing::figuresOf(hearing::steadyEngine(sound.shown(), fullRevolutions(tape)), sound.rate);
    }
  }
  Signal whole = sound.shown();
  whole.resize(std::max(whole.size(), static_cast<std::size_t>(sound.rate / 4)));
  return hearing::figuresOf(whole, sound.rate);
}

/// What a cue must be heard over at its turn's end: every engine between every wall, the tyres scrubbing.
std::vector<hearing::Levels> turnDins(const ByName& sounds) {
  std::vector<hearing::Levels> dins;
  for (const EngineTape& tape : sounds::engineTapes()) {
    for (const std::string_view wall : kWalls) {
      const Signal din = hearing::dinOf({.engine = sounds.at(tape.name)->shown(),
                                         .enginePlace = fullRevolutions(tape),
                                         .wall = sounds.at(wall)->shown(),
                                         .tyre = &sounds.at(kTyre)->shown()});
      dins.push_back(hearing::usualLevels(din, hearing::kMixRate));
    }
  }
  return dins;
}

bool holdsDins(const ByName& sounds) {
  const auto holds = [&](std::string_view name) { return sounds.contains(name); };
  return holds(kTyre) && std::ranges::all_of(kWalls, holds) &&
         std::ranges::all_of(sounds::engineTapes(), holds, &EngineTape::name);
}

std::optional<Neighbour> neighbourOf(int cue, const hearing::Distances& distances) {
  std::optional<Neighbour> nearest;
  for (const sounds::TrackCues& track : sounds::cuesOfTracks()) {
    if (std::ranges::find(track.cues, cue) == track.cues.end()) continue;
    for (const int other : track.cues) {
      if (other == cue) continue;
      const double distance = distances(cue, other);
      if (!nearest || distance < nearest->distance) nearest = Neighbour{other, track.track, distance};
    }
  }
  return nearest;
}

bool holdsAllCues(const ByName& sounds) {
  return std::ranges::all_of(sounds::cuesOfTracks(), [&](const sounds::TrackCues& track) {
    return std::ranges::all_of(track.cues, [&](int cue) { return sounds.contains(nameOf(cue)); });
  });
}

}  // namespace

Sound readSound(const sounds::Recipe& recipe, const std::string& folder) {
  const std::string path = folder + "/" + soundFileName(recipe.name);
  SndfileHandle file(path);
  if (file.error() != SF_ERR_NO_ERROR || file.channels() < 1 || file.frames() < 1) {
    throw std::runtime_error(path + ": " + file.strError());
  }
  const auto channels = static_cast<std::size_t>(file.channels());
  std::vector<double> samples(static_cast<std::size_t>(file.frames()) * channels);
  file.readf(samples.data(), file.frames());
  Sound sound{&recipe, file.samplerate(), synth::Channels(channels)};
  for (std::size_t i = 0; i < samples.size(); ++i) sound.channels[i % channels].push_back(samples[i]);
  return sound;
}

std::map<std::string_view, Judgement> judged(std::span<const Sound> all) {
  std::map<std::string_view, Judgement> judgements;
  ByName byName;
  std::map<int, hearing::Fingerprint> prints;
  for (const Sound& sound : all) {
    byName[sound.recipe->name] = &sound;
    judgements[sound.recipe->name].figures = figuresOf(sound);
    if (const int cue = cueOf(sound.recipe->name); cue != 0) {
      prints[cue] = hearing::fingerprintOf(hearing::withoutSilence(sound.shown(), sound.rate), sound.rate);
    }
  }
  const auto dins = holdsDins(byName) ? turnDins(byName) : std::vector<hearing::Levels>();
  const auto distances = holdsAllCues(byName) ? std::optional(hearing::Distances(prints)) : std::nullopt;
  for (const auto& [cue, print] : prints) {
    const Sound& sound = *byName.at(nameOf(cue));
    Judgement& judgement = judgements[sound.recipe->name];
    if (distances) judgement.neighbour = neighbourOf(cue, *distances);
    const hearing::Levels levels = hearing::strongLevels(sound.shown(), sound.rate);
    for (const hearing::Levels& din : dins) {
      const double clear = hearing::clearance(levels, din);
      judgement.clear = std::min(clear, judgement.clear.value_or(clear));
    }
  }
  return judgements;
}

std::string figuresAsText(std::span<const sounds::Recipe* const> recipes, const std::string& folder) {
  std::vector<Sound> all;
  for (const sounds::Recipe* recipe : recipes) all.push_back(readSound(*recipe, folder));
  std::string text;
  for (const auto& [name, judgement] : judged(all)) {
    const hearing::Figures& figures = judgement.figures;
    text += fmt::format(
        "{:8} roughness {:.2f}, strongest line {:2.0f} %, envelope {:.2f}, side {:2.0f} %, sharpness {:.2f}",
        name, figures.roughness, 100 * figures.strongestLine, figures.envelopeVariation,
        100 * figures.sideEnergy, figures.sharpness);
    if (judgement.clear) text += fmt::format(", clear by {:.1f} dB", *judgement.clear);
    if (judgement.neighbour)
      text +=
          fmt::format(", {:.2f} from {}", judgement.neighbour->distance, nameOf(judgement.neighbour->cue));
    text += '\n';
  }
  return text;
}

}  // namespace vorn::report
