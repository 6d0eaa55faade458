/// Track records: one small binary file a track and number of laps, and a text
/// summary of them all.
#pragma once

#include <optional>
#include <string>

#include "state/game_state.h"
#include "state/track_names.h"

namespace vorn {

inline constexpr const char* kRecordSuffix = ".rec";
inline constexpr const char* kRecordsSummaryFile = "vorn1records.txt";

/// What the names of the record files of track 1..10 begin with: "vorn1maple"
std::string recordPrefix(int track);
/// "vorn1maple0005.rec"
std::string recordFileName(int track, double laps);

/// A record as its file's bytes, little-endian whatever the machine.
std::string encodeRecord(const TrackRecord& record);
/// The record in a file's bytes; nothing where they are damaged or short.
std::optional<TrackRecord> decodeRecord(const std::string& bytes);

/// Seconds as hours, minutes, seconds and three decimals in words, up to and
/// including the blank after the last digit. Begins with a blank where there is
/// neither an hour nor a minute.
std::string timeInWords(double seconds);

/// Compares the race just finished with the record of its track and length:
/// leaves the file name, the record and the sentences in the state and logs them.
void sayrecord(GameState& g);
/// Whether the race just finished beats the record that `sayrecord` found.
bool isNewRecord(const GameState& g);

/// Asks for the holder's name and leaves it in `typedText`. Waits.
void GetNewRecName(GameState& g);
/// Writes the race just finished as the record of `typedText`, dated today, unless
/// another program has kept a better one meanwhile. A record that cannot be
/// written, or compared, is noted (`sayLosses`).
void writeRecord(GameState& g);
/// Rebuilds the summary from all record files; damaged ones are left out. A
/// summary that cannot be written is noted as a record.
void WriteNewRecordFile(GameState& g);

}  // namespace vorn
