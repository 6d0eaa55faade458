#include "sampled.h"

#include <fluidsynth.h>

#include <algorithm>
#include <array>
#include <stdexcept>

namespace vorn::synth {
namespace {

constexpr int kChannel = 0;
constexpr int kBlock = 64;  // frames, as the player computes them
constexpr double kBendRange = 2, kBendMiddle = 8192;

int bendOf(double semitones) {
  return std::clamp(static_cast<int>(std::lround(kBendMiddle * (1 + semitones / kBendRange))), 0, 16383);
}

}  // namespace

struct SampledInstrument::Player {
  std::unique_ptr<fluid_settings_t, decltype(&delete_fluid_settings)> settings{new_fluid_settings(),
                                                                               &delete_fluid_settings};
  std::unique_ptr<fluid_synth_t, decltype(&delete_fluid_synth)> synth{nullptr, &delete_fluid_synth};
};

SampledInstrument::SampledInstrument(double rate, Sampled instrument)
    : rate_(rate), player_(std::make_unique<Player>()) {
  fluid_set_log_function(FLUID_WARN, nullptr, nullptr);
  fluid_settings_t* settings = player_->settings.get();
  fluid_settings_setnum(settings, "synth.sample-rate", rate);
  fluid_settings_setnum(settings, "synth.gain", 1);
  fluid_settings_setint(settings, "synth.cpu-cores", 1);
  // Rooms are built around whole loops, not around notes.
  fluid_settings_setint(settings, "synth.reverb.active", 0);
  fluid_settings_setint(settings, "synth.chorus.active", 0);
  fluid_settings_setint(settings, "synth.dynamic-sample-loading", 1);
  player_->synth.reset(new_fluid_synth(settings));
  fluid_synth_t* synth = player_->synth.get();
  if (fluid_synth_sfload(synth, VORN_SOUNDFONT, 1) == FLUID_FAILED) {
    throw std::runtime_error("the instruments of " VORN_SOUNDFONT " cannot be read");
  }
  fluid_synth_set_interp_method(synth, -1, FLUID_INTERP_7THORDER);
  fluid_synth_program_change(synth, kChannel, static_cast<int>(instrument));
}

SampledInstrument::~SampledInstrument() = default;

Signal SampledInstrument::play(const SampledNote& note) {
  fluid_synth_t* synth = player_->synth.get();
  fluid_synth_all_sounds_off(synth, kChannel);
  const double semitones = 69 + 12 * std::log2(note.hertz / 440);
  const int key = static_cast<int>(std::lround(semitones));
  const int held = framesOf(rate_, note.seconds), frames = held + framesOf(rate_, note.ring);
  Signal signal;
  std::array<float, kBlock> left{}, right{};
  fluid_synth_pitch_bend(synth, kChannel, bendOf(semitones - key + note.bend(0)));
  fluid_synth_noteon(synth, kChannel, key, std::clamp(static_cast<int>(127 * note.force), 1, 127));
  bool isHeld = true;
  for (int frame = 0; frame < frames; frame += kBlock) {
    if (isHeld && frame >= held) {
      fluid_synth_noteoff(synth, kChannel, key);
      isHeld = false;
    }
    fluid_synth_pitch_bend(synth, kChannel, bendOf(semitones - key + note.bend(frame / rate_)));
    fluid_synth_write_float(synth, kBlock, left.data(), 0, 1, right.data(), 0, 1);
    for (std::size_t i = 0; i < kBlock; ++i) signal.push_back(0.5 * (left[i] + right[i]));
  }
  signal.resize(static_cast<std::size_t>(frames));
  fadeOut(signal, framesOf(rate_, 0.01));
  return signal;
}

}  // namespace vorn::synth
