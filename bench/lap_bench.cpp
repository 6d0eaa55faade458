// How fast a lap of the Maple Leaf Tri Oval is run headless: with its trace,
// without a render. "times_real" is virtual time over real time.

#include <benchmark/benchmark.h>

#include <sstream>

#include "demo/virtual_demo.h"

namespace vorn {
namespace {

constexpr int kMaple = 1;

// From start-up to the farewell, the built-in driver at the wheel; virtual seconds.
double playDemonstration() {
  std::ostringstream trace, captions;
  StreamTraceSink sink(trace);
  HeadlessOptions options;
  options.folder = VORN_SOUND_FOLDER;
  HeadlessConnections connections;
  connections.trace = &sink;
  const VirtualDemo demo = playVirtualDemo(kMaple, options, connections, captions);
  benchmark::DoNotOptimize(trace.str().size());
  return static_cast<double>(demo.milliseconds) / 1000.0;
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
