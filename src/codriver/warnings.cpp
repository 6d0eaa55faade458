#include "codriver/warnings.h"

#include "pit/rules.h"
#include "text/numbers.h"

namespace vorn {
namespace {

constexpr double kAllRevs = 100;  // percent
constexpr int kTopGear = 4;

constexpr int kFirstContactsTold = 5;
constexpr double kLapsOfWarning = 2;
constexpr double kLeastDriven = 0.5;  // laps; what less of them says of the consumption is not worth telling

constexpr int kHigh = 1047, kLow = 698;  // hertz
constexpr int kVolume = -600;
constexpr int kPitSide = -1500;  // pit road lies on the left
constexpr int kBeepMs = 90, kStepMs = 120;

}  // namespace

bool isGearUsedUp(const TickReport& tick) {
  return tick.gear >= 1 && tick.gear < kTopGear && tick.engineRpm >= kAllRevs;
}

std::vector<std::string> Warnings::after(const TickReport& tick, double lapsToRun, double lapUnits,
                                         double unitsIntoLap) {
  std::vector<std::string> news;
  if (tick.wallTicks < contacts_) contacts_ = 0;
  if (tick.wallTicks > contacts_ && tick.wallTicks >= kFirstContactsTold && tick.wallTicks < kContactsBorne) {
    contacts_ = tick.wallTicks;
    news.push_back(" " + numberText(tick.wallTicks) + " of " + numberText(kContactsBorne) +
                   " wall contacts. ");
  }
  const double driven = tick.lapsCompleted + unitsIntoLap / lapUnits;
  if (tick.fuel > fuelBefore_) {
    filledAt_ = driven;
    isLowTold_ = isEmptyTold_ = false;
  }
  fuelBefore_ = tick.fuel;
  const double laps = driven - filledAt_;
  const double burned = kFullTank - tick.fuel;
  if (!isLowTold_ && laps >= kLeastDriven && tick.fuel * laps <= kLapsOfWarning * burned &&
      lapsToRun - driven > kLapsOfWarning) {
    isLowTold_ = true;
    news.push_back(" Fuel for two more laps. ");
  }
  if (!isEmptyTold_ && tick.fuel == 0) {
    isEmptyTold_ = true;
    news.push_back(" The tank is empty. ");
  }
  return news;
}

PitSignal PitWatch::after(const TickReport& tick) {
  if (tick.pit != 0) {
    isOpen_ = false;
    const bool wasTooFast = std::exchange(isTooFast_, isSpeeding(tick.speed));
    if (isTooFast_ == wasTooFast) return PitSignal::kNone;
    return isTooFast_ ? PitSignal::kTooFast : PitSignal::kSlowEnough;
  }
  isTooFast_ = false;
  const bool wasOpen = std::exchange(isOpen_, tick.segment == 1 && tick.lapPosition <= kLastPitEntry);
  if (isOpen_ == wasOpen) return PitSignal::kNone;
  return isOpen_ ? PitSignal::kOpens : PitSignal::kCloses;
}

std::vector<Beep> pitFigure(PitSignal signal) {
  const auto beep = [](int number, int pitch) {
    return Beep{number * kStepMs, kBeepMs, {pitch, kVolume, kPitSide}};
  };
  switch (signal) {
    case PitSignal::kOpens:
      return {beep(0, kLow), beep(1, kHigh)};
    case PitSignal::kCloses:
      return {beep(0, kHigh), beep(1, kLow)};
    case PitSignal::kTooFast:
      return {beep(0, kHigh), beep(1, kHigh), beep(2, kHigh)};
    case PitSignal::kSlowEnough:
      return {beep(0, kLow)};
    case PitSignal::kNone:
      break;
  }
  return {};
}

}  // namespace vorn
