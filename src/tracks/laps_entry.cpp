#include "tracks/laps_entry.h"

#include <cmath>

#include "input/choosers.h"
#include "input/events.h"
#include "text/numbers.h"

namespace vorn {
namespace {

constexpr double kMostLaps = 9999;

/// A number under which no record could be filed or told is no number of laps.
double countedLaps(double typed) {
  constexpr double kFewest = -1e9;
  constexpr int kDecimals = 15;
  const bool isTold = std::isfinite(typed) && typed > kFewest && roundDecimals(typed, kDecimals) != 0;
  return isTold ? typed : 0;
}

bool isConfirmed(GameState& g) {
  return askYesNo(
      g, {.prompt = " Is " + numberText(g.lapsToRun) + " correct for the number of laps to run?  yes ",
          .f1AsksAgain = false,
          .echoesEveryKey = false,
          .otherKeyAsksAgain = false});
}

}  // namespace

void gltr(GameState& g) {
  do {
    do {
      getter(g, " Enter the number of laps that you wish to run. ");
      g.lapsToRun = countedLaps(leadingNumber(g.typedText));
      g.platform.yield();
      if (g.lapsToRun == 0) {
        clk(g);
        g.escapePressed = 1;
        return;
      }
    } while (g.lapsToRun > kMostLaps);
  } while (!isConfirmed(g));
  g.escapePressed = 0;
}

}  // namespace vorn
