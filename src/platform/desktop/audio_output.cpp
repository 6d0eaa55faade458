#include "platform/desktop/audio_output.h"

#include <SDL.h>

#include <algorithm>
#include <mutex>

#include "platform/desktop/desktop_platform.h"
#include "platform/desktop/sdl_output.h"
#ifdef VORN_PULSE
#include "platform/desktop/pulse_output.h"
#endif

namespace vorn {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

constexpr auto kLongestOpening = 10s;
constexpr auto kLongestFirstBuffer = 1s;
constexpr auto kLongestClosing = 1s;
constexpr auto kNextTry = 250ms;  ///< to open a device while there is none

#ifdef VORN_PULSE
/// Whoever names a driver of SDL's gets that.
bool asksForSdl() {
  return SDL_getenv("SDL_AUDIODRIVER") != nullptr;
}
#endif

}  // namespace

AudioOutput::AudioOutput(Mixer& mixer, const AudioWishes& wishes)
    : line_(std::make_shared<AudioLine>(mixer, wishes)) {
  keeper_ = std::thread([line = line_] { keep(*line); });
  const std::string problem = line_->waitForOpening(kLongestOpening).value_or("it does not answer");
  if (!problem.empty()) {
    close();
    throw DesktopUnavailable(DesktopUnavailable::Missing::kSound, problem);
  }
  line_->waitUntilTaken(kLongestFirstBuffer);
  renderedUpTo_ = steady_clock::now();
}

AudioOutput::~AudioOutput() {
  close();
}

void AudioOutput::close() {
  if (line_->end(kLongestClosing)) {
    keeper_.join();
  } else {
    keeper_.detach();
  }
}

void AudioOutput::keep(AudioLine& line) {
  // SDL knows one set of drivers: a keeper that was left behind closing is waited for.
  static std::mutex keeping;
  const std::lock_guard only(keeping);
  SDL_SetThreadPriority(SDL_THREAD_PRIORITY_TIME_CRITICAL);
  // What worked once is tried again, so that the others do not complain of each attempt.
  bool hasServer = false;
  std::string driver;
  do {
#ifdef VORN_PULSE
    hasServer |= driver.empty() && !asksForSdl() && playThroughPulse(line);
#endif
    if (!hasServer && !line.isEnding()) {
      playThroughSdl(line, driver);
    }
  } while (line.rest(kNextTry));
  line.tellEnded();
}

bool AudioOutput::isHeard() {
  const auto now = steady_clock::now();
  if (line_->isTaken()) {
    renderedUpTo_ = now;
    return true;
  }
  renderedUpTo_ = std::max(renderedUpTo_, now - 1s);
  return line_->renderUnheard(renderedUpTo_, now);
}

std::vector<std::string> audioDevices() {
  std::vector<std::string> names;
#ifdef VORN_PULSE
  if (!asksForSdl()) {
    names = pulseDevices();
  }
#endif
  return names.empty() ? sdlDevices() : names;
}

}  // namespace vorn
