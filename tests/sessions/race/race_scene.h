/// Races on the Maple Leaf Tri Oval from the start of the program on: scripts
/// that lead to their moments, and what was traced around them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "support/game_rig.h"
#include "support/session.h"

namespace vorn {

// Scripts. Each leads from the end of the one before it to where its name says.

/// The welcome; with a controller it is chosen to drive with.
std::string untilWelcome(Wheel wheel = Wheel::kKeys);
/// The engines may be started.
std::string untilEngines(Wheel wheel = Wheel::kKeys, const std::string& laps = "1");
/// The control that starts the engine, pressed and released.
std::string startControl(Wheel wheel = Wheel::kKeys);
/// " 10 " has been said.
std::string untilCountdown(Wheel wheel = Wheel::kKeys, const std::string& laps = "1");

/// After " 10 " has been said: milliseconds until the horn. Each pass of the
/// countdown takes 22 ms, and the horn needs more than 10.5 s.
inline constexpr int kHornMs = 10516;
/// A statement that lets the time pass up to this moment after " 10 ".
std::string untilAfterTen(int milliseconds);

/// A driver who makes a lap of a handful of ticks: wherever he is, the end of
/// the segment is near.
Driver hurriedDriver(const std::string& until);
/// From the main menu to the results of a hurried race on the keyboard.
void raceInAHurry(Session& session, const std::string& laps = "1");

/// How long the silent voice takes for a text at its usual rate, milliseconds.
int spokenMs(const std::string& text);

// The trace.

/// Something that was traced, as `describe` puts it; what the script did is left out.
struct Moment {
  std::int64_t ms;
  std::string what;
  friend bool operator==(const Moment&, const Moment&) = default;
};
void PrintTo(const Moment& moment, std::ostream* out);

using Moments = std::vector<Moment>;

/// All of it from the first moment `from` on (`skip`: from a later one), its
/// milliseconds counted from there; empty where there is none.
Moments momentsFrom(const TraceRecord& trace, const std::string& from, int skip = 0);
/// The first `count` of them.
Moments first(const Moments& moments, std::size_t count);
/// Those up to and including the first that is `until`.
Moments through(const Moments& moments, const std::string& until);
/// Those that begin so.
Moments about(const Moments& moments, const std::string& beginning);
std::vector<std::string> texts(const Moments& moments);
/// When it happened first; -1: never.
std::int64_t when(const Moments& moments, const std::string& what);

/// The buffers that loop at the end of the trace.
std::vector<std::string> looping(const TraceRecord& trace);
/// The file that `oneShotBuffer` was started with last and that nobody has stopped; empty: none.
std::string oneShotLeftPlaying(const TraceRecord& trace);

}  // namespace vorn
