#include "input/choosers.h"

#include "input/events.h"
#include "input/key_names.h"
#include "speech/speech.h"

namespace vorn {

bool askYesNo(GameState& g, const YesNo& question) {
  for (;;) {
    bool yes = question.startsAtYes;
    say2(g, question.prompt);
    bool askAgain = false;
    while (!askAgain) {
      getkey(g);
      if (g.lastKeyCode == key::kEnter) return yes;
      if (g.lastKeyCode == key::kUp || g.lastKeyCode == key::kDown) {
        yes = !yes;
        say2(g, yes ? " yes " : " no ");
        continue;
      }
      if (g.lastKeyCode == key::kF1) {
        askAgain = question.f1AsksAgain;
        continue;
      }
      const bool answers = g.lastKeyChar == "y" || g.lastKeyChar == "n";
      if (question.echoesEveryKey || !answers) saykey(g);
      if (answers) return g.lastKeyChar == "y";
      askAgain = question.otherKeyAsksAgain;
    }
  }
}

}  // namespace vorn
