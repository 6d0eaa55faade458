#include "demo/virtual_demo.h"

#include <limits>

#include "demo/demo_platform.h"
#include "shell/start_up.h"
#include "state/game_state.h"

namespace vorn {
namespace {

/// A script that leaves the game to its driver.
class NoHand : public ScriptSource {
 public:
  std::optional<std::string> nextLine() override { return "wait 1000000000"; }
  std::string name() const override { return "demonstration"; }
};

}  // namespace

VirtualDemo playVirtualDemo(int track, HeadlessOptions options, HeadlessConnections connections,
                            std::ostream& captions) {
  NoHand noHand;
  options.limitMs = std::numeric_limits<std::int64_t>::max();
  connections.script = &noHand;
  HeadlessPlatform platform(options, connections);
  const std::int32_t start = platform.tickCount();
  const auto demonstration = makeDemoPlatform(platform, track, captions);
  const int exitStatus = platform.run([&] {
    GameState game(*demonstration);
    Form_Load(game);
    return 0;
  });
  return {exitStatus, platform.tickCount() - start};
}

}  // namespace vorn
