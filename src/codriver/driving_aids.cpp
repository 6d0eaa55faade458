#include "codriver/driving_aids.h"

#include <limits>
#include <optional>
#include <string>

#include "codriver/preview_words.h"
#include "codriver/slider.h"
#include "codriver/turn_calls.h"
#include "codriver/warnings.h"
#include "demo/road_book.h"
#include "demo/wheel_driver.h"

namespace vorn {
namespace {

/// What a driver with keys can do, whose lock has to build up.
constexpr Skill kKeySkill{.entryStep = 4,
                          .changeStep = 0.5,
                          .buildUp = 200 / 1500.0,
                          .topStep = 6.3,
                          .drift = 55,
                          .slowing = 3.3,
                          .jumpSpeed = 115,
                          .inside = 20,
                          .outside = 75};

constexpr double kAnySpeed = 240;  // mph

/// Units of the lap behind the car.
double unitsIntoLap(const Track& track, const TickReport& tick) {
  double units = tick.lapPosition;
  for (int i = 0; i + 1 < tick.segment; ++i) units += track.segments[static_cast<std::size_t>(i)].length;
  return units;
}

RaceState carOf(const GameState& game, const TickReport& tick) {
  RaceState car;
  car.speed = tick.speed;
  car.topGearUnlimited = game.topGearUnlimited;
  return car;
}

bool isByKeys(const GameState& game) {
  return game.inputDevice == kKeyboard;
}

class TurnCallAid : public Aid {
 public:
  using Aid::Aid;

  void raceBegan(const Scene& scene) override {
    turns_ = turnsOf(scene.track);
    paces_ = paceOf(scene.track, kAnySpeed);
    forget();
  }
  void crashed() override { forget(); }
  void ticked(const Scene& scene, const TickReport& tick) override;

 private:
  /// A turn ahead, and when its call has to begin, ms from now at the soonest.
  struct Ahead {
    std::size_t turn;
    double distance;
    double callInMs;
    std::vector<Beep> call;
  };

  void forget() {
    isCalled_.assign(turns_.size(), false);
    isSteerCalled_.assign(turns_.size(), false);
  }
  std::vector<Ahead> ahead(const Scene& scene, const TickReport& tick) const;
  void call(const Scene& scene, const Ahead& next);
  void callSteering(const Scene& scene, const TickReport& tick, const Ahead& next);

  std::vector<CalledTurn> turns_;
  std::vector<SegmentPace> paces_;
  std::vector<bool> isCalled_, isSteerCalled_;  ///< by turn; until the car is in it
};

/// The next turns in the order in which they come, as far as the race goes.
std::vector<TurnCallAid::Ahead> TurnCallAid::ahead(const Scene& scene, const TickReport& tick) const {
  constexpr std::size_t kMost = 4;
  const double here = unitsIntoLap(scene.track, tick);
  const double lap = lapLength(scene.track);
  const bool isLastLap = !(tick.lapsCompleted + 1 < scene.game.lapsToRun);
  const RaceState car = carOf(scene.game, tick);
  std::vector<Ahead> found;
  for (const double lapsOn : {0.0, 1.0}) {
    if (lapsOn > 0 && isLastLap) break;
    for (std::size_t i = 0; i < turns_.size() && found.size() < kMost; ++i) {
      const double distance = turns_[i].start + lapsOn * lap - here;
      if (distance <= 0) continue;
      const Segment& segment = scene.track.segments[turns_[i].first];
      found.push_back({i, distance, soonestMs(car, distance) - cockpit().settings().callAhead * 100,
                       turnCall(turns_[i], pushAt(segment, tick.speed))});
    }
  }
  // Calls do not overlap: one that is followed by another at once begins earlier.
  constexpr int kBetweenCalls = 80;  // ms
  for (std::size_t i = found.size(); i-- > 1;) {
    found[i - 1].callInMs =
        std::min(found[i - 1].callInMs, found[i].callInMs - figureMs(found[i - 1].call) - kBetweenCalls);
  }
  return found;
}

void TurnCallAid::ticked(const Scene& scene, const TickReport& tick) {
  if (tick.pit != 0) {
    forget();
    return;
  }
  const double here = unitsIntoLap(scene.track, tick);
  for (std::size_t i = 0; i < turns_.size(); ++i) {
    if (here < turns_[i].start || here >= turns_[i].start + turns_[i].length) continue;
    isCalled_[i] = isSteerCalled_[i] = false;
  }
  if (!cockpit().settings().isOn(AidKind::kTurnCalls)) return;
  const auto turns = ahead(scene, tick);
  for (const Ahead& next : turns) {
    if (isCalled_[next.turn]) continue;
    if (next.callInMs < kTickMs) call(scene, next);
    break;  // one call a tick, in their order
  }
  if (!turns.empty() && isByKeys(scene.game)) callSteering(scene, tick, turns.front());
}

void TurnCallAid::call(const Scene& scene, const Ahead& next) {
  isCalled_[next.turn] = true;
  const int style = cockpit().settings().callStyle;
  if (style != kCallNotes) cockpit().tones().play(ToneSlot::kTurn, next.call, cockpit().now());
  if (style == kCallTones) return;
  const std::size_t segment = turns_[next.turn].first;
  cockpit().tell(segmentWords(scene.track.segments[segment], paces_[segment]));
}

void TurnCallAid::callSteering(const Scene& scene, const TickReport& tick, const Ahead& next) {
  const CalledTurn& turn = turns_[next.turn];
  if (turn.turn == Turn::kNone || isSteerCalled_[next.turn] || tick.speed <= 0) return;
  const int lead = keyLead(scene.track.segments[turn.first], tick.speed, tick.lateralPosition);
  if (next.distance / tick.speed - 1 >= lead) return;
  isSteerCalled_[next.turn] = true;
  cockpit().tones().play(ToneSlot::kSteer, steerCall(turn.turn), cockpit().now());
}

class SliderAid : public Aid {
 public:
  using Aid::Aid;

