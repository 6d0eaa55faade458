/// The voices of Speech Dispatcher as the player is offered them, and what the
/// game's rate, volume and texts come to there. Nothing here waits for the daemon.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace vorn {

/// One voice of an output module; both names empty: the one that the player has chosen for his desktop.
struct DispatcherVoice {
  std::string module, name;
  std::string language;  ///< "en-US"

  bool operator==(const DispatcherVoice&) const = default;
};

/// The voices among `lines` of a module's list ("name TAB language TAB variant"), without variants.
std::vector<DispatcherVoice> listedVoices(const std::string& module, const std::vector<std::string>& lines);

/// The player's own choice, then `voices`: those of `language`, then English ones, American first, then the
/// rest.
std::vector<DispatcherVoice> offeredVoices(std::vector<DispatcherVoice> voices, const std::string& language);

/// How the player is told of it, in UTF-8.
std::string nameOf(const DispatcherVoice& voice);

/// Asking the daemon takes seconds, so each start has what the one before was
/// told. No voices where there is no such file.
std::vector<DispatcherVoice> readVoices(const std::filesystem::path& file);
/// Where the file cannot be written there is none.
void writeVoices(const std::filesystem::path& file, const std::vector<DispatcherVoice>& voices);

/// Rates and volumes of Speech Dispatcher are -100 .. 100. `usual` is the one that the player has
/// chosen for his desktop: what the game's rate 0 and volume 100 come to.
int dispatcherRate(int rate, int usual);
int dispatcherVolume(int volume, int usual);

/// Longer than `text` may take at that rate of the dispatcher.
std::chrono::milliseconds longestReading(const std::string& text, int dispatcherRate);

}  // namespace vorn
