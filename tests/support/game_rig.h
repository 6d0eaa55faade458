/// A game without its shell, for one procedure at a time to be called: the state
/// with its devices open and its race sounds loaded, on a headless platform whose
/// player is the test.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "input/events.h"
#include "platform/headless/headless_platform.h"
#include "state/game_state.h"
#include "support/temporary_folder.h"
#include "support/trace_record.h"

namespace vorn {

/// Silent recordings in the place of the race's sounds, as long as play positions
/// need them; made once in a test program.
const std::filesystem::path& silentSounds();

/// What a race is driven with.
enum class Wheel { kKeys, kController };

class GameRig {
 public:
  using Procedure = std::function<void(GameState&)>;
  /// The next script statement, or nothing where the player has nothing more to do.
  using Player = std::function<std::string(const GameState&)>;

  /// The game stands as it does before a track procedure is called.
  explicit GameRig(Wheel wheel = Wheel::kKeys, const HeadlessOptions& options = silentOptions());
  ~GameRig();
  GameRig(const GameRig&) = delete;
  GameRig& operator=(const GameRig&) = delete;

  static HeadlessOptions silentOptions();

  /// Script statements to be carried out from the next yield on.
  void plan(const std::vector<std::string>& statements);
  /// Who is asked for a statement when there is none left in the plan.
  void letPlay(Player player) { script_.player = std::move(player); }
  /// Carries one statement out now; a millisecond passes.
  void does(const std::string& statement);

  // A procedure that has not ended after an hour ends with an exception.

  /// Calls `procedure`; returns the milliseconds that passed in it.
  std::int64_t timed(const Procedure& procedure);
  /// Calls `procedure`; returns what was traced in it, as `describe` puts it.
  std::vector<std::string> told(const Procedure& procedure);
  /// The same, but only what one buffer was told: "SetPan -400".
  std::vector<std::string> toldTo(const std::string& buffer, const Procedure& procedure);
  /// The same, but only what the voice was told: "purge", "queue 25", "say 25".
  std::vector<std::string> spokenIn(const Procedure& procedure);

  std::int64_t now() const;  ///< milliseconds since the session began
  const TraceRecord& trace() const { return trace_; }
  /// Of the buffers, those that are sounding.
  std::vector<std::string> sounding();

 private:
  struct Script : ScriptSource {
    explicit Script(const GameRig& owner) : rig(owner) {}
    std::optional<std::string> nextLine() override;
    std::string name() const override { return "test"; }
    std::deque<std::string> lines;
    Player player;
    const GameRig& rig;
  };

  HeadlessConnections connections();
  std::vector<std::string> linesFrom(std::size_t first, const std::string& prefix) const;

  TraceRecord trace_;
  Script script_;
  mutable HeadlessPlatform platform_;
  std::int32_t startTicks_;

 public:
  GameState g;

 private:
  GameEvents events_;
};

/// A trace line in a few words: "engineBuffer Stop", "wallLeftBuffer SetPan -5000",
/// "purge", "queue 25", "say text", "tick", "echo text"; events of the script and
/// of the voice's settings by their names.
std::string describe(const TraceLine& line);

}  // namespace vorn
