#include "platform/desktop/audio_output.h"

#include <SDL.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <optional>
#include <string>

#include "platform/common/watchdog.h"
#include "platform/desktop/desktop_platform.h"

namespace vorn {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

/// SDL holds one buffer while another is being played, and a sound server one more.
constexpr int kBuffersUnderWay = 3;

constexpr auto kLongestOpening = 10s;
constexpr auto kLongestFirstBuffer = 1s;
constexpr auto kLongestClosing = 1s;
constexpr auto kPatience = 600ms;  ///< with a device that takes nothing
constexpr auto kNextLook = 100ms;
constexpr auto kNextTry = 250ms;  ///< to open a device while there is none

/// SDL may fall back to a driver that plays nothing; it counts only where it was asked for.
bool playsNothing(const char* driver) {
  return (driver == nullptr || std::strcmp(driver, "dummy") == 0) && SDL_getenv("SDL_AUDIODRIVER") == nullptr;
}

}  // namespace

/// What the game's thread, the keeper's and the device's share.
struct AudioOutput::Line {
  explicit Line(Mixer& theMixer) : mixer(&theMixer) {}

  /// Lets `time` pass, or less when the game ends. False: it does.
  bool rest(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex);
    return !changed.wait_for(lock, time, [this] { return isEnding; });
  }
  void tell(std::string news) {
    {
      const std::lock_guard lock(mutex);
      problem = std::move(news);
    }
    changed.notify_all();
  }

  std::mutex rendering;  ///< held by whoever calls the mixer's `render`
  Mixer* mixer;          ///< null once the game has gone
  std::atomic<bool> isTaken{false};

  std::mutex mutex;  ///< over what follows
  std::condition_variable changed;
  std::optional<std::string> problem;  ///< of the last attempt to open a device: empty where there was none
  bool isEnding = false, hasEnded = false;
};

/// One opening of the default device. Lives on the keeper's thread, for each of
/// its calls may hang together with the sound server.
class AudioOutput::Device {
 public:
  /// `driver`: of SDL; null for the first that works.
  Device(Line& line, int frames, const char* driver);
  ~Device();
  Device(const Device&) = delete;
  Device& operator=(const Device&) = delete;

  /// Empty where the device has been opened.
  const std::string& problem() const { return problem_; }
  bool isThere() const { return SDL_GetAudioDeviceStatus(device_) != SDL_AUDIO_STOPPED; }
  std::uint64_t buffersTaken() const { return buffersTaken_; }

 private:
  static void play(void* device, std::uint8_t* bytes, int size);

  Line& line_;
  SDL_AudioDeviceID device_ = 0;
  std::string problem_;
  std::atomic<std::uint64_t> buffersTaken_{0};
  bool isGivenUp_ = false;
};

AudioOutput::Device::Device(Line& line, int frames, const char* driver) : line_(line) {
  // Without SDL's count of users, which is the game thread's.
  if (SDL_AudioInit(driver) != 0) {
    problem_ = SDL_GetError();
    return;
  }
  if (playsNothing(SDL_GetCurrentAudioDriver())) {
    problem_ = "no sound driver was found";
    return;
  }
  SDL_AudioSpec wanted{}, got{};
  wanted.freq = Mixer::kRate;
  wanted.format = AUDIO_F32SYS;
  wanted.channels = 2;
  wanted.samples = static_cast<std::uint16_t>(frames);
  wanted.callback = play;
  wanted.userdata = this;
  device_ = SDL_OpenAudioDevice(nullptr, 0, &wanted, &got, 0);
  if (device_ == 0) {
    problem_ = SDL_GetError();
    return;
  }
  {
    const std::lock_guard lock(line_.rendering);
    if (line_.mixer != nullptr) {
      line_.mixer->voice().setDeviceLatency(kBuffersUnderWay * got.samples);
    }
  }
  SDL_PauseAudioDevice(device_, 0);
}

AudioOutput::Device::~Device() {
  {
    const std::lock_guard lock(line_.rendering);
    isGivenUp_ = true;
    line_.isTaken = false;
  }
  if (device_ != 0) {
    SDL_CloseAudioDevice(device_);
  }
  SDL_AudioQuit();
}

