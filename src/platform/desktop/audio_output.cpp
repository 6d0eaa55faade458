#include "platform/desktop/audio_output.h"

#include <SDL.h>

#include <cstring>

#include "platform/desktop/desktop_platform.h"

namespace vorn {
namespace {

/// SDL holds one buffer while another is being played, and a sound server one more.
constexpr int kBuffersUnderWay = 3;

void play(void* mixer, std::uint8_t* bytes, int size) {
  constexpr int kFrameBytes = 2 * sizeof(float);
  static_cast<Mixer*>(mixer)->render(reinterpret_cast<float*>(bytes), size / kFrameBytes);
}

/// SDL may fall back to a driver that plays nothing; it counts only where it was asked for.
bool playsNothing(const char* driver) {
  return (driver == nullptr || std::strcmp(driver, "dummy") == 0) && SDL_getenv("SDL_AUDIODRIVER") == nullptr;
}

[[noreturn]] void fail(const std::string& reason) {
  SDL_QuitSubSystem(SDL_INIT_AUDIO);
  throw DesktopUnavailable(DesktopUnavailable::Missing::kSound, reason);
}

}  // namespace

AudioOutput::AudioOutput(Mixer& mixer, int frames) {
  if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) {
    fail(SDL_GetError());
  }
  if (playsNothing(SDL_GetCurrentAudioDriver())) {
    fail("no sound driver was found");
  }
  SDL_AudioSpec wanted{}, got{};
  wanted.freq = Mixer::kRate;
  wanted.format = AUDIO_F32SYS;
  wanted.channels = 2;
  wanted.samples = static_cast<std::uint16_t>(frames);
  wanted.callback = play;
  wanted.userdata = &mixer;
  device_ = SDL_OpenAudioDevice(nullptr, 0, &wanted, &got, 0);
  if (device_ == 0) {
    fail(SDL_GetError());
  }
  mixer.voice().setDeviceLatency(kBuffersUnderWay * got.samples);
  SDL_PauseAudioDevice(device_, 0);
}

AudioOutput::~AudioOutput() {
  SDL_CloseAudioDevice(device_);
  SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

}  // namespace vorn
