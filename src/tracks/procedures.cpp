#include "tracks/procedures.h"

#include "tracks/catalogue.h"
#include "tracks/runner.h"

namespace vorn {

void maple(GameState& g) {
  runRace(g, kMaple);
}

}  // namespace vorn
