/// One entry of the main menu, played from the program's start until the menu
/// takes keys again: what dialogues have in common when they are tested.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "support/session.h"

namespace vorn {

/// What a dialogue did, a few words a line: "say text", "queue text", "purge",
/// "voice Rate 5", "oneShotBuffer Play 0", "file write vorn1ops.cfg".
using Told = std::vector<std::string>;

class Dialogue {
 public:
  explicit Dialogue(const std::string& entry) : entry_(entry) {}

  Session session;
  /// Happens in the open menu, just before the entry is chosen.
  std::function<void()> beforeChoice;
  std::string scriptBeforeChoice;

  /// Starts the program, chooses the entry, carries out `statements`, and sees
  /// that the menu then stands where it stood. Returns what was traced of
  /// `events` from the choice to the menu; the purge with which the menu lets go is left out.
  Told play(const std::string& statements, const std::vector<std::string>& events = {"speak"});
  /// When each of those lines was traced, in milliseconds after the choice.
  const std::vector<int>& moments() const { return moments_; }

  const TraceRecord& trace() const { return session.trace(); }
  std::string file(const std::string& name) const { return session.folder.read(name); }
  /// The answers to `get`.
  Told answers(const std::string& field) const;

 private:
  Told linesBetweenMarks(const std::vector<std::string>& events);

  std::string entry_;
  std::vector<int> moments_;
};

/// Presses keys one after the other, "Up Up Enter", as fast as a person would.
std::string keys(const std::string& names);

/// What a key does to the voice: a key that is taken silences it; one that is
/// echoed besides is heard, quicker than usual. F1 has no character.
Told taken();
Told taken(const std::string& answer);
Told echoed(const std::string& character);
Told echoedF1();

/// Joins lists of lines.
Told operator+(Told first, const Told& second);
/// The same lines several times over.
Told operator*(int times, const Told& lines);

}  // namespace vorn
