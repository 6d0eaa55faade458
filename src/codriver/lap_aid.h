/// The aids that know the laps: their times, and the ghost.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <utility>

#include "codriver/aid.h"
#include "codriver/lap_times.h"

namespace vorn {

class LapAid : public Aid {
 public:
  using Aid::Aid;

  void raceBegan(const Scene& scene) override;
  void ticked(const Scene& scene, const TickReport& tick) override;
  void crashed() override;
  void raceEnded(bool isFinished) override;
  bool functionKey(int number) override;

 private:
  bool isTimed() { return cockpit().settings().isOn(AidKind::kLapTimes); }
  bool isHaunted() { return cockpit().settings().isOn(AidKind::kGhost); }
  LapBook& book() { return books_[{trackNumber_, isByKeys_}]; }
  void remember();
  void followGhost(const LapStep& step, double lateralPosition);
  void enter(const GhostLap& lap);
  void keep();

  const Track* track_ = nullptr;  ///< of the race; null: there has been none
  int trackNumber_ = 0;
  bool isByKeys_ = false;
  std::optional<LapWatch> watch_;
  bool remembers_ = false;  ///< what is kept of the track has been read
  Ghosts best_;             ///< of all time, those of this race among them
  Ghosts friends_;
  Ghosts driven_;                                  ///< in this race, and not yet kept
  LapKind kind_;                                   ///< of the lap being driven
  std::map<std::pair<int, bool>, LapBook> books_;  ///< by track, and whether by keys
};

}  // namespace vorn
