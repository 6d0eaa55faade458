/// A player's hands on the keyboard of the X display: real key events, as any
/// window gets them. Waits only where it says so.
#pragma once

#include <memory>
#include <string>

namespace vorn {

class KeyPresser {
 public:
  /// Opens the display that DISPLAY names; throws where there is none.
  KeyPresser();
  ~KeyPresser();

  /// `key`: "Up", "Enter", "RightCtrl", a letter, a digit; see the table in the source.
  void press(const std::string& key);
  void release(const std::string& key);
  void tap(const std::string& key, int heldMs = 80);  ///< waits for `heldMs`

 private:
  void send(const std::string& key, bool isDown);

  struct Connection;
  std::unique_ptr<Connection> connection_;
};

}  // namespace vorn
