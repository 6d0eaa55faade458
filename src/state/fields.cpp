#include "state/fields.h"

#include <array>
#include <charconv>
#include <limits>

#include "text/numbers.h"

namespace vorn {
namespace {

/// What a field may be set to from outside: wider than what play can bring about,
/// so that rare states can be tried, yet nothing that the rules cannot compute with.
struct Range {
  double lowest, highest;
};
constexpr Range kUsual{-1e9, 1e9};
constexpr double kTwoTo31 = 2147483648.0;

/// One row a field: its name, where it stands, and its range where that is not
/// the usual one. The visitor decides what to do with it.
template <typename State, typename Visit>
void visitFields(State& g, Visit&& visit) {
#define FIELD(name) visit(#name, g.name, kUsual)
#define RANGED(name, lowest, highest) visit(#name, g.name, Range{lowest, highest})
  FIELD(trackNames);
  RANGED(trackChoice, 1, 12);
  FIELD(voiceIndex);
  FIELD(lastVoiceIndex);
  RANGED(speechRate, -kTwoTo31, kTwoTo31);
  FIELD(voiceVolume);
  FIELD(speedMarkSaid);
  FIELD(bufferFlags);
  FIELD(soundVolume);
  FIELD(baseFrequency);
  FIELD(waveFilesBad);
  FIELD(lastKeyCode);
  FIELD(lastKeyChar);
  FIELD(typedText);
  FIELD(escapePressed);
  FIELD(joystickPresent);
  FIELD(inputDevice);
  FIELD(joySteering);
  FIELD(joyGasBrake);
  FIELD(btnSpeedometer);
  FIELD(btnTrackPosition);
  FIELD(btnStartEngine);
  FIELD(btnPitRoad);
  FIELD(btnSayGear);
  FIELD(btnSayLap);
  FIELD(btnHorn);
  FIELD(btnElapsedTime);
  FIELD(btnUpShift);
  FIELD(btnDownShift);
  FIELD(joyCaptureMode);
  FIELD(joyCapturedValue);
  FIELD(joyCaptured);
  RANGED(joyMapSpeedometer, 0, 31);
  RANGED(joyMapTrackPosition, 0, 31);
  RANGED(joyMapStartEngine, 0, 31);
  RANGED(joyMapPitRoad, 0, 31);
  RANGED(joyMapSayGear, 0, 31);
  RANGED(joyMapSayLap, 0, 31);
  RANGED(joyMapHorn, 0, 31);
  RANGED(joyMapElapsedTime, 0, 31);
  RANGED(joyMapUpShift, 0, 31);
  RANGED(joyMapDownShift, 0, 31);
  FIELD(joySteeringAxis);
  FIELD(joyGasAxis);
  RANGED(keyMapSpeedometer, 0, 255);
  RANGED(keyMapTrackPosition, 0, 255);
  RANGED(keyMapStartEngine, 0, 255);
  RANGED(keyMapSayLap, 0, 255);
  RANGED(keyMapPitRoad, 0, 255);
  RANGED(keyMapElapsedTime, 0, 255);
  RANGED(keyMapSteerLeft, 0, 255);
  RANGED(keyMapSteerRight, 0, 255);
  RANGED(keyMapUpShift, 0, 255);
  RANGED(keyMapDownShift, 0, 255);
  RANGED(keyMapGas, 0, 255);
  RANGED(keyMapBrake, 0, 255);
  RANGED(keyMapEnter, 0, 255);
  RANGED(keyMapHorn, 0, 255);
  RANGED(keyMapSayGear, 0, 255);
  FIELD(keyboardState);
  FIELD(joystickEvent);
  RANGED(joystickButtons, 0, 32);
  RANGED(waitUntilTick, -kTwoTo31, kTwoTo31);
  RANGED(lastTickCount, -kTwoTo31, kTwoTo31);
  RANGED(raceTicks, 0, 1e9);
  FIELD(lapsCompleted);
  FIELD(poleDistance);
  RANGED(raceTime, 0, 1e9);
  FIELD(raceHours);
  FIELD(raceMinutes);
  FIELD(raceSeconds);
  FIELD(raceTimeText);
  FIELD(lapPosition);
  FIELD(lateralPosition);
  RANGED(speed, 0, 1e6);
  RANGED(gear, 0, 4);
  RANGED(engineRpm, 0, 1000);
  RANGED(soundRpm, 0, 1000);
  RANGED(fuel, 0, 1e6);
  FIELD(topGearUnlimited);
  FIELD(upShiftHeld);
  FIELD(downShiftHeld);
  FIELD(idleSoundSkip);
  FIELD(revToggle);
  FIELD(steerDrag);
  FIELD(steerKeyLeft);
  FIELD(steerKeyRight);
  FIELD(steerKeyTicks);
  FIELD(marblesTicks);
  FIELD(wallTicks);
  FIELD(wallScrapePlaying);
  FIELD(poleSide);
  FIELD(forceCrash);
  RANGED(lastSayPositionTick, -kTwoTo31, kTwoTo31);
  RANGED(lastSayGearTick, -kTwoTo31, kTwoTo31);
  RANGED(lastSaySpeedTick, -kTwoTo31, kTwoTo31);
  RANGED(lastSayLapTick, -kTwoTo31, kTwoTo31);
  RANGED(lastSayTimeTick, -kTwoTo31, kTwoTo31);
  RANGED(lastSayFuelTick, -kTwoTo31, kTwoTo31);
  FIELD(pitEntryMissed);
  FIELD(pit);
  FIELD(lapsToRun);
  FIELD(segment);
  RANGED(warnDistance, 1e-6, 1e9);
  FIELD(warnScale);
  FIELD(warnPan);
  FIELD(warnLoops);
  FIELD(recordFileName);
  FIELD(recordText);
  FIELD(wallSound);
  FIELD(autoSpeedometer);
  FIELD(autoGearAnnounce);
  FIELD(pitRoadSnacks);
  FIELD(trackLightPolls);
  FIELD(engineSound);
#undef FIELD
#undef RANGED
}

struct FieldName {
  std::string_view field;
  std::optional<std::size_t> index;
};

std::optional<FieldName> parseName(std::string_view name) {
  const std::size_t bracket = name.find('[');
  if (bracket == std::string_view::npos) return FieldName{name, {}};
  if (name.back() != ']') return {};
  std::size_t index = 0;
  const char* const end = name.data() + name.size() - 1;
  const auto parsed = std::from_chars(name.data() + bracket + 1, end, index);
  if (parsed.ec != std::errc() || parsed.ptr != end) return {};
  return FieldName{name.substr(0, bracket), index};
}

FieldValue valueOf(int value) {
  return std::int64_t{value};
}
FieldValue valueOf(std::uint8_t value) {
  return std::int64_t{value};
}
FieldValue valueOf(double value) {
  return value;
}
FieldValue valueOf(const std::string& value) {
  return value;
}
FieldValue valueOf(const std::optional<std::int32_t>& value) {
  return std::int64_t{value.value_or(0)};
}

/// The nearest whole number, where the field can hold it.
template <typename Whole>
bool assignWhole(Whole& field, double value) {
  const double rounded = roundEven(value);
  if (!(rounded >= std::numeric_limits<Whole>::min() && rounded <= std::numeric_limits<Whole>::max())) {
    return false;
  }
  field = static_cast<Whole>(rounded);
  return true;
}

bool assign(int& field, double value) {
  return assignWhole(field, value);
}
bool assign(std::uint8_t& field, double value) {
  return assignWhole(field, value);
}
bool assign(double& field, double value) {
  field = value;
  return true;
}
bool assign(std::optional<std::int32_t>& field, double value) {
  std::int32_t whole = 0;
  if (!assignWhole(whole, value)) return false;
  field = whole;
  return true;
}
bool assign(std::string&, double) {
  return false;
}

template <typename T>
inline constexpr bool kIsArray = false;
template <typename T, std::size_t n>
inline constexpr bool kIsArray<std::array<T, n>> = true;
template <typename T, std::size_t n>
inline constexpr bool kIsArray<const std::array<T, n>> = true;

/// Calls `use` with the field, or the element of an array, that `name` means, and its range.
template <typename State, typename Use>
void withField(State& g, std::string_view name, Use&& use) {
  const auto wanted = parseName(name);
  if (!wanted) return;
  visitFields(g, [&]<typename T>(std::string_view field, T& value, const Range& range) {
    if (field != wanted->field) return;
    if constexpr (kIsArray<T>) {
      if (wanted->index && *wanted->index < value.size()) use(value[*wanted->index], range);
    } else {
      if (!wanted->index) use(value, range);
    }
  });
}

}  // namespace

std::optional<FieldValue> getField(const GameState& g, std::string_view name) {
  std::optional<FieldValue> found;
  withField(g, name, [&](const auto& value, const Range&) { found = valueOf(value); });
  return found;
}

bool setField(GameState& g, std::string_view name, double value) {
  bool done = false;
  withField(g, name, [&](auto& field, const Range& range) {
    done = value >= range.lowest && value <= range.highest && assign(field, value);
  });
  return done;
}

}  // namespace vorn