/// SDL goes on calling for a device that has vanished, so being called means
/// little: the keeper decides which device is given up.
void AudioOutput::Device::play(void* device, std::uint8_t* bytes, int size) {
  constexpr int kFrameBytes = 2 * sizeof(float);
  auto& self = *static_cast<Device*>(device);
  const std::lock_guard lock(self.line_.rendering);
  ++self.buffersTaken_;
  if (self.isGivenUp_ || self.line_.mixer == nullptr) {
    std::memset(bytes, 0, static_cast<std::size_t>(size));
    return;
  }
  self.line_.isTaken = true;
  self.line_.mixer->render(reinterpret_cast<float*>(bytes), size / kFrameBytes);
  if (self.buffersTaken_ == 1) {
    { const std::lock_guard newsLock(self.line_.mutex); }
    self.line_.changed.notify_all();
  }
}

AudioOutput::AudioOutput(Mixer& mixer, int frames) : line_(std::make_shared<Line>(mixer)) {
  keeper_ = std::thread([line = line_, frames] { keep(*line, frames); });
  std::string problem;
  {
    std::unique_lock lock(line_->mutex);
    line_->changed.wait_for(lock, kLongestOpening, [this] { return line_->problem.has_value(); });
    problem = line_->problem.value_or("it does not answer");
    if (problem.empty()) {
      line_->changed.wait_for(lock, kLongestFirstBuffer, [this] { return line_->isTaken.load(); });
    }
  }
  if (!problem.empty()) {
    close();
    throw DesktopUnavailable(DesktopUnavailable::Missing::kSound, problem);
  }
  renderedUpTo_ = steady_clock::now();
}

AudioOutput::~AudioOutput() {
  close();
}

void AudioOutput::close() {
  {
    const std::lock_guard lock(line_->rendering);
    line_->mixer = nullptr;
  }
  std::unique_lock lock(line_->mutex);
  line_->isEnding = true;
  line_->changed.notify_all();
  const bool hasEnded = line_->changed.wait_for(lock, kLongestClosing, [this] { return line_->hasEnded; });
  lock.unlock();
  if (hasEnded) {
    keeper_.join();
  } else {
    keeper_.detach();
  }
}

void AudioOutput::keep(Line& line, int frames) {
  // SDL knows one set of drivers: a keeper that was left behind closing is waited for.
  static std::mutex keeping;
  const std::lock_guard only(keeping);
  std::string driver;  // what worked once is tried again, so that the others do not complain of each attempt
  do {
    Device device(line, frames, driver.empty() ? nullptr : driver.c_str());
    line.tell(device.problem());
    if (device.problem().empty()) {
      driver = SDL_GetCurrentAudioDriver();
      watch(line, device);
    }
  } while (line.rest(kNextTry));
  {
    const std::lock_guard lock(line.mutex);
    line.hasEnded = true;
  }
  line.changed.notify_all();
}

/// Returns when the device has failed or the game ends.
void AudioOutput::watch(Line& line, Device& device) {
  Watchdog watchdog;
  while (line.rest(kNextLook) && device.isThere() &&
         watchdog.idleFor(device.buffersTaken(), steady_clock::now()) < kPatience) {
  }
}

bool AudioOutput::isHeard() {
  const auto now = steady_clock::now();
  if (line_->isTaken) {
    renderedUpTo_ = now;
    return true;
  }
  constexpr int kPiece = 480;  // frames: a hundredth of a second
  constexpr auto kPieceTime = 10ms;
  renderedUpTo_ = std::max(renderedUpTo_, now - 1s);
  std::array<float, 2 * kPiece> unheard;
  const std::lock_guard lock(line_->rendering);
  for (; renderedUpTo_ + kPieceTime <= now && !line_->isTaken; renderedUpTo_ += kPieceTime) {
    line_->mixer->render(unheard.data(), kPiece);
  }
  return line_->isTaken;
}

}  // namespace vorn
