#include "platform/desktop/sdl_controller.h"

#include <array>
#include <utility>

namespace vorn {
namespace {

constexpr double kFullTravel = 32767;

// SDL numbers the controls of a gamepad as we do.
static_assert(static_cast<int>(PadAxis::kLeftX) == SDL_CONTROLLER_AXIS_LEFTX &&
              static_cast<int>(PadAxis::kRightTrigger) == SDL_CONTROLLER_AXIS_TRIGGERRIGHT &&
              kPadAxes == SDL_CONTROLLER_AXIS_MAX);
static_assert(static_cast<int>(PadButton::kSouth) == SDL_CONTROLLER_BUTTON_A &&
              static_cast<int>(PadButton::kRightShoulder) == SDL_CONTROLLER_BUTTON_RIGHTSHOULDER &&
              static_cast<int>(PadButton::kTouchpad) == SDL_CONTROLLER_BUTTON_TOUCHPAD &&
              kPadButtons == SDL_CONTROLLER_BUTTON_MAX);

std::string guidText(SDL_JoystickGUID guid) {
  std::array<char, 33> text{};
  SDL_JoystickGetGUIDString(guid, text.data(), static_cast<int>(text.size()));
  return text.data();
}

/// Wheels and sticks first: SDL finds a gamepad's controls on some of them as well.
ControllerKind kindOf(int index) {
  switch (SDL_JoystickGetDeviceType(index)) {
    case SDL_JOYSTICK_TYPE_WHEEL:
      return ControllerKind::kWheel;
    case SDL_JOYSTICK_TYPE_FLIGHT_STICK:
      return ControllerKind::kFlightStick;
    case SDL_JOYSTICK_TYPE_THROTTLE:
      return ControllerKind::kThrottle;
    default:
      return SDL_IsGameController(index) == SDL_TRUE ? ControllerKind::kGamepad : ControllerKind::kUnknown;
  }
}

}  // namespace

ControllerFacts sdlControllerFacts(int index) {
  const char* const name = SDL_JoystickNameForIndex(index);
  return {.name = name != nullptr ? name : "",
          .vendor = SDL_JoystickGetDeviceVendor(index),
          .product = SDL_JoystickGetDeviceProduct(index),
          .kind = kindOf(index)};
}

std::string sdlModelId(int index) {
  return guidText(SDL_JoystickGetDeviceGUID(index));
}

std::unique_ptr<SdlController> SdlController::open(int index) {
  ControllerFacts facts = sdlControllerFacts(index);
  SDL_Joystick* const joystick = SDL_JoystickOpen(index);
  if (joystick == nullptr) {
    return nullptr;
  }
  facts.axes = SDL_JoystickNumAxes(joystick);
  facts.buttons = SDL_JoystickNumButtons(joystick);
  facts.hats = SDL_JoystickNumHats(joystick);
  const bool isPad = layoutOf(facts).kind == LayoutKind::kGamepad;
  SDL_GameController* const gamepad = isPad ? SDL_GameControllerOpen(index) : nullptr;
  if (isPad && gamepad == nullptr) {
    facts.kind = ControllerKind::kUnknown;  // its places are not to be had: axes and buttons as they are
  }
  return std::unique_ptr<SdlController>(new SdlController(joystick, gamepad, facts));
}

SdlController::SdlController(SDL_Joystick* joystick, SDL_GameController* gamepad,
                             const ControllerFacts& facts)
    : joystick_(joystick),
      gamepad_(gamepad),
      facts_(facts),
      modelId_(guidText(SDL_JoystickGetGUID(joystick))),
      reader_(layoutOf(facts)) {}

SdlController::~SdlController() {
  if (gamepad_ != nullptr) {
    SDL_GameControllerClose(gamepad_);
  }
  SDL_JoystickClose(joystick_);
}

ControllerReading SdlController::read() {
  if (!isAttached()) {
    return {};
  }
  return reader_.read(gamepad_ != nullptr ? padControls() : deviceControls());
}

void SdlController::rumble(const Rumble& rumble) {
  constexpr double kFullStrength = 0xffff;
  SDL_JoystickRumble(joystick_, static_cast<Uint16>(rumble.heavy * kFullStrength),
                     static_cast<Uint16>(rumble.light * kFullStrength), static_cast<Uint32>(rumble.ms));
}

RawControls SdlController::padControls() const {
  RawControls raw;
  for (int axis = 0; axis < kPadAxes; ++axis) {
    const double value =
        SDL_GameControllerGetAxis(gamepad_, static_cast<SDL_GameControllerAxis>(axis)) / kFullTravel;
    const bool isTrigger = axis >= static_cast<int>(PadAxis::kLeftTrigger);
    raw.axes.push_back(isTrigger ? 2 * value - 1 : value);  // SDL counts a trigger from 0
  }
  for (int button = 0; button < kPadButtons; ++button) {
    raw.buttons.push_back(
        SDL_GameControllerGetButton(gamepad_, static_cast<SDL_GameControllerButton>(button)) != 0);
  }
  raw.isUp = raw.buttons[static_cast<std::size_t>(PadButton::kUp)];
  raw.isDown = raw.buttons[static_cast<std::size_t>(PadButton::kDown)];
  return raw;
}

RawControls SdlController::deviceControls() const {
  RawControls raw;
  for (int axis = 0; axis < facts_.axes; ++axis) {
    raw.axes.push_back(SDL_JoystickGetAxis(joystick_, axis) / kFullTravel);
  }
  for (int button = 0; button < facts_.buttons; ++button) {
    raw.buttons.push_back(SDL_JoystickGetButton(joystick_, button) != 0);
  }
  if (facts_.hats > 0) {
    const int hat = SDL_JoystickGetHat(joystick_, 0);
    raw.isUp = (hat & SDL_HAT_UP) != 0;
    raw.isDown = (hat & SDL_HAT_DOWN) != 0;
  }
  return raw;
}

}  // namespace vorn
