/// Keeps a short tap from being lost between two readings of the keyboard: a key
/// that went down and up again counts as down at the next reading, once, if that
/// comes soon enough. Pure; times are milliseconds of any one clock that may wrap.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "platform/input_devices.h"

namespace vorn {

class KeyLatch {
 public:
  /// A tap is forgotten where no reading has come so long after its end.
  static constexpr std::uint32_t kPatienceMs = 250;

  /// `at`: when it did, where that may be told late: a reading may have found it held since.
  void wentDown(int keyCode, std::optional<std::uint32_t> at = {}) {
    const auto code = static_cast<std::size_t>(keyCode);
    const bool isRead = at && lastHeld_.at(code) != 0 && static_cast<std::int32_t>(*at - lastReading_) <= 0;
    keys_.at(code) = {!isRead, {}};
  }
  void wentUp(int keyCode, std::uint32_t now) {
    Key& key = keys_.at(static_cast<std::size_t>(keyCode));
    if (key.isUnread) key.tapEndedAt = now;
    key.isUnread = false;
  }
  /// What a reading at `now` finds, given the keys that are held.
  KeyboardState read(KeyboardState held, std::uint32_t now) {
    lastHeld_ = held;
    lastReading_ = now;
    for (std::size_t code = 0; code < keys_.size(); ++code) {
      if (keys_[code].tapEndedAt && now - *keys_[code].tapEndedAt <= kPatienceMs) held[code] = kKeyIsDown;
      keys_[code] = {};
    }
    return held;
  }

  static constexpr std::uint8_t kKeyIsDown = 0x80;

 private:
  struct Key {
    bool isUnread = false;                    ///< it has gone down since the last reading
    std::optional<std::uint32_t> tapEndedAt;  ///< it has gone up as well
  };
  std::array<Key, 256> keys_{};
  KeyboardState lastHeld_{};
  std::uint32_t lastReading_ = 0;
};

}  // namespace vorn
