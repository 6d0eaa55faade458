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

  void wentDown(int keyCode) {
    Key& key = keys_.at(static_cast<std::size_t>(keyCode));
    key.isUnread = !key.isSeen;  // word of a key may come after a reading that has found it
  }
  void wentUp(int keyCode, std::uint32_t now) {
    Key& key = keys_.at(static_cast<std::size_t>(keyCode));
    if (key.isUnread) key.tapEndedAt = now;
    key.isUnread = key.isSeen = false;
  }
  /// What a reading at `now` finds, given the keys that are held.
  KeyboardState read(KeyboardState held, std::uint32_t now) {
    for (std::size_t code = 0; code < keys_.size(); ++code) {
      Key& key = keys_[code];
      const bool isTapped = key.tapEndedAt && now - *key.tapEndedAt <= kPatienceMs;
      key = {};
      key.isSeen = held[code] != 0;
      if (isTapped) held[code] = kKeyIsDown;
    }
    return held;
  }

  static constexpr std::uint8_t kKeyIsDown = 0x80;

 private:
  struct Key {
    bool isSeen = false;                      ///< the last reading has found it held
    bool isUnread = false;                    ///< it has gone down since, or unseen
    std::optional<std::uint32_t> tapEndedAt;  ///< it has gone up as well
  };
  std::array<Key, 256> keys_{};
};

}  // namespace vorn
