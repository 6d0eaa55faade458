/// The ghost: a lap that was driven before, raced again. Where its car is at each moment, how far ahead of or
/// behind another car, and how that is heard. Pure.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vorn {

/// What a lap was driven with, and how it began: laps of another kind are not comparable.
struct LapKind {
  bool isByKeys = false;
  bool isFlying = false;  ///< not the first of its race, which begins at a standstill

  friend bool operator==(const LapKind&, const LapKind&) = default;
};

/// Where a car was at one moment of a lap.
struct GhostPlace {
  double ticks;     ///< race ticks since the lap began
  double distance;  ///< units of the lap behind it
  double lateral;   ///< 0 left wall .. 100 right wall

  friend bool operator==(const GhostPlace&, const GhostPlace&) = default;
};

struct GhostLap {
  LapKind kind;
  double ticks = 0;                ///< race ticks that it took
  std::vector<GhostPlace> places;  ///< one a car tick, the earlier first

  friend bool operator==(const GhostLap&, const GhostLap&) = default;
};

/// The ghosts of one track: the best lap of each kind.
using Ghosts = std::vector<GhostLap>;

/// The one of this kind; null where there is none.
const GhostLap* ghostOf(const Ghosts& ghosts, const LapKind& kind);
/// The one that is most like this kind: of the same device if there is one, else of the other.
const GhostLap* rivalOf(const Ghosts& ghosts, const LapKind& kind);
/// Takes `lap` in where it is better than the one of its kind. Returns whether it was.
bool keepBetter(Ghosts& ghosts, const GhostLap& lap);

/// Where the ghost is, `ticks` race ticks after its lap began. Beyond its lap it drives on as it did at its
/// end. Nothing for a lap without places.
std::optional<GhostPlace> ghostAt(const GhostLap& ghost, double ticks);
/// When the ghost had `distance` behind it, race ticks since its lap began.
double ghostTicksAt(const GhostLap& ghost, double distance);

/// How the ghost's car sounds.
struct GhostSound {
  int volume;      ///< hundredths of a decibel, 0 and down
  int pan;         ///< hundredths of a decibel, negative: left
  double pitch;    ///< factor on the recording's frequency: above 1 ahead, below 1 behind
  bool isInReach;  ///< near enough to be heard
};

/// `ahead`: units by which the ghost is ahead, negative: behind; `toTheRight`: lateral units by which it is
/// further right.
GhostSound ghostSound(double ahead, double toTheRight);

/// "0 point 4 ahead", "1 point 2 behind", "level": `seconds` above 0 are lost.
std::string gapText(double seconds);

}  // namespace vorn
