/// One lap of a track in a session of its own, with a driver at the controls.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "support/session.h"

namespace vorn {

enum class Device { kWheel, kKeys };

/// Statements after a tick, one a line; they may hold "end".
using TickDriver = std::function<std::string(const TickReport&)>;

/// From the start of the program to the first car tick of one lap of track 1 .. 10.
std::string offTheGrid(int track, Device device);

class OneRace {
 public:
  /// Drives track 1 .. 10 from the main menu to its results, or to the driver's "end".
  /// `listener`, not owned, hears the mix.
  OneRace(int track, Device device, const TickDriver& driver, RenderSink* listener = nullptr,
          const std::optional<CodriverOptions>& codriver = std::nullopt);

  const TraceRecord& trace() const { return session_.trace(); }
  /// The ticks that the driver saw: all but the one that the start ends with.
  const std::vector<TickReport>& ticks() const { return ticks_; }
  int exitStatus() const { return session_.exitStatus(); }
  const std::string& diagnostics() const { return session_.diagnostics(); }
  bool isFinished() const { return trace().said(" Your time for "); }
  double raceTime() const;  ///< seconds
  /// The segments in the order in which they were driven; pit road is 0.
  std::vector<int> segments() const;
  /// Base names of what a buffer was filled with, in order.
  std::vector<std::string> filesOf(const std::string& buffer) const;

  /// The file `name` of the session's folder.
  std::string fileBytes(const std::string& name) const { return session_.folder.read(name); }

 private:
  Session session_;
  std::vector<TickReport> ticks_;
};

}  // namespace vorn
