/// What the player has set of the co-driver, and the file that keeps it. Pure.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace vorn {

/// The aids that can be switched on and off, in the order of their keys F3 to F8.
enum class AidKind { kTurnCalls, kSlider, kLights, kWarnings, kLapTimes, kGhost };
inline constexpr std::size_t kAidKinds = 6;

struct AidName {
  std::string_view word;  ///< on the command line
  const char* spoken;     ///< without blanks around it
};
inline constexpr std::array<AidName, kAidKinds> kAidNames{{{"turns", "turn calls"},
                                                           {"slider", "slider"},
                                                           {"lights", "shift and brake ticks"},
                                                           {"warnings", "warnings"},
                                                           {"laps", "lap times"},
                                                           {"ghost", "ghost"}}};

/// By `AidKind`; not zero: on.
using AidSet = std::array<int, kAidKinds>;

/// The aids of a list such as "turns,slider"; "none": none of them. Nothing where a word is none of theirs.
std::optional<AidSet> aidsNamed(std::string_view list);
/// Such a list of `aids`.
std::string aidList(const AidSet& aids);

/// How a turn is called.
inline constexpr int kCallTones = 1, kCallNotes = 2, kCallBoth = 3;

inline constexpr int kShortestAhead = 10, kLongestAhead = 40;  ///< tenths of a second
inline constexpr int kQuietestLevel = -3000;                   ///< hundredths of a decibel
inline constexpr int kFullBalance = 1500;                      ///< hundredths of a decibel

struct AidSettings {
  AidSet aids{};

  int callStyle = kCallTones;  ///< how turns are called, `kCallTones` .. `kCallBoth`
  int callAhead = 20;          ///< tenths of a second before a turn at which it is called

  // Levels, hundredths of a decibel, `kQuietestLevel` .. 0.
  int engineLevel = 0;
  int cueLevel = 0;
  int wallLevel = 0;
  int carLevel = 0;  ///< every other sound of the game
  int codriverLevel = 0;

  int width = 100;     ///< of the stereo, percent, 0 .. 100
  int balance = 0;     ///< hundredths of a decibel, `-kFullBalance` (left) .. `kFullBalance`
  int swapsEars = 0;   ///< 1: left is right
  int hearsInOne = 0;  ///< 1: everything in the middle, sides told apart by pitch and rhythm

  int racesFriend = 0;  ///< 1: the ghost is a friend's, 0: the player's own best lap

  bool isOn(AidKind kind) const { return aids[static_cast<std::size_t>(kind)] != 0; }
  void turn(AidKind kind, bool on) { aids[static_cast<std::size_t>(kind)] = on ? 1 : 0; }
};

inline constexpr const char* kAidFile = "vorn1aid.cfg";

/// The settings as the text of their file.
std::string aidFileText(const AidSettings& settings);
/// The settings in such a text; nothing where it is damaged or of another version.
std::optional<AidSettings> aidsInFile(std::string_view text);

}  // namespace vorn
