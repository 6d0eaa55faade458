#include "codriver/lap_aid.h"

#include "codriver/ghost_store.h"
#include "race/race_clock.h"
#include "text/numbers.h"

namespace vorn {
namespace {

constexpr double kGhostPitch = 220;  // hertz, beside the car
constexpr int kReportKey = 9;

Tone toneOf(const GhostSound& sound) {
  return {.pitch = roundToInt(kGhostPitch * sound.pitch), .volume = sound.volume, .pan = sound.pan};
}

}  // namespace

void LapAid::raceBegan(const Scene& scene) {
  if (scene.isLesson) return;
  if (track_ != &scene.track) best_.clear();
  track_ = &scene.track;
  trackNumber_ = scene.game.trackChoice;
  watch_.emplace(scene.track);
  kind_ = {};
  remembers_ = false;
  friends_.clear();
}

/// Reads what is kept of the track, once it is of use.
void LapAid::remember() {
  if (remembers_ || !(isTimed() || isHaunted())) return;
  remembers_ = true;
  KeptGhosts own = keptGhosts(cockpit().files(), trackNumber_);
  KeptGhosts friends = friendsGhosts(cockpit().files(), trackNumber_);
  for (const GhostLap& lap : own.ghosts) keepBetter(best_, lap);
  friends_ = std::move(friends.ghosts);
  for (const std::string& word : {own.word, friends.word}) {
    if (!word.empty()) cockpit().tell(word);
  }
}

void LapAid::ticked(const Scene& scene, const TickReport& tick) {
  if (!watch_) return;
  isByKeys_ = kind_.isByKeys = scene.game.inputDevice == kKeyboard;
  remember();
  const LapStep step = watch_->watch(tick, isByKeys_);
  followGhost(step, tick.lateralPosition);
  if (step.lap) enter(*step.lap);
}

void LapAid::followGhost(const LapStep& step, double lateralPosition) {
  const Ghosts& rivals = cockpit().settings().racesFriend != 0 ? friends_ : best_;
  const GhostLap* const rival = isHaunted() ? rivalOf(rivals, kind_) : nullptr;
  const auto place = rival != nullptr ? ghostAt(*rival, step.ticks) : std::nullopt;
  if (!place) {
    cockpit().tones().hold(ToneSlot::kGhost, std::nullopt);
    return;
  }
  const GhostSound sound = ghostSound(place->distance - step.distance, place->lateral - lateralPosition);
  cockpit().tones().hold(ToneSlot::kGhost, sound.isInReach ? std::optional(toneOf(sound)) : std::nullopt);
  if (!step.endsSegment) return;
  const double lost =
      step.lap ? step.lap->ticks - rival->ticks : step.ticks - ghostTicksAt(*rival, step.distance);
  cockpit().tell(" " + gapText(lost / kTicksPerSecond) + " ");
}

void LapAid::enter(const GhostLap& lap) {
  const GhostLap* const before = ghostOf(best_, lap.kind);
  book().enter(lap, before);
  if (isTimed()) cockpit().tell(lapSentence(lap, before));
  keepBetter(best_, lap);
  keepBetter(driven_, lap);
  kind_.isFlying = true;
}

void LapAid::crashed() {
  cockpit().tones().hold(ToneSlot::kGhost, std::nullopt);
}

void LapAid::raceEnded(bool) {
  watch_.reset();
  keep();
}

/// Not in the middle of a race: a disk may take its time.
void LapAid::keep() {
  if (remembers_ && !driven_.empty()) {
    const std::string word = keepGhosts(cockpit().files(), trackNumber_, driven_);
    if (!word.empty()) cockpit().tell(word);
  }
  driven_.clear();
}

bool LapAid::functionKey(int number) {
  if (number != kReportKey) return false;
  cockpit().tell(track_ != nullptr ? lapReport(book(), best_, *track_) : kNoLapYet);
  return true;
}

}  // namespace vorn
