#include "platform/mixing/synth_service.h"

#include <cstdio>
#include <utility>

#include "platform/errors.h"

namespace vorn {
namespace {

using namespace std::chrono_literals;

constexpr auto kRoomAfter = 10ms;  ///< a full stream is asked again

}  // namespace

SynthService::SynthService(SpeechSynth& synth, VoiceStream& stream, std::chrono::milliseconds patience)
    : synth_(synth), stream_(stream), patience_(patience), worker_([this] { work(); }) {}

SynthService::~SynthService() {
  {
    const std::lock_guard lock(mutex_);
    queue_.clear();
    isEnding_ = true;
    stream_.cancel();
  }
  changed_.notify_all();
  worker_.join();
}

void SynthService::say(const std::string& text, const SpeechSettings& settings) {
  if (synth_.voices().empty()) {
    throw PlatformError("Speak", text, synth_.problem());
  }
  {
    const std::lock_guard lock(mutex_);
    queue_.push_back({{text, settings}, stream_.ticket()});
  }
  changed_.notify_all();
}

void SynthService::purge() {
  {
    const std::lock_guard lock(mutex_);
    queue_.clear();
    isUttering_ = false;
    stream_.cancel();
  }
  changed_.notify_all();
  watchdog_.rest();
}

bool SynthService::isBusy() {
  const std::lock_guard lock(mutex_);
  return !queue_.empty() || isUttering_ || stream_.isSpeaking();
}

bool SynthService::isSpeaking() {
  if (!isBusy()) {
    watchdog_.rest();
    return false;
  }
  if (watchdog_.idleFor(stream_.samplesPlayed(), std::chrono::steady_clock::now()) >= patience_) {
    std::fputs("The voice has fallen silent: its sound is not being played.\n", stderr);
    purge();
    return false;
  }
  return true;
}

void SynthService::work() {
  std::unique_lock lock(mutex_);
  for (;;) {
    changed_.wait(lock, [this] { return isEnding_ || !queue_.empty(); });
    if (isEnding_) {
      return;
    }
    const Request request = std::move(queue_.front());
    queue_.pop_front();
    isUttering_ = true;
    lock.unlock();
    utter(request);
    lock.lock();
    if (!stream_.isCancelled(request.ticket)) {
      isUttering_ = false;
    }
  }
}

void SynthService::utter(const Request& request) {
  try {
    synth_.speak(request.utterance.text, request.utterance.settings,
                 [&](std::span<const std::int16_t> samples) { return pass(samples, request.ticket); });
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
  }
}

/// Hands samples to the stream as it makes room. False: nobody wants them any more.
bool SynthService::pass(std::span<const std::int16_t> samples, std::uint32_t ticket) {
  while (!stream_.isCancelled(ticket)) {
    samples = samples.subspan(stream_.write(ticket, synth_.sampleRate(), samples));
    if (samples.empty()) {
      return true;
    }
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, kRoomAfter, [&] { return stream_.isCancelled(ticket); });
  }
  return false;
}

}  // namespace vorn
