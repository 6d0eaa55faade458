// How much faster than real time sound is mixed, on one core: by the game's mixer and, where OpenAL Soft is
// installed, by that in the same run, which makes the two comparable on any machine.
#include <benchmark/benchmark.h>

#ifdef VORN_OPENAL
#define AL_ALEXT_PROTOTYPES
#include <AL/al.h>
#include <AL/alc.h>
#include <AL/alext.h>
#endif

#include <random>
#include <string>

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

#ifdef VORN_OPENAL
/// The same by OpenAL Soft with its resampler `wanted`, by name.
void openAl(benchmark::State& state, const char* wanted) {
  constexpr int kBuffers = 16, kFrames = 256;
  ALCdevice* const device = alcLoopbackOpenDeviceSOFT(nullptr);
  const ALCint format[] = {ALC_FORMAT_CHANNELS_SOFT,
                           ALC_STEREO_SOFT,
                           ALC_FORMAT_TYPE_SOFT,
                           ALC_FLOAT_SOFT,
                           ALC_FREQUENCY,
                           Mixer::kRate,
                           ALC_HRTF_SOFT,
                           ALC_FALSE,
                           0};
  ALCcontext* const context = alcCreateContext(device, format);
  alcMakeContextCurrent(context);
  ALint resampler = -1;
  for (ALint i = 0; i < alGetInteger(AL_NUM_RESAMPLERS_SOFT); ++i) {
    if (std::string(alGetStringiSOFT(AL_RESAMPLER_NAME_SOFT, i)) == wanted) resampler = i;
  }
  if (resampler < 0) state.SkipWithError("no such resampler");
  const auto recording = hiss(1);
  std::vector<std::int16_t> samples;
  for (const float sample : recording->planes[0])
    samples.push_back(static_cast<std::int16_t>(sample * 32767));
  ALuint buffers[kBuffers], sources[kBuffers];
  alGenBuffers(kBuffers, buffers);
  alGenSources(kBuffers, sources);
  for (int i = 0; i < kBuffers; ++i) {
    alBufferData(buffers[i], AL_FORMAT_MONO16, samples.data(), static_cast<ALsizei>(samples.size() * 2),
                 22050);
    alSourcei(sources[i], AL_BUFFER, static_cast<ALint>(buffers[i]));
    alSourcei(sources[i], AL_LOOPING, AL_TRUE);
    alSourcei(sources[i], AL_SOURCE_RESAMPLER_SOFT, resampler);
    alSourcef(sources[i], AL_GAIN, 0.1F);
    alSourcef(sources[i], AL_PITCH, static_cast<float>(22051 + 37 * i) / 22050);
    alSourcePlay(sources[i]);
  }
  std::vector<float> block(2 * kFrames);
  std::int64_t frames = 0;
  for (auto _ : state) {
    alcRenderSamplesSOFT(device, block.data(), kFrames);
    benchmark::DoNotOptimize(block.data());
    frames += kFrames;
  }
  state.counters["times_real_time"] =
      benchmark::Counter(static_cast<double>(frames) / Mixer::kRate, benchmark::Counter::kIsRate);
  alDeleteSources(kBuffers, sources);
  alDeleteBuffers(kBuffers, buffers);
  alcMakeContextCurrent(nullptr);
  alcDestroyContext(context);
  alcCloseDevice(device);
}
BENCHMARK_CAPTURE(openAl, linear, "Linear");
BENCHMARK_CAPTURE(openAl, sinc11, "11th order Sinc");
BENCHMARK_CAPTURE(openAl, sinc23, "23rd order Sinc");
#endif

}  // namespace
}  // namespace vorn

BENCHMARK_MAIN();
