#include "tracks/procedures.h"

#include "tracks/catalogue.h"
#include "tracks/runner.h"

namespace vorn {

void maple(GameState& g) {
  runRace(g, kMaple);
}

void painsville(GameState& g) {
  runRace(g, kPainsville);
}

void chagrin(GameState& g) {
  runRace(g, kChagrin);
}

void ohio(GameState& g) {
  runRace(g, kOhio);
}

void chardon(GameState& g) {
  runRace(g, kChardon);
}

void erie(GameState& g) {
  runRace(g, kErie);
}

void mentor(GameState& g) {
  runRace(g, kMentor);
}

void kirtland(GameState& g) {
  runRace(g, kKirtland);
}

void chesterland(GameState& g) {
  runRace(g, kChesterland);
}

void geneva(GameState& g) {
  runRace(g, kGeneva);
}

}  // namespace vorn
