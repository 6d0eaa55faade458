/// The platform without a desktop: the player is a script, the clock is virtual,
/// and everything that the game does is traced. The same script, folder and
/// options give the same trace, byte for byte, on every machine.
///
/// Time stands still but for two things: each yield is one millisecond, and a
/// synchronous text lets everything queued be said. In a yield, first the
/// millisecond passes (and is rendered), then the script is carried out as far
/// as it goes, each event reaching the game at its statement, and last the
/// controller is reported if its state has changed.
#pragma once

#include <functional>
#include <iosfwd>
#include <memory>

#include "platform/common/random.h"
#include "platform/headless/options.h"
#include "platform/headless/script_runner.h"
#include "platform/headless/world.h"

namespace vorn {

/// What a session is connected to. Everything named here is not owned and outlives it.
struct HeadlessConnections {
  ScriptSource* script = nullptr;              ///< null: no statements
  TraceSink* trace = nullptr;                  ///< null: no trace
  RenderSink* render = nullptr;                ///< null: nobody listens
  std::ostream* diagnostics = nullptr;         ///< reasons of exit statuses 1, 2 and 4; null: standard error
  std::shared_ptr<RecordingCache> recordings;  ///< shared between sessions; null: one of its own
};

class HeadlessPlatform : public Platform {
 public:
  HeadlessPlatform(const HeadlessOptions& options, const HeadlessConnections& connections);
  ~HeadlessPlatform() override;

  /// What `get` and `set` reach.
  void setFields(FieldTable fields) { world_.fields = std::move(fields); }
  /// Runs `game` to its end, which is told to the trace. Returns the exit status:
  /// that of `game`, or of what ended it. After it nothing is traced any more.
  int run(const std::function<int()>& game);

  std::int32_t tickCount() override { return world_.clock.tickCount(); }
  double secondsSinceMidnight() override { return world_.clock.secondsSinceMidnight(); }
  Date today() override { return world_.clock.today(); }
  void setCaption(const std::string& caption) override { world_.trace.window(caption); }
  void setEventReceiver(EventReceiver* receiver) override { world_.receiver = receiver; }
  int messageBox(const std::string& text) override;
  void enterShutdown() override { script_.enterShutdown(); }
  std::unique_ptr<SoundDevice> createSoundDevice() override;
  std::unique_ptr<KeyboardDevice> createKeyboardDevice() override;
  std::vector<std::string> attachedControllers() override;
  std::unique_ptr<ControllerDevice> createControllerDevice(const std::string& identifier) override;
  std::unique_ptr<Voice> createVoice() override;
  Files& files() override { return world_.files; }
  void startProgram(const std::string& name, int windowStyle) override;
  double randomFraction() override { return random_.fraction(); }
  void reseedRandom() override {}  // chance belongs to the seed
  void carTicked(const TickReport& report) override;

 private:
  void doYield(int atMostMs) override;
  int outcomeOf(const std::function<int()>& game);
  void notifyOfController();

  std::unique_ptr<Render> render_;  ///< null: nobody listens
  std::unique_ptr<Speaker> speaker_;
  World world_;
  std::ostream& diagnostics_;
  ScriptRunner script_;
  RandomSource random_;
};

}  // namespace vorn
