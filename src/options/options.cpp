#include "options/options.h"

#include "text/settings_file.h"

namespace vorn {
namespace {

constexpr const char* kOptionsFile = "vorn1ops.cfg";

}  // namespace

void getgops(GameState& g) {
  if (!g.platform.files().find(kOptionsFile)) return;
  readSettingsInto(g.platform.files().read(kOptionsFile),
                   {&g.wallSound, &g.autoSpeedometer, &g.autoGearAnnounce, &g.pitRoadSnacks,
                    &g.trackLightPolls, &g.engineSound});
}

}  // namespace vorn
