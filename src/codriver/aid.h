/// An aid: something that watches the race from outside and speaks or sounds of its own.
///
/// To add one: derive from `Aid`, give it a row in `kAidNames` where it can be
/// switched off, and make it in `codriver_platform.cpp` (`makeAids`). An aid is told
/// everything whether it is on or not, and asks `cockpit().settings().isOn(...)`
/// before it is heard. Nothing that it does may wait or change the game.
#pragma once

#include <cstdint>
#include <string>

#include "codriver/settings.h"
#include "codriver/tones.h"
#include "state/game_state.h"
#include "tracks/track.h"

namespace vorn {

/// The race as an aid sees it.
struct Scene {
  const GameState& game;  ///< as the house has left it; the car of a tick stands in its report
  const Track& track;
  bool isLesson;  ///< or a preview: it counts for nothing
};

/// What an aid can do.
class Cockpit {
 public:
  virtual ~Cockpit() = default;
  /// Says Windows-1252 `text` behind whatever is being said: never cuts.
  virtual void tell(const std::string& text) = 0;
  virtual ToneBoard& tones() = 0;
  virtual std::uint32_t now() = 0;  ///< milliseconds
  virtual const AidSettings& settings() const = 0;
  virtual Files& files() = 0;  ///< of the player
};

class Aid {
 public:
  explicit Aid(Cockpit& cockpit) : cockpit_(cockpit) {}
  virtual ~Aid() = default;
  Aid(const Aid&) = delete;
  Aid& operator=(const Aid&) = delete;

  /// The first tick of a race is about to be told.
  virtual void raceBegan(const Scene&) {}
  /// The car has done a tick; the next one is 99 ms away.
  virtual void ticked(const Scene&, const TickReport&) {}
  /// The car has hit the wall once too often, or has fallen into the water: there
  /// are no ticks until it is driven on.
  virtual void crashed() {}
  /// The line has been crossed for the last time (`isFinished`), or the race was given up.
  virtual void raceEnded(bool /*isFinished*/) {}
  /// A function key of no other use, 6 .. 12 for F6 to F12, in a race or a menu. Returns whether it has one
  /// here.
  virtual bool functionKey(int /*number*/) { return false; }

 protected:
  Cockpit& cockpit() const { return cockpit_; }

 private:
  Cockpit& cockpit_;
};

}  // namespace vorn
