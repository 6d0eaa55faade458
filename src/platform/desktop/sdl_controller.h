/// One game controller through SDL, for as long as it is plugged in. Nothing here
/// waits; all of it belongs to the thread that pumps SDL's events.
#pragma once

#include <SDL_gamecontroller.h>

#include <memory>
#include <string>

#include "platform/common/controller_reader.h"
#include "platform/common/rumble.h"

namespace vorn {

class SdlController {
 public:
  /// Null, with the reason in `SDL_GetError`, where the controller at SDL's `index` cannot be opened.
  static std::unique_ptr<SdlController> open(int index);
  ~SdlController();
  SdlController(const SdlController&) = delete;
  SdlController& operator=(const SdlController&) = delete;

  bool isAttached() const { return SDL_JoystickGetAttached(joystick_) == SDL_TRUE; }
  /// Neutral where it has been unplugged.
  ControllerReading read();
  /// Nothing where it cannot.
  void rumble(const Rumble& rumble);
  const ControllerFacts& facts() const { return facts_; }
  const ControllerLayout& layout() const { return reader_.layout(); }
  /// The same for every controller of a model.
  const std::string& modelId() const { return modelId_; }

 private:
  SdlController(SDL_Joystick* joystick, SDL_GameController* gamepad, const ControllerFacts& facts);
  RawControls padControls() const;
  RawControls deviceControls() const;

  SDL_Joystick* joystick_;
  SDL_GameController* gamepad_;  ///< null: it is none
  ControllerFacts facts_;
  std::string modelId_;
  ControllerReader reader_;
};

/// What can be told of the controller at SDL's `index` without opening it: all but
/// the numbers of its axes, buttons and hats, which are 0.
ControllerFacts sdlControllerFacts(int index);
/// `modelId` of the controller at SDL's `index`.
std::string sdlModelId(int index);

}  // namespace vorn
