/// A second game in the player's hands while the first one waits: the co-driver's
/// menu, a lesson, a preview. It has the player's devices and voice without opening
/// them again, and leaves his files as they are.
#pragma once

#include <string>
#include <vector>

#include "input/events.h"
#include "platform/common/forwarding_platform.h"
#include "platform/common/read_only_files.h"
#include "state/game_state.h"

namespace vorn {

class GuestPlatform;

/// What the first game has opened, and who gets its events. All are the first game's; null: none.
struct Seat {
  KeyboardDevice* keyboard = nullptr;
  ControllerDevice* controller = nullptr;
  Voice* voice = nullptr;
  EventReceiver* receiver = nullptr;
  const GameState* game = nullptr;     ///< that the aids watch: the first one, or the guest's
  std::vector<GuestPlatform*> guests;  ///< the last one has the controls

  /// Who hears of keys and the controller.
  EventReceiver* listener() const;
};

/// Where a guest plays: everything but its devices is the platform's below it.
class GuestPlatform : public ForwardingPlatform {
 public:
  /// None is owned. Takes the controls, and gives them back in the end.
  GuestPlatform(Platform& inner, Seat& seat);
  ~GuestPlatform() override;
  GuestPlatform(const GuestPlatform&) = delete;
  GuestPlatform& operator=(const GuestPlatform&) = delete;

  void setEventReceiver(EventReceiver* receiver) override { receiver_ = receiver; }
  EventReceiver* receiver() const { return receiver_; }
  void setCaption(const std::string&) override {}
  void enterShutdown() override {}
  void startProgram(const std::string&, int) override {}
  Files& files() override { return files_; }
  std::unique_ptr<KeyboardDevice> createKeyboardDevice() override;
  std::vector<std::string> attachedControllers() override;
  std::unique_ptr<ControllerDevice> createControllerDevice(const std::string& identifier) override;
  std::unique_ptr<Voice> createVoice() override;

 private:
  Seat& seat_;
  ReadOnlyFiles files_;
  EventReceiver* receiver_ = nullptr;
};

/// A game on a guest's platform, set up as the first one is: maps, options, levels
/// and voice. Its sounds are not loaded. The aids watch it as long as it lives.
class GuestGame {
 public:
  GuestGame(Platform& platform, Seat& seat);
  ~GuestGame();
  GuestGame(const GuestGame&) = delete;
  GuestGame& operator=(const GuestGame&) = delete;

  GameState state;

 private:
  Seat& seat_;
  const GameState* watchedBefore_;
  GameEvents events_;
};

}  // namespace vorn
