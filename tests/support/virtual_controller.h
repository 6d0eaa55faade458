/// A game controller that exists only for SDL.
#pragma once

#include <SDL.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace vorn {

struct VirtualModel {
  SDL_JoystickType type = SDL_JOYSTICK_TYPE_UNKNOWN;
  std::vector<int> axes{};  ///< where they stand when it is plugged in
  int buttons = 10;
  int hats = 0;
  int vendor = 0, product = 0;
  const char* name = "Test controller";
};

class VirtualController {
 public:
  struct Rumble {
    int low = 0, high = 0;
  };

  explicit VirtualController(const VirtualModel& model) {
    SDL_VirtualJoystickDesc description{};
    description.version = SDL_VIRTUAL_JOYSTICK_DESC_VERSION;
    description.type = static_cast<std::uint16_t>(model.type);
    description.naxes = static_cast<std::uint16_t>(model.axes.size());
    description.nbuttons = static_cast<std::uint16_t>(model.buttons);
    description.nhats = static_cast<std::uint16_t>(model.hats);
    description.vendor_id = static_cast<std::uint16_t>(model.vendor);
    description.product_id = static_cast<std::uint16_t>(model.product);
    description.name = model.name;
    description.userdata = this;
    description.Rumble = [](void* self, Uint16 low, Uint16 high) {
      static_cast<VirtualController*>(self)->rumbles.push_back({low, high});
      return 0;
    };
    const int index = SDL_JoystickAttachVirtualEx(&description);
    instance_ = SDL_JoystickGetDeviceInstanceID(index);
    joystick_ = SDL_JoystickOpen(index);
    EXPECT_NE(joystick_, nullptr) << SDL_GetError();
    for (std::size_t i = 0; i < model.axes.size(); ++i) {
      axis(static_cast<int>(i), model.axes[i]);
    }
    SDL_JoystickUpdate();
  }
  ~VirtualController() { unplug(); }
  VirtualController(const VirtualController&) = delete;
  VirtualController& operator=(const VirtualController&) = delete;

  std::string identifier() const { return std::to_string(instance_); }
  std::string guid() const {
    char text[33];
    SDL_JoystickGetGUIDString(SDL_JoystickGetGUID(joystick_), text, sizeof text);
    return text;
  }
  void axis(int number, int value) {
    EXPECT_EQ(SDL_JoystickSetVirtualAxis(joystick_, number, static_cast<std::int16_t>(value)), 0)
        << SDL_GetError();
  }
  void button(int number, bool down) {
    EXPECT_EQ(SDL_JoystickSetVirtualButton(joystick_, number, down ? 1 : 0), 0) << SDL_GetError();
  }
  void hat(int direction) {
    EXPECT_EQ(SDL_JoystickSetVirtualHat(joystick_, 0, static_cast<std::uint8_t>(direction)), 0)
        << SDL_GetError();
  }
  void unplug() {
    if (joystick_ == nullptr) {
      return;
    }
    SDL_JoystickClose(std::exchange(joystick_, nullptr));
    for (int index = 0; index < SDL_NumJoysticks(); ++index) {
      if (SDL_JoystickGetDeviceInstanceID(index) == instance_) {
        SDL_JoystickDetachVirtual(index);
        return;
      }
    }
  }

  std::vector<Rumble> rumbles;  ///< that it has been asked for

 private:
  SDL_JoystickID instance_ = -1;
  SDL_Joystick* joystick_ = nullptr;
};

}  // namespace vorn
