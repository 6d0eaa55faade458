/// Someone who plays at the desktop: real keys into the real window, guided by
/// nothing but what the game says, as its captions tell it.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "desktop/key_presser.h"
#include "support/program.h"
#include "support/temporary_folder.h"

namespace vorn {

class Player {
 public:
  /// Starts the program (that of VORN_OTHER_PROGRAM, where it is set) in `folder`, with further options. It
  /// is killed when the player goes before its end.
  explicit Player(const std::filesystem::path& folder, const std::vector<std::string>& options = {},
                  const std::string& speech = "espeak");

  /// The next text that contains `part`; throws where it does not come in time.
  std::string waitFor(const std::string& part, int seconds = 60);
  /// Presses a key when a person would: after a moment, and not too briefly.
  void answer(const std::string& key);
  /// Moves in a menu to the next entry that contains `part` and returns it. Where nothing at all comes of the
  /// key it is pressed again, for a menu takes none in its first moments.
  std::string move(const std::string& key, const std::string& part);
  /// The next text; nothing where none comes in time.
  std::optional<std::string> hear(int withinMs) { return game_.readLine(withinMs); }
  void rest(int milliseconds);
  /// From the words that open the track menu to the call to start the engines: one lap of the first track.
  void enterOneLap();
  /// Holds the starter until the seconds to the horn are counted.
  void startEngine();
  /// Full gas and first gear at the horn.
  void goAtTheHorn();
  /// From the question after a record's result, which is answered with the name "a", out of the game.
  void enterRecordAndLeave();
  pid_t process() const { return game_.process(); }
  int waitForEnd() { return game_.waitForEnd(); }

  KeyPresser keys;

 private:
  LiveProgram game_;
};

/// Said between whatever else is, where a machine was too busy to play for a moment.
inline constexpr const char* kSoundIsBack = " Sound is back. ";

/// Puts the sounds into `folder`.
void copySounds(const TemporaryFolder& folder);

}  // namespace vorn
