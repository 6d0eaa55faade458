/// The co-driver's own sounds: soft tones that are made on the spot, and the board
/// that plays them in their time. The board calls the sound device and never waits.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <vector>

#include "codriver/settings.h"
#include "platform/sound_device.h"

namespace vorn {

/// What sounds at the same time without taking each other's place.
enum class ToneSlot { kTurn, kSteer, kSlider, kShift, kBrake, kPit, kGhost };
inline constexpr std::size_t kToneSlots = 7;

/// How a tone sounds.
struct Tone {
  int pitch = 440;  ///< hertz, `kLowestPitch` .. `kHighestPitch`
  int volume = 0;   ///< hundredths of a decibel, -10000 .. 0
  int pan = 0;      ///< hundredths of a decibel, -10000 (left) .. 10000

  bool operator==(const Tone&) const = default;
};
inline constexpr int kLowestPitch = 50;
inline constexpr int kHighestPitch = 2000;

/// A tone that begins `startMs` after the figure it belongs to.
struct Beep {
  int startMs;
  int lengthMs;
  Tone tone;
};

/// The soft wave that every tone is made of, a loop: 1000 hertz where it is played at `kToneRate`.
std::vector<float> toneWave();
inline constexpr int kToneRate = 48000;

/// The figure for a single ear: a tone on the right is heard as two, and of several the last one rises on
/// the right and falls on the left.
std::vector<Beep> forOneEar(std::vector<Beep> beeps);

class ToneBoard {
 public:
  /// `settings`, not owned, tell how loud tones are and where they stand.
  explicit ToneBoard(const AidSettings& settings) : settings_(settings) {}

  /// From now on tones sound through `device`; null: through nothing, and all are let go of.
  /// Not owned.
  void connect(SoundDevice* device);
  /// Plays `beeps`, in the order of their starts and never overlapping, in place of what the slot still had.
  void play(ToneSlot slot, std::vector<Beep> beeps, std::uint32_t now);
  /// Sounds on as `tone` until told otherwise; nothing: silence. To be told again every tick: for one ear
  /// a tone on the right is a beat that each telling starts anew.
  void hold(ToneSlot slot, const std::optional<Tone>& tone);
  void silence();
  /// Carries out what is due at `now`.
  void moveTo(std::uint32_t now);
  /// Milliseconds until something is due, no more than `atMost`.
  int untilDue(std::uint32_t now, int atMost) const;

 private:
  struct Voice {
    std::unique_ptr<SoundBuffer> buffer;
    std::optional<Tone> sounding;
    std::deque<Beep> beeps;   ///< still to come, the one that sounds first
    std::uint32_t began = 0;  ///< of the figure
    bool isBeeping = false;
  };

  Voice& voice(ToneSlot slot) { return voices_[static_cast<std::size_t>(slot)]; }
  void sound(std::size_t slot, const std::optional<Tone>& tone);

  void stop(ToneSlot slot);
  void start(ToneSlot slot, std::vector<Beep> beeps, std::uint32_t now);

  const AidSettings& settings_;
  SoundDevice* device_ = nullptr;
  std::uint32_t now_ = 0;  ///< to which it has moved last
  std::array<Voice, kToneSlots> voices_;
};

}  // namespace vorn
