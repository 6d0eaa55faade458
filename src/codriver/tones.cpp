#include "codriver/tones.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "codriver/loudness.h"
#include "platform/errors.h"

namespace vorn {
namespace {

constexpr int kFramesAPeriod = 48;
constexpr int kPeriods = 16;
constexpr int kBeatMs = 45;
constexpr double kThird = 1.26;  // of an octave
constexpr const char* kSlotNames[] = {"codriver turn",  "codriver steer", "codriver slider", "codriver shift",
                                      "codriver brake", "codriver pit",   "codriver ghost"};
static_assert(std::size(kSlotNames) == kToneSlots);

}  // namespace

std::vector<float> toneWave() {
  std::vector<float> wave;
  for (int i = 0; i < kFramesAPeriod * kPeriods; ++i) {
    const double angle = 2 * std::numbers::pi * i / kFramesAPeriod;
    // A little of the next two harmonics, so that its side is heard as well as its pitch.
    wave.push_back(
        static_cast<float>(0.4 * std::sin(angle) + 0.1 * std::sin(2 * angle) + 0.05 * std::sin(3 * angle)));
  }
  return wave;
}

std::vector<Beep> forOneEar(std::vector<Beep> beeps) {
  if (beeps.empty() || beeps.front().tone.pan == 0) return beeps;
  const bool isRight = beeps.front().tone.pan > 0;
  if (beeps.size() > 1) {
    int& pitch = beeps.back().tone.pitch;
    pitch = static_cast<int>(std::lround(isRight ? pitch * kThird : pitch / kThird));
  } else if (isRight) {
    Beep second = beeps.front();
    beeps.front().lengthMs = second.lengthMs * 2 / 5;
    second.startMs += second.lengthMs * 3 / 5;
    second.lengthMs = beeps.front().lengthMs;
    beeps.push_back(second);
  }
  return beeps;
}

void ToneBoard::connect(SoundDevice* device) {
  for (Voice& voice : voices_) voice = {};
  device_ = device;
}

void ToneBoard::play(ToneSlot slot, std::vector<Beep> beeps, std::uint32_t now) {
  start(slot, settings_.hearsInOne != 0 ? forOneEar(std::move(beeps)) : std::move(beeps), now);
}

void ToneBoard::start(ToneSlot slot, std::vector<Beep> beeps, std::uint32_t now) {
  stop(slot);
  Voice& played = voice(slot);
  played.beeps.assign(beeps.begin(), beeps.end());
  played.began = now;
  moveTo(now);
}

void ToneBoard::hold(ToneSlot slot, const std::optional<Tone>& tone) {
  if (tone && tone->pan > 0 && settings_.hearsInOne != 0) {
    start(slot, {{0, kBeatMs, *tone}}, now_);
    return;
  }
  Voice& held = voice(slot);
  held.beeps.clear();
  held.isBeeping = false;
  sound(static_cast<std::size_t>(slot), tone);
}

void ToneBoard::stop(ToneSlot slot) {
  Voice& stopped = voice(slot);
  stopped.beeps.clear();
  stopped.isBeeping = false;
  sound(static_cast<std::size_t>(slot), std::nullopt);
}

void ToneBoard::silence() {
  for (std::size_t i = 0; i < kToneSlots; ++i) stop(static_cast<ToneSlot>(i));
}

void ToneBoard::moveTo(std::uint32_t now) {
  now_ = now;
  for (std::size_t i = 0; i < kToneSlots; ++i) {
    Voice& voice = voices_[i];
    while (!voice.beeps.empty()) {
      const Beep& beep = voice.beeps.front();
      const auto passed = static_cast<std::int32_t>(now - voice.began);
      if (passed < beep.startMs) break;
      if (!std::exchange(voice.isBeeping, true)) sound(i, beep.tone);
      if (passed < beep.startMs + beep.lengthMs) break;
      sound(i, std::nullopt);
      voice.isBeeping = false;
      voice.beeps.pop_front();
    }
  }
}

int ToneBoard::untilDue(std::uint32_t now, int atMost) const {
  for (const Voice& voice : voices_) {
    if (voice.beeps.empty()) continue;
    const Beep& beep = voice.beeps.front();
    const int due = beep.startMs + (voice.isBeeping ? beep.lengthMs : 0);
    atMost = std::min(atMost, std::max(due - static_cast<std::int32_t>(now - voice.began), 0));
  }
  return atMost;
}

void ToneBoard::sound(std::size_t slot, const std::optional<Tone>& tone) {
  Voice& voice = voices_[slot];
  if (device_ == nullptr || tone == voice.sounding) return;
  // A tone that cannot be made is missing; the race goes on.
  carryOn([&] {
    if (!voice.buffer) {
      const std::vector<float> wave = toneWave();
      voice.buffer = device_->CreateSoundBufferFromSamples(kSlotNames[slot], "tone", wave, kToneRate);
    }
    if (!tone) {
      voice.buffer->Stop();
    } else {
      if (!voice.sounding || voice.sounding->volume != tone->volume) {
        voice.buffer->SetVolume(heardVolume(settings_, SoundKind::kCodriver, tone->volume));
      }
      if (!voice.sounding || voice.sounding->pan != tone->pan) {
        voice.buffer->SetPan(heardPan(settings_, tone->pan));
      }
      if (!voice.sounding || voice.sounding->pitch != tone->pitch) {
        voice.buffer->SetFrequency(std::clamp(tone->pitch, kLowestPitch, kHighestPitch) * kFramesAPeriod);
      }
      if (!voice.sounding) voice.buffer->Play(SoundBuffer::kLooping);
    }
  });
  voice.sounding = tone;
}

}  // namespace vorn
