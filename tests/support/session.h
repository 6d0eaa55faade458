/// The whole game in one process, played by script: for tests of what a player
/// meets. Each session has a folder of its own that holds the sounds; it may be
/// run again and again in it, as a player starts the program day after day.
///
///   Session s;
///   s.folder.write("vorn1voc.cfg", "0\r\n5\r\n90\r\n0\r\n");
///   s.options.controller = true;
///   s.script(atMainMenu()).script("tap Up").drive(steer).script("close");
///   const TraceRecord& trace = s.run();
///   EXPECT_TRUE(trace.said(" Start Game. "));
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <variant>

#include "codriver/codriver_platform.h"
#include "platform/headless/options.h"
#include "platform/headless/render.h"
#include "platform/platform.h"
#include "support/temporary_folder.h"
#include "support/trace_record.h"

namespace vorn {

/// Someone at the controls who sees the car and hears the voice. Each of its
/// parts answers with statements to carry out, one a line; an empty one does nothing.
struct Driver {
  std::function<std::string(const TickReport& tick)> onTick;     ///< after each car tick
  std::function<std::string(const std::string& text)> onSpeech;  ///< after each text that was requested
  std::string until;  ///< drives until a text with this is requested; empty: as long as the car ticks
  std::int64_t patienceMs = 60'000;  ///< longest time without car tick and speech after which it gives up
};

class Session {
 public:
  Session();

  TemporaryFolder folder;
  HeadlessOptions options;                  ///< its folder is set by `run`
  RenderSink* listener = nullptr;           ///< who hears the mix; not owned; null: nobody
  std::optional<CodriverOptions> codriver;  ///< nothing: there is none

  /// What the player does next: statements, one a line.
  Session& script(const std::string& statements);
  /// Then the driver has the controls.
  Session& drive(Driver driver);
  /// Then something happens behind the program's back, between two statements.
  Session& meanwhile(std::function<void()> happens);
  /// Carries out what has been asked for since the last run, from the start of
  /// the program to its end or the end of the script. Returns its trace, good until the next run.
  const TraceRecord& run();

  const TraceRecord& trace() const { return trace_; }
  int exitStatus() const { return exitStatus_; }
  const std::string& diagnostics() const { return diagnostics_; }  ///< what went to standard error

 private:
  std::deque<std::variant<std::string, Driver, std::function<void()>>> turns_;
  TraceRecord trace_;
  int exitStatus_ = -1;
  std::string diagnostics_;
};

/// Puts links to the sounds into `folder`: a set is 14 MB, and tests are many.
void linkSounds(const TemporaryFolder& folder);

/// Of the main menu, from the first one down, as they are spoken.
const std::vector<std::string>& mainMenuEntries();

// Scripts that lead to where a test begins. Times are those after which the game listens.

/// From the start of the program to where the main menu takes keys.
std::string atMainMenu();
/// From an open menu: `count` steps up (or down), each heard out.
std::string menuUp(int count = 1);
std::string menuDown(int count = 1);
/// In a menu: takes the entry under the cursor.
std::string menuEnter();
/// From the main menu to the welcome of a track (1 .. 10). With a controller attached
/// the device question is answered with the keyboard.
std::string toTrack(int track, bool controllerAttached = false);
/// From the welcome to the engines: so many laps, confirmed.
std::string enterLaps(const std::string& laps);
/// Starts the engine with the keyboard, full gas, and shifts up after the horn: the next thing is a car tick.
std::string startOnKeyboard();

}  // namespace vorn
