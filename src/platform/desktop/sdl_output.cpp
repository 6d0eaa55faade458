#include "platform/desktop/sdl_output.h"

#include <SDL.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstring>

#include "platform/common/watchdog.h"

namespace vorn {
namespace {

using namespace std::chrono_literals;

/// SDL holds one buffer while another is being played, and a device one more.
constexpr int kBuffersUnderWay = 3;

constexpr auto kPatience = 600ms;  ///< with a device that takes nothing
constexpr auto kNextLook = 100ms;

/// SDL may fall back to a driver that plays nothing; it counts only where it was asked for.
bool playsNothing(const char* driver) {
  return (driver == nullptr || std::strcmp(driver, "dummy") == 0) && SDL_getenv("SDL_AUDIODRIVER") == nullptr;
}

/// SDL's sound, without SDL's count of users, which is the game thread's.
class SdlSound {
 public:
  explicit SdlSound(const std::string& driver) {
    if (SDL_AudioInit(driver.empty() ? nullptr : driver.c_str()) != 0) {
      problem_ = SDL_GetError();
    } else if (playsNothing(SDL_GetCurrentAudioDriver())) {
      problem_ = "no sound driver was found";
    }
  }
  ~SdlSound() { SDL_AudioQuit(); }
  SdlSound(const SdlSound&) = delete;
  SdlSound& operator=(const SdlSound&) = delete;

  /// Empty where a driver works.
  const std::string& problem() const { return problem_; }
  static std::vector<std::string> devices() {
    std::vector<std::string> names;
    for (int i = 0; i < SDL_GetNumAudioDevices(0); ++i) {
      if (const char* const name = SDL_GetAudioDeviceName(i, 0)) names.emplace_back(name);
    }
    return names;
  }

 private:
  std::string problem_;
};

class SdlOutput {
 public:
  explicit SdlOutput(AudioLine& line) : line_(line), frames_(line.frames()) {}
  ~SdlOutput();
  SdlOutput(const SdlOutput&) = delete;
  SdlOutput& operator=(const SdlOutput&) = delete;

  /// Returns why it cannot; empty where it can.
  std::string open();
  void watch();

 private:
  static void play(void* output, std::uint8_t* bytes, int size);
  void fill(float* interleaved, int frames);
  const char* wishedDevice(const std::vector<std::string>& devices);

  AudioLine& line_;
  const int frames_;
  SDL_AudioDeviceID device_ = 0;
  std::atomic<std::uint64_t> buffersTaken_{0};
  std::atomic<bool> isGivenUp_{false};
  float gain_ = 0;  ///< the device's thread's: it fades in, and out when another one is to follow
};

std::string SdlOutput::open() {
  SDL_AudioSpec wanted{}, got{};
  wanted.freq = Mixer::kRate;
  wanted.format = AUDIO_F32SYS;
  wanted.channels = 2;
  wanted.samples = static_cast<std::uint16_t>(frames_);
  wanted.callback = play;
  wanted.userdata = this;
  const std::vector<std::string> devices = SdlSound::devices();
  device_ = SDL_OpenAudioDevice(wishedDevice(devices), 0, &wanted, &got, 0);
  if (device_ == 0) {
    return SDL_GetError();
  }
  line_.begin(kBuffersUnderWay * got.samples);
  SDL_PauseAudioDevice(device_, 0);
  return "";
}

/// Null for whichever device SDL opens by itself.
const char* SdlOutput::wishedDevice(const std::vector<std::string>& devices) {
  if (line_.wishedDevice().empty()) {
    return nullptr;
  }
  const bool isThere = std::find(devices.begin(), devices.end(), line_.wishedDevice()) != devices.end();
  line_.tellMissing(!isThere);
  return isThere ? line_.wishedDevice().c_str() : nullptr;
}

SdlOutput::~SdlOutput() {
  isGivenUp_ = true;
  const bool isToBeFollowed = frames_ != line_.frames() && !line_.isEnding();
  if (!isToBeFollowed) {
    line_.setTaken(false);
  }
  if (device_ != 0) {
    SDL_CloseAudioDevice(device_);
  }
}

/// SDL goes on calling for a device that has vanished, so being called means
/// little: `watch` decides when the device is given up.
void SdlOutput::play(void* output, std::uint8_t* bytes, int size) {
  constexpr int kFrameBytes = 2 * sizeof(float);
  static_cast<SdlOutput*>(output)->fill(reinterpret_cast<float*>(bytes), size / kFrameBytes);
}

void SdlOutput::fill(float* interleaved, int frames) {
  const bool isFirst = ++buffersTaken_ == 1;
  const float aim = isGivenUp_ || frames_ != line_.frames() ? 0.0F : 1.0F;
  if (aim == 0 && gain_ == 0) {
    std::fill_n(interleaved, 2 * frames, 0.0F);
    return;
  }
  line_.render(interleaved, frames);
  const float step = (aim - gain_) / static_cast<float>(frames);
  for (int i = 0; step != 0 && i < frames; ++i) {
    gain_ += step;
    interleaved[2 * i] *= gain_;
    interleaved[2 * i + 1] *= gain_;
  }
  gain_ = aim;
  if (isFirst) {
    line_.setTaken(true);
  }
}

/// Returns when the device has failed or the game ends, or when the buffer has grown and sound has faded out.
void SdlOutput::watch() {
  Watchdog watchdog;
  while (line_.rest(kNextLook) && SDL_GetAudioDeviceStatus(device_) != SDL_AUDIO_STOPPED &&
         frames_ == line_.frames() &&
         watchdog.idleFor(buffersTaken_, std::chrono::steady_clock::now()) < kPatience) {
  }
}

}  // namespace

void playThroughSdl(AudioLine& line, std::string& driver) {
  const SdlSound sound(driver);
  if (!sound.problem().empty()) {
    line.tellOpening(sound.problem());
    return;
  }
  bool hasGrown = false;
  do {
    SdlOutput output(line);
    const std::string problem = output.open();
    line.tellOpening(problem);
    if (!problem.empty()) {
      line.setTaken(false);
      return;
    }
    driver = SDL_GetCurrentAudioDriver();
    const int frames = line.frames();
    output.watch();
    hasGrown = frames != line.frames();
  } while (hasGrown && !line.isEnding());
}

std::vector<std::string> sdlDevices() {
  const SdlSound sound("");
  return sound.problem().empty() ? SdlSound::devices() : std::vector<std::string>{};
}

}  // namespace vorn
