#include "platform/common/reader_service.h"

#include <algorithm>
#include <utility>

#include "platform/common/windows1252.h"

namespace vorn {
namespace {

/// Without the blanks around it.
std::size_t lengthOf(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  return first == std::string::npos ? 0 : text.find_last_not_of(' ') - first + 1;
}

}  // namespace

std::chrono::milliseconds readingPace(const std::string& text, std::chrono::milliseconds taken) {
  const auto pace = taken / static_cast<int>(std::max<std::size_t>(text.size(), 1));
  return pace < kQuickestReadingPace ? kUsualReadingPace : std::min(pace, kSlowestReadingPace);
}

ReaderService::ReaderService(std::unique_ptr<ScreenReader> reader, const ReaderOptions& options, Clock clock)
    : reader_(std::move(reader)),
      options_(options),
      clock_(std::move(clock)),
      begun_(clock_()),
      problem_(reader_->problem()) {}

std::vector<std::string> ReaderService::voices() {
  if (hasFailed()) return {};
  return {"Screen reader"};
}

void ReaderService::say(const std::string& text, const SpeechSettings& settings) {
  if (lengthOf(text) == 0) return;
  queue_.push_back({text, settings});
  goOn();
}

void ReaderService::purge() {
  queue_.clear();
  isTold_ = false;
  interrupts_ = true;
  watchdog_.rest();
}

bool ReaderService::isSpeaking() {
  goOn();
  return !queue_.empty();
}

bool ReaderService::hasFailed() {
  goOn();
  return !problem_.empty();
}

void ReaderService::goOn() {
  if (!problem_.empty()) return;
  const Time now = clock_();
  if (isTold_ && now >= end_) {
    queue_.pop_front();
    isTold_ = false;
  }
  if (!queue_.empty() && !isTold_ && now - begun_ >= options_.settling) tellNext(now);
}

void ReaderService::tellNext(Time now) {
  if (!reader_->isListening()) {
    constexpr std::uint64_t kNoProgress = 0;
    if (watchdog_.idleFor(kNoProgress, now) >= options_.patience) problem_ = "nobody listens";
    return;
  }
  watchdog_.rest();
  const std::string& text = queue_.front().text;
  reader_->tell(printableUtf8(text), std::exchange(interrupts_, false));
  isTold_ = true;
  end_ = now + options_.pace * static_cast<int>(lengthOf(text));
}

}  // namespace vorn
