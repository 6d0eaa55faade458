#include "race/walls.h"

#include <algorithm>
#include <cmath>

#include "race/crash.h"
#include "text/numbers.h"

namespace vorn {
namespace {

constexpr double kContactLoss = 2;  // mph
constexpr int kScrapePan = 500;
constexpr int kContactsForSure = 20;  // more is a crash in any case
constexpr int kContactsAtLeast = 10;  // fewer is none
constexpr int kMarblesThatSave = 10;  // more ticks in the marbles than this soften the blow

/// Scrapes along the wall; returns whether it is a crash.
bool scrape(GameState& g) {
  g.speed = std::max(0.0, g.speed - kContactLoss);
  int pan = 0;
  if (g.lateralPosition >= kRightWall) {
    g.lateralPosition = kRightWall;
    pan = kScrapePan;
  }
  if (g.lateralPosition <= kLeftWall) {
    g.lateralPosition = kLeftWall;
    pan = -kScrapePan;
  }
  ++g.wallTicks;
  if (g.wallScrapePlaying == 0) {
    g.sound10Buffer->SetPan(pan);
    g.sound10Buffer->Play(SoundBuffer::kLooping);
    g.wallScrapePlaying = 1;
  }
  if (g.wallTicks > kContactsForSure) return true;
  return g.wallTicks >= kContactsAtLeast && g.marblesTicks <= kMarblesThatSave;
}

}  // namespace

void SetWind(GameState& g) {
  const double fromMiddle = std::fabs(kMiddle - g.lateralPosition);
  const int shift = wholePart(fromMiddle * 20);
  const bool isLeft = g.lateralPosition < kMiddle;
  const int pan = isLeft ? shift : -shift;
  const double nearer = -1000 + fromMiddle * 20;
  const double farther = -1000 - fromMiddle * 20;
  g.wallLeftBuffer->SetPan(-1100 + pan);
  g.wallRightBuffer->SetPan(1100 + pan);
  g.wallLeftBuffer->SetVolume(roundToInt(isLeft ? nearer : farther));
  g.wallRightBuffer->SetVolume(roundToInt(isLeft ? farther : nearer));
}

void playsignpoll(GameState& g) {
  constexpr int kLeft = 1, kRight = 2;
  constexpr double kHertzAMile = 100;
  constexpr double kSlowestHertz = 8000;
  if (g.trackLightPolls == kOff) return;
  g.poleSide = g.poleSide == kRight ? kLeft : kRight;
  // Both pans grow with the distance from the middle: the left pole moves
  // inward, the right one outward. It sounds that way on purpose.
  const int shift = wholePart(std::fabs(kMiddle - g.lateralPosition) * 20);
  const bool isLeft = g.poleSide == kLeft;
  const double volume = isLeft ? g.lateralPosition * -10 : -1000 + g.lateralPosition * 10;
  g.sound29Buffer->SetPan((isLeft ? -1400 : 1400) + shift);
  g.sound29Buffer->SetVolume(roundToInt(volume));
  const double hertz = g.speed * kHertzAMile;
  if (hertz < kSlowestHertz) return;
  g.sound29Buffer->SetFrequency(roundToInt(hertz));
  g.sound29Buffer->SetCurrentPosition(0);
  g.platform.yield(0);
  g.sound29Buffer->Play(SoundBuffer::kOnce);
  g.platform.yield(0);
}

void c4c(GameState& g) {
  if (g.forceCrash == 1 || scrape(g)) crash(g);
}

void stopWallScrape(GameState& g) {
  if (g.wallScrapePlaying != 1) return;
  g.sound10Buffer->Stop();
  g.wallScrapePlaying = 0;
}

}  // namespace vorn
