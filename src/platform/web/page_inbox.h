/// What the page has to tell the game: keys, focus, answers. The page's thread puts
/// in, the game's takes out; the page never waits for longer than the game copies.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

namespace vorn {

struct PageEvent {
  enum class Kind {
    kKeyDown,   ///< code, key, shiftState
    kKeyUp,     ///< code
    kFocus,     ///< the page has got the focus
    kBlur,      ///< it has lost it
    kAnswered,  ///< the message box has been read
  };
  Kind kind;
  std::string code{}, key{};  ///< the place of a key and what it types, as browsers call them
  int shiftState = 0;         ///< Shift 1, Ctrl 2, Alt 4, added up
  std::chrono::steady_clock::time_point at{};  ///< when it was put in
};

class PageInbox {
 public:
  using Time = std::chrono::steady_clock::time_point;

  void put(PageEvent event) {
    event.at = Time::clock::now();
    {
      const std::lock_guard lock(mutex_);
      if (event.kind == PageEvent::Kind::kFocus || event.kind == PageEvent::Kind::kBlur) {
        hasFocus_ = event.kind == PageEvent::Kind::kFocus;
      }
      events_.push_back(std::move(event));
    }
    changed_.notify_one();
  }
  std::optional<PageEvent> take() {
    const std::lock_guard lock(mutex_);
    if (events_.empty()) {
      return std::nullopt;
    }
    PageEvent event = std::move(events_.front());
    events_.pop_front();
    return event;
  }
  /// Whether the page has the focus, by the last word of it that was put in.
  bool hasFocus() const { return hasFocus_; }
  /// Waits until there is something to take or until `end`.
  void waitUntil(Time end) {
    std::unique_lock lock(mutex_);
    changed_.wait_until(lock, end, [this] { return !events_.empty(); });
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<PageEvent> events_;
  std::atomic<bool> hasFocus_{true};
};

}  // namespace vorn
