/// Turns what the game sees of keyboard and controller into script statements.
#pragma once

#include <cstdint>
#include <set>
#include <vector>

#include "platform/common/key_codes.h"
#include "platform/input_devices.h"
#include "recording/script_writer.h"

namespace vorn {

class InputRecorder {
 public:
  explicit InputRecorder(ScriptWriter& writer) : writer_(writer) {}  ///< not owned

  /// The window's key-down event, in the yield that goes on.
  void keyWentDown(int virtualKeyCode);
  /// The game has read this.
  void keyboardRead(const KeyboardState& state);
  void controllerRead(const JoystickState& state);
  /// What waits to be written is written.
  void settle();

 private:
  /// An event of a key of which there are two, a Shift say: the next reading tells which it was.
  struct Unsettled {
    std::vector<const Key*> keys;
    std::int64_t yield;
  };

  void settle(const KeyboardState& state);
  void press(const Key& key, std::int64_t yield);
  void pressUnheard(const Key& key, std::int64_t yield);
  void move(const char* axis, int& place, int value);

  ScriptWriter& writer_;
  std::set<const Key*> down_;      ///< in a replay
  std::set<const Key*> seenDown_;  ///< of these, the ones that the game has read as down
  std::vector<Unsettled> unsettled_;
  std::int64_t lastRead_ = 0;  ///< yield after which the keyboard was read last
  JoystickState controller_;   ///< in a replay
};

}  // namespace vorn
