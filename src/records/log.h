/// The race log, a diary of play.
#pragma once

#include <string>
#include <vector>

#include "state/game_state.h"

namespace vorn {

inline constexpr const char* kLogFile = "vorn1log.txt";

/// "3/7/2026"
std::string dateText(const Date& date);

/// Adds lines to the log, all in one piece. Lines that cannot be kept are noted (`sayLosses`).
void appendToLog(GameState& g, const std::vector<std::string>& lines);

/// Opens the run in the log: a blank line and the header with today's date.
void startlog(GameState& g);

}  // namespace vorn
