/// The log and the records in the player's hands: read aloud, deleted, reset. All
/// wait and yield.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "state/game_state.h"

namespace vorn {

/// Cuts lines into the blocks that are read in one go: each ends with a line that
/// begins with a blank, or after 111 lines, or with the last line.
std::vector<std::vector<std::string>> readingBlocks(const std::vector<std::string>& lines);

/// Cuts a line into what is spoken one after the other: itself, or, where it is longer
/// than any that the game writes, pieces of at most 1000 bytes, cut behind blanks.
std::vector<std::string> spokenPieces(std::string_view line);

/// Reads the log, or the summary of the records, aloud until it ends or a key is pressed.
void readlog(GameState& g);
void readrecords(GameState& g);

/// Asks, then deletes the log and begins a new one.
void delog(GameState& g);
/// Asks whose, and whether, then deletes the record files of one track or of all.
/// The summary stays as it is until the next record.
void resrec(GameState& g);

}  // namespace vorn
