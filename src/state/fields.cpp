#include "state/fields.h"

#include <array>
#include <charconv>
#include <limits>

#include "text/numbers.h"

namespace vorn {
namespace {

/// One row a field: its name and where it stands. The visitor decides what to do with it.
template <typename State, typename Visit>
void visitFields(State& g, Visit&& visit) {
#define FIELD(name) visit(#name, g.name)
  FIELD(trackNames);
  FIELD(trackChoice);
  FIELD(voiceIndex);
  FIELD(lastVoiceIndex);
  FIELD(speechRate);
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
  FIELD(joyMapSpeedometer);
  FIELD(joyMapTrackPosition);
  FIELD(joyMapStartEngine);
  FIELD(joyMapPitRoad);
  FIELD(joyMapSayGear);
  FIELD(joyMapSayLap);
  FIELD(joyMapHorn);
  FIELD(joyMapElapsedTime);
  FIELD(joyMapUpShift);
  FIELD(joyMapDownShift);
  FIELD(joySteeringAxis);
  FIELD(joyGasAxis);
  FIELD(keyMapSpeedometer);
  FIELD(keyMapTrackPosition);
  FIELD(keyMapStartEngine);
  FIELD(keyMapSayLap);
  FIELD(keyMapPitRoad);
  FIELD(keyMapElapsedTime);
  FIELD(keyMapSteerLeft);
  FIELD(keyMapSteerRight);
  FIELD(keyMapUpShift);
  FIELD(keyMapDownShift);
  FIELD(keyMapGas);
  FIELD(keyMapBrake);
  FIELD(keyMapEnter);
  FIELD(keyMapHorn);
  FIELD(keyMapSayGear);
  FIELD(keyboardState);
  FIELD(joystickEvent);
  FIELD(joystickButtons);
  FIELD(waitUntilTick);
  FIELD(lastTickCount);
  FIELD(raceTicks);
  FIELD(lapsCompleted);
  FIELD(poleDistance);
  FIELD(raceTime);
  FIELD(raceHours);
  FIELD(raceMinutes);
  FIELD(raceSeconds);
  FIELD(raceTimeText);
  FIELD(lapPosition);
  FIELD(lateralPosition);
  FIELD(speed);
  FIELD(gear);
  FIELD(engineRpm);
  FIELD(soundRpm);
  FIELD(fuel);
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
  FIELD(lastSayPositionTick);
  FIELD(lastSayGearTick);
  FIELD(lastSaySpeedTick);
  FIELD(lastSayLapTick);
  FIELD(lastSayTimeTick);
  FIELD(lastSayFuelTick);
  FIELD(pitEntryMissed);
  FIELD(pit);
  FIELD(lapsToRun);
  FIELD(segment);
  FIELD(warnDistance);
  FIELD(warnScale);
  FIELD(warnPan);
  FIELD(recordFileName);
  FIELD(recordText);
  FIELD(wallSound);
  FIELD(autoSpeedometer);
  FIELD(autoGearAnnounce);
  FIELD(pitRoadSnacks);
  FIELD(trackLightPolls);
  FIELD(engineSound);
#undef FIELD
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

/// Calls `use` with the field, or the element of an array, that `name` means.
template <typename State, typename Use>
void withField(State& g, std::string_view name, Use&& use) {
  const auto wanted = parseName(name);
  if (!wanted) return;
  visitFields(g, [&]<typename T>(std::string_view field, T& value) {
    if (field != wanted->field) return;
    if constexpr (kIsArray<T>) {
      if (wanted->index && *wanted->index < value.size()) use(value[*wanted->index]);
    } else {
      if (!wanted->index) use(value);
    }
  });
}

}  // namespace

std::optional<FieldValue> getField(const GameState& g, std::string_view name) {
  std::optional<FieldValue> found;
  withField(g, name, [&](const auto& value) { found = valueOf(value); });
  return found;
}

bool setField(GameState& g, std::string_view name, double value) {
  bool done = false;
  withField(g, name, [&](auto& field) { done = assign(field, value); });
  return done;
}

std::vector<std::string> fieldNames(const GameState& g) {
  std::vector<std::string> names;
  visitFields(g, [&](std::string_view field, const auto&) { names.emplace_back(field); });
  return names;
}

}  // namespace vorn
