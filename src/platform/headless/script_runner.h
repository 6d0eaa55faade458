/// Carries out a script, statement by statement, as virtual time passes.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "platform/common/close_requests.h"
#include "platform/headless/script.h"
#include "platform/headless/world.h"

namespace vorn {

class ScriptRunner {
 public:
  /// None is owned. Without a source the script has no statements.
  ScriptRunner(World& world, ScriptSource* source, std::ostream& diagnostics)
      : world_(world), source_(source), diagnostics_(diagnostics) {}

  /// Carries out what is due now. Reads further in the script only where every
  /// statement so far is done; may block for its writer then. Throws
  /// `WindowClosed` or `ProgramEnd`.
  void carryOn();
  /// From now on a request to close the window ends the program at once.
  void enterShutdown() { closeRequests_.enterShutdown(); }

 private:
  bool finishSteps();
  bool readStatement();
  void beginStep(std::size_t step);
  bool hasPassedLimit() const;
  [[noreturn]] void endAtLimit(const std::string& awaited) const;
  [[noreturn]] void endWith(int exitStatus, const std::string& reason) const;

  bool isOver(const step::Pause& pause);
  bool isOver(const step::AwaitTicks& await);
  bool isOver(const step::AwaitText& await);
  bool isOver(const step::AwaitQuiet& await);

  void carryOut(const step::MoveKey& move);
  void carryOut(const step::MoveAxis& move);
  void carryOut(const step::MoveButton& move);
  void carryOut(const step::LoseController& lose);
  void carryOut(const step::MoveFocus& move);
  void carryOut(const step::GetField& get);
  void carryOut(const step::SetField& set);
  void carryOut(const step::Echo& echo);
  void carryOut(const step::CloseWindow& close);
  [[noreturn]] void carryOut(const step::EndSession& end);

  ControllerState& controller() const;

  World& world_;
  ScriptSource* source_;
  std::ostream& diagnostics_;

  std::int64_t lineNumber_ = 0;
  std::int64_t lineBegan_ = 0;    ///< milliseconds
  std::vector<Step> steps_;       ///< of the line
  std::size_t next_ = 0;          ///< the first step that is not over
  std::int64_t stepBegan_ = 0;    ///< milliseconds
  std::int64_t ticksAtStep_ = 0;  ///< car ticks when the step began
  CloseRequests closeRequests_;
  bool hasClosed_ = false;  ///< the window has been asked to close
  bool hasEnded_ = false;   ///< the script
};

}  // namespace vorn
