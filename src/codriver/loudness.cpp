#include "codriver/loudness.h"

#include <algorithm>
#include <cmath>

namespace vorn {
namespace {

constexpr int kSilent = -10000, kFarthest = 10000;
constexpr double kPanOfASide = 3000;  // hundredths of a decibel that are heard as quite to one side
constexpr double kSemitonesToASide = 3;

}  // namespace

SoundKind kindOfSlot(const std::string& slot) {
  if (slot == "engineBuffer") return SoundKind::kEngine;
  if (slot == "warnBuffer") return SoundKind::kCue;
  for (const char* wall : {"wallLeftBuffer", "wallRightBuffer", "sound10Buffer"}) {
    if (slot == wall) return SoundKind::kWall;
  }
  return slot.starts_with("codriver") ? SoundKind::kCodriver : SoundKind::kCar;
}

int heardVolume(const AidSettings& settings, SoundKind kind, int volume) {
  int level = settings.carLevel;
  if (kind == SoundKind::kEngine) level = settings.engineLevel;
  if (kind == SoundKind::kCue) level = settings.cueLevel;
  if (kind == SoundKind::kWall) level = settings.wallLevel;
  if (kind == SoundKind::kCodriver) level = settings.codriverLevel;
  return std::max(volume + level, kSilent);
}

int heardPan(const AidSettings& settings, int pan) {
  if (settings.hearsInOne != 0) return settings.balance;
  const int side = settings.swapsEars != 0 ? -pan : pan;
  return std::clamp(side * settings.width / 100 + settings.balance, -kFarthest, kFarthest);
}

int heardFrequency(const AidSettings& settings, int hertz, int pan) {
  if (settings.hearsInOne == 0) return hertz;
  const double side = std::clamp(pan / kPanOfASide, -1.0, 1.0) * (settings.swapsEars != 0 ? -1 : 1);
  const double heard = hertz * std::pow(2, side * kSemitonesToASide / 12);
  return std::clamp(static_cast<int>(std::lround(heard)), 100, 100000);
}

}  // namespace vorn
