/// The one way from the game to the outside world. Everything above this header
/// runs unchanged on a desktop and headless, and must not know which it is.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/errors.h"
#include "platform/files.h"
#include "platform/input_devices.h"
#include "platform/sound_device.h"
#include "platform/voice.h"

namespace vorn {

struct Date {
  int month;  ///< 1 .. 12
  int day;    ///< 1 .. 31
  int year;   ///< four digits
};

/// Receives what happened, inside `Platform::yield` and nowhere else.
class EventReceiver {
 public:
  virtual ~EventReceiver() = default;
  /// A key went down (once a press, never repeated), while the window had the focus.
  virtual void Form_KeyDown(int virtualKeyCode, int shiftState) = 0;
  /// The controller's state has changed since the last call.
  virtual void DirectXEvent8_DXCallback(int eventId) = 0;
};

/// The car at the end of a tick, for whoever watches the race from outside.
struct TickReport {
  double raceTicks, speed;
  int gear;
  double engineRpm, soundRpm, fuel, lapPosition, lateralPosition;
  int lapsCompleted, segment;  ///< segment counts from 1; 0 on pit road
  double poleDistance;
  int joySteering, joyGasBrake, steerKeyTicks, marblesTicks, wallTicks, pit;
};

class Platform {
 public:
  virtual ~Platform() = default;

  // Time.
  virtual std::int32_t tickCount() = 0;       ///< milliseconds, wraps from 2^31 - 1 to -2^31
  virtual double secondsSinceMidnight() = 0;  ///< 0 up to 86400
  virtual Date today() = 0;
  /// Delivers pending events to the receiver; may wait up to `atMostMs`
  /// milliseconds for one (0: not at all). Headless, always exactly one virtual
  /// millisecond. Throws `WindowClosed` or `ProgramEnd`.
  void yield(int atMostMs = 1) { doYield(atMostMs); }

  // Window.
  virtual void setCaption(const std::string& caption) = 0;
  virtual void setEventReceiver(EventReceiver* receiver) = 0;  ///< not owned; null: nobody
  /// Shows `text` (a carriage return breaks the line) with an OK button and waits for it. Returns 1.
  virtual int messageBox(const std::string& text) = 0;
  /// The program is leaving: a first close request changes nothing from now on, a second one ends it at once.
  virtual void enterShutdown() = 0;

  // Devices. Each `create` throws `PlatformError` where there is no such thing.
  virtual std::unique_ptr<SoundDevice> createSoundDevice() = 0;
  virtual std::unique_ptr<KeyboardDevice> createKeyboardDevice() = 0;
  virtual std::vector<std::string>
  attachedControllers() = 0;  ///< their identifiers, the first attached first
  virtual std::unique_ptr<ControllerDevice> createControllerDevice(const std::string& identifier) = 0;
  virtual std::unique_ptr<Voice> createVoice() = 0;  ///< works even with no voice installed

  // Files and programs of the working folder.
  virtual Files& files() = 0;
  /// Starts the program `name` of the working folder; `windowStyle` 3 is maximised.
  virtual void startProgram(const std::string& name, int windowStyle) = 0;

  // Chance: one generator for everything.
  virtual double randomFraction() = 0;  ///< 0 up to, not including, 1
  virtual void reseedRandom() = 0;      ///< from the clock; headless keeps its seed

  /// Called once a car tick.
  virtual void carTicked(const TickReport& report) = 0;
  /// The player stands in a menu from now on, or no longer does. While he does, the game heeds
  /// the controls alone, and of the window's keys Escape.
  virtual void menuOffered(bool /*isOpen*/) {}

 private:
  virtual void doYield(int atMostMs) = 0;
};

}  // namespace vorn
