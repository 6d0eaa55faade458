// How fast a lap of the Maple Leaf Tri Oval is run headless: with its trace,
// without a render. "times_real" is virtual time over real time.

#include <benchmark/benchmark.h>

#include <limits>
#include <sstream>

#include "demo/demo_platform.h"
#include "platform/headless/headless_platform.h"
#include "shell/start_up.h"

namespace vorn {
namespace {

/// A script that leaves the game alone.
class NoHand : public ScriptSource {
 public:
  std::optional<std::string> nextLine() override { return "wait 1000000000"; }
  std::string name() const override { return "bench"; }
};

// From start-up to the farewell, the built-in driver at the wheel; virtual seconds.
double playDemonstration() {
  NoHand noHand;
  std::ostringstream trace, captions;
  StreamTraceSink sink(trace);
  HeadlessOptions options;
  options.folder = VORN_SOUND_FOLDER;
  options.limitMs = std::numeric_limits<std::int64_t>::max();
  HeadlessConnections connections;
  connections.script = &noHand;
  connections.trace = &sink;
  HeadlessPlatform platform(options, connections);
  const std::int32_t start = platform.tickCount();
  const auto demonstration = makeDemoPlatform(platform, captions);
  platform.run([&] {
    GameState game(*demonstration);
    Form_Load(game);
    return 0;
  });
  benchmark::DoNotOptimize(trace.str().size());
  return (platform.tickCount() - start) / 1000.0;
}

void lapOfMaple(benchmark::State& state) {
  double virtualSeconds = 0;
  for (auto _ : state) virtualSeconds += playDemonstration();
  state.counters["times_real"] = benchmark::Counter(virtualSeconds, benchmark::Counter::kIsRate);
}
BENCHMARK(lapOfMaple)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace vorn

BENCHMARK_MAIN();