  void ticked(const Scene& scene, const TickReport& tick) override {
    if (!cockpit().settings().isOn(AidKind::kSlider)) return;
    if (tick.pit != 0 || tick.speed <= 0) {
      cockpit().tones().hold(ToneSlot::kSlider, std::nullopt);
      return;
    }
    const bool byKeys = isByKeys(scene.game);
    const bool isSteered = !byKeys || tick.steerKeyTicks > 0;
    const Hands hands{isSteered ? tick.joySteering : 0, byKeys};
    cockpit().tones().hold(ToneSlot::kSlider,
                           sliderTone(placeAhead(scene.track, tick, hands), isBeforeJump(scene.track, tick)));
  }
};

class LightsAid : public Aid {
 public:
  using Aid::Aid;

  void raceBegan(const Scene& scene) override {
    road_.emplace(scene.track, isByKeys(scene.game) ? kKeySkill : kWheelSkill);
  }
  void ticked(const Scene&, const TickReport& tick) override {
    const bool shifts = usedUp_.rises(isGearUsedUp(tick));
    const bool brakes =
        tooFast_.rises(tick.pit == 0 && tick.speed > road_->speedLimit(road_->sightAfter(tick)));
    if (!cockpit().settings().isOn(AidKind::kLights)) return;
    if (shifts) cockpit().tones().play(ToneSlot::kShift, {{0, 40, {1760, -300, 0}}}, cockpit().now());
    if (brakes) {
      cockpit().tones().play(ToneSlot::kBrake, {{0, 70, {330, -200, 0}}, {110, 70, {330, -200, 0}}},
                             cockpit().now());
    }
  }

 private:
  std::optional<RoadBook> road_;
  Edge usedUp_, tooFast_;
};

class WarningAid : public Aid {
 public:
  using Aid::Aid;

  void raceBegan(const Scene&) override {
    warnings_ = {};
    pits_ = {};
  }
  void ticked(const Scene& scene, const TickReport& tick) override {
    const auto news = warnings_.after(tick, scene.game.lapsToRun, lapLength(scene.track),
                                      tick.pit != 0 ? 0 : unitsIntoLap(scene.track, tick));
    const PitSignal signal = pits_.after(tick);
    if (!cockpit().settings().isOn(AidKind::kWarnings)) return;
    for (const std::string& text : news) cockpit().tell(text);
    if (signal != PitSignal::kNone) {
      cockpit().tones().play(ToneSlot::kPit, pitFigure(signal), cockpit().now());
    }
  }

 private:
  Warnings warnings_;
  PitWatch pits_;
};

}  // namespace

std::vector<std::unique_ptr<Aid>> drivingAids(Cockpit& cockpit) {
  std::vector<std::unique_ptr<Aid>> aids;
  aids.push_back(std::make_unique<TurnCallAid>(cockpit));
  aids.push_back(std::make_unique<SliderAid>(cockpit));
  aids.push_back(std::make_unique<LightsAid>(cockpit));
  aids.push_back(std::make_unique<WarningAid>(cockpit));
  return aids;
}

}  // namespace vorn
