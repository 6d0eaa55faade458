// How much faster than real time sound is mixed, on one core.
#include <benchmark/benchmark.h>

#include <random>

#include "platform/mixing/mixer.h"

namespace vorn {
namespace {

std::shared_ptr<const Recording> hiss(int channels) {
  std::mt19937 engine(1);
  Recording recording;
  recording.rate = 22050;
  recording.channels = channels;
  recording.bytesPerFrame = 2 * channels;
  for (int channel = 0; channel < channels; ++channel) {
    for (int i = 0; i < 3 * 22050; ++i) {
      recording.planes[channel].push_back(static_cast<float>(engine()) / 4294967296.0F - 0.5F);
    }
  }
  return std::make_shared<const Recording>(std::move(recording));
}

/// `buffers` looping recordings of `channels` channels, at `hertz` and a little
/// more each, in 256-frame blocks; the engine among them is set back every 0.1 s.
void mix(benchmark::State& state, int buffers, int channels, int hertz) {
  Mixer mixer;
  std::vector<std::unique_ptr<SoundBuffer>> sounding;
  for (int i = 0; i < buffers; ++i) {
    sounding.push_back(mixer.createBuffer(hiss(channels)));
    sounding.back()->SetVolume(-2000);
    sounding.back()->SetFrequency(hertz + 37 * i);
    sounding.back()->Play(1);
  }
  std::vector<float> block(2 * 256);
  std::int64_t frames = 0;
  for (auto _ : state) {
    if (frames / 4800 != (frames + 256) / 4800) {
      sounding[0]->SetCurrentPosition(static_cast<int>(frames * 7 % 100000));
      sounding[1]->SetPan(static_cast<int>(frames % 1000));
    }
    mixer.render(block.data(), 256);
    benchmark::DoNotOptimize(block.data());
    frames += 256;
  }
  state.counters["times_real_time"] =
      benchmark::Counter(static_cast<double>(frames) / Mixer::kRate, benchmark::Counter::kIsRate);
}

BENCHMARK_CAPTURE(mix, sixteen_buffers, 16, 1, 22051);
BENCHMARK_CAPTURE(mix, sixteen_stereo_buffers, 16, 2, 22051);
BENCHMARK_CAPTURE(mix, sixteen_buffers_played_fast, 16, 1, 52000);

}  // namespace
}  // namespace vorn

BENCHMARK_MAIN();
