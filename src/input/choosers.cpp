#include "input/choosers.h"

#include "clock/waits.h"
#include "input/events.h"
#include "speech/speech.h"
#include "state/key_names.h"

namespace vorn {
namespace {

constexpr double kPauseBeforeCurrentEntry = 0.2;  // seconds

bool isArrow(const GameState& g) {
  return g.lastKeyCode == key::kUp || g.lastKeyCode == key::kDown;
}

void ask(GameState& g, const ListChoice& question, int& choice) {
  if (question.keepsChoice) {
    say(g, question.prompt);
    dyke(g, kPauseBeforeCurrentEntry);
    say2(g, question.entries[choice - 1]);
  } else {
    choice = 1;
    say2(g, question.prompt);
  }
}

int neighbour(int choice, bool next, int last) {
  if (next) return choice < last ? choice + 1 : 1;
  return choice > 1 ? choice - 1 : last;
}

}  // namespace

bool askYesNo(GameState& g, const YesNo& question) {
  for (;;) {
    bool yes = question.startsAtYes;
    if (question.clearsKeysFirst) clk(g);
    say2(g, question.prompt);
    bool askAgain = false;
    while (!askAgain) {
      getkey(g);
      if (g.lastKeyCode == key::kEnter) return yes;
      if (isArrow(g)) {
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

void chooseFromList(GameState& g, const ListChoice& question, int& choice) {
  const int last = static_cast<int>(question.entries.size());
  for (;;) {
    ask(g, question, choice);
    for (getkey(g); isArrow(g); getkey(g)) {
      choice = neighbour(choice, g.lastKeyCode == key::kDown, last);
      say2(g, question.entries[choice - 1]);
    }
    if (g.lastKeyCode == key::kEnter) return;
    if (question.echoesOtherKeys) saykey(g);
  }
}

}  // namespace vorn
