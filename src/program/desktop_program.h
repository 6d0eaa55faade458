/// The game on a player's desktop, from the first window to the exit status.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "codriver/settings.h"
#include "platform/desktop/desktop_platform.h"

namespace vorn {

/// What a player asks for on the command line.
struct DesktopRequest {
  std::filesystem::path folder;  ///< empty: wherever the game finds its place
  SpeechChoice speech = SpeechChoice::kAuto;
  double volume = 0;             ///< decibels of the whole game, -60 .. 0
  double duck = 8;               ///< decibels by which a voice lowers the sounds, 0 .. 40
  int buffer = 0;                ///< frames of the sound device's buffer, 64 .. 8192; 0: as it needs
  std::string audioDevice;       ///< name of a sound device; empty: the desktop's choice
  bool swapEars = false;         ///< left and right are exchanged
  bool captions = false;         ///< everything spoken also goes to standard output
  bool rumble = true;            ///< controllers let collisions be felt
  bool demonstration = false;    ///< a built-in driver plays
  int track = 1;                 ///< that it races on, 1 .. 10
  std::optional<AidSet> aids;    ///< in place of those that the player has switched on before
  std::filesystem::path record;  ///< script of the session that is to be written; empty: none
};

/// Says which sound devices there are, a line each. Returns the exit status: 1 where there is none.
int listAudioDevices();

/// Plays until the player leaves. Where there is no display or no sound device,
/// says so and leaves a demonstration in a file of the game's folder. Returns the exit status:
/// 1 after an error, which stands on standard error and is said.
int playOnDesktop(const DesktopRequest& request);

/// Says on standard output, a line each, what the controls of every connected controller are taken for.
void tellOfControllers();

}  // namespace vorn
