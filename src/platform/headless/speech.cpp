#include "platform/headless/speech.h"

#include <algorithm>
#include <cmath>

namespace vorn {

std::int64_t silentSpeechMs(const std::string& text, int rate) {
  constexpr double kMsPerCharacter = 60;
  const auto characters = static_cast<std::int64_t>(text.size()) - std::count(text.begin(), text.end(), ' ');
  const double slowness = std::pow(3.0, -std::clamp(rate, -10, 15) / 10.0);
  const double ms = std::nearbyint(kMsPerCharacter * static_cast<double>(characters) * slowness);
  return std::max<std::int64_t>(1, static_cast<std::int64_t>(ms));
}

std::vector<std::string> SilentSpeaker::voices() const {
  std::vector<std::string> names;
  for (int i = 1; i <= voiceCount_; ++i) names.push_back("Virtual voice " + std::to_string(i));
  return names;
}

void SpeechQueue::add(const Utterance& utterance) {
  idleFrom_ = std::max(clock_.now(), idleFrom_) + speaker_.say(utterance);
}

void SpeechQueue::clear() {
  speaker_.silence();
  idleFrom_ = clock_.now();
}

}  // namespace vorn
