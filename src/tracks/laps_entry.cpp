#include "tracks/laps_entry.h"

#include "input/choosers.h"
#include "input/events.h"
#include "text/numbers.h"

namespace vorn {
namespace {

constexpr double kMostLaps = 9999;

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
      g.lapsToRun = leadingNumber(g.typedText);
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
