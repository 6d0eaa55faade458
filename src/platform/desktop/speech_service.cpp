#include "platform/desktop/speech_service.h"

#include <algorithm>
#include <iostream>
#include <utility>

namespace vorn {
namespace {

using namespace std::chrono_literals;

constexpr auto kRoomAfter = 10ms;  ///< a full stream is asked again

}  // namespace

SpeechService::SpeechService(EspeakSynth& synth, VoiceStream& stream, std::chrono::milliseconds patience)
    : synth_(synth), stream_(stream), watchdog_(patience), worker_([this] { work(); }) {}

SpeechService::~SpeechService() {
  {
    const std::lock_guard lock(mutex_);
    queue_.clear();
    isEnding_ = true;
    stream_.cancel();
  }
  changed_.notify_all();
  worker_.join();
}

void SpeechService::say(const std::string& text, const SpeechSettings& settings) {
  lastSettings_ = settings;
  {
    const std::lock_guard lock(mutex_);
    queue_.push_back({text, settings, stream_.ticket()});
  }
  changed_.notify_all();
}

void SpeechService::purge() {
  {
    const std::lock_guard lock(mutex_);
    queue_.clear();
    isUttering_ = false;
    stream_.cancel();
  }
  changed_.notify_all();
  watchdog_.rest();
}

bool SpeechService::isBusy() {
  const std::lock_guard lock(mutex_);
  return !queue_.empty() || isUttering_ || stream_.isSpeaking();
}

bool SpeechService::isSpeaking() {
  if (!isBusy()) {
    watchdog_.rest();
    return false;
  }
  if (watchdog_.isStuck(stream_.samplesPlayed(), std::chrono::steady_clock::now())) {
    std::cerr << "The voice has fallen silent: its sound is not being played." << std::endl;
    purge();
    return false;
  }
  return true;
}

void SpeechService::work() {
  std::unique_lock lock(mutex_);
  for (;;) {
    changed_.wait(lock, [this] { return isEnding_ || !queue_.empty(); });
    if (isEnding_) {
      return;
    }
    const Utterance utterance = std::move(queue_.front());
    queue_.pop_front();
    isUttering_ = true;
    lock.unlock();
    utter(utterance);
    lock.lock();
    if (!stream_.isCancelled(utterance.ticket)) {
      isUttering_ = false;
    }
  }
}

void SpeechService::utter(const Utterance& utterance) {
  try {
    synth_.speak(utterance.text, utterance.settings,
                 [&](std::span<const std::int16_t> samples) { return pass(samples, utterance.ticket); });
  } catch (const std::exception& error) {
    std::cerr << error.what() << std::endl;
  }
}

/// Hands samples to the stream as it makes room. False: nobody wants them any more.
bool SpeechService::pass(std::span<const std::int16_t> samples, std::uint32_t ticket) {
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
