#include "options/instructions.h"

#include "clock/waits.h"
#include "input/choosers.h"
#include "input/events.h"
#include "options/help_texts.h"
#include "speech/speech.h"
#include "state/track_names.h"

namespace vorn {

void readins(GameState& g) {
  stopspeech(g);
  clk(g);
  say2(g, instructionsText());
}

void reades(GameState& g) {
  stopspeech(g);
  clk(g);
  const auto firstName = g.trackNames.begin() + 1;
  int track = 1;
  chooseFromList(g,
                 {.prompt = " Select, track description that you wish to read. Maple Leaf Tri Oval track ",
                  .entries = {firstName, firstName + kTracks},
                  .echoesOtherKeys = true},
                 track);
  clk(g);
  speakAndWait(g, trackDescription(track));
  stopspeech(g);
  clk(g);
  dyke(g, 0.3);
}

}  // namespace vorn
