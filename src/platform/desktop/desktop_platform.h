/// The platform of a player's desktop: a window, the keyboard, a controller and
/// the sound device through SDL, and a voice.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/platform.h"

namespace vorn {

enum class SpeechChoice { kAuto, kEspeak, kSpeechDispatcher, kSapi, kReader };

/// Whom a player of this system can ask to speak, and by which name.
struct NamedSpeech {
  const char* name;
  SpeechChoice choice;
};
std::span<const NamedSpeech> speechChoices();  ///< the usual one first

/// What keeps everybody from speaking, for the player; empty where nothing does. May take a
/// moment, and wants to be asked before the program has threads.
std::string speechProblem();

struct DesktopOptions {
  std::filesystem::path folder = ".";         ///< working folder
  SpeechChoice speech = SpeechChoice::kAuto;  ///< auto: the desktop's own voice where it is there
  std::ostream* captions = nullptr;           ///< gets every spoken text as a line of UTF-8; not owned
  int bufferFrames = 0;                       ///< of the sound device; 0: as many as it turns out to need
  std::string audioDevice;                    ///< as `audioDevices` names it; empty: the desktop's choice
  bool swapsEars = false;                     ///< whether left and right are exchanged
  double duckDecibels = 8;                    ///< by which sounds are lowered under a voice
  double quieterDecibels = 0;                 ///< by which everything is
  bool rumbles = true;                        ///< whether controllers that can let collisions be felt
  bool startsPrograms = true;                 ///< whether programs of the folder may be started
  bool answerBoxes = false;                   ///< message boxes go to standard error and are answered at once
};

/// This machine has no display or no sound device, so the game cannot be played
/// on it as it is. `what()` tells the player which, why, and what helps.
class DesktopUnavailable : public std::runtime_error {
 public:
  enum class Missing { kDisplay, kSound, kBoth };

  DesktopUnavailable(Missing thing, const std::string& reason);
  /// Of a machine that has neither.
  DesktopUnavailable(const DesktopUnavailable& display, const DesktopUnavailable& sound);

  const Missing missing;
};

/// The sound devices that can be asked for. May wait for a sound server, five seconds at most.
std::vector<std::string> audioDevices();

/// Opens window and sound device. At most one at a time, on the thread that then
/// plays. Throws `DesktopUnavailable`. Where the voice chosen is not there the
/// embedded one says so and takes its place.
std::unique_ptr<Platform> makeDesktopPlatform(const DesktopOptions& options);

}  // namespace vorn
