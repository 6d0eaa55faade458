#include "records/reading.h"

#include "clock/waits.h"
#include "input/choosers.h"
#include "input/events.h"
#include "records/log.h"
#include "records/records.h"
#include "speech/losses.h"
#include "speech/speech.h"
#include "text/settings_file.h"

namespace vorn {
namespace {

constexpr std::size_t kLongestBlock = 111;   // lines
constexpr std::size_t kLongestPiece = 1000;  // bytes that the voice is given at once
constexpr double kPauseBeforeLog = 0.1;      // seconds
constexpr double kPauseBetweenBlocks = 0.2;  // seconds

/// Returns false when a key has cut it off.
bool readBlock(GameState& g, const std::vector<std::string>& block) {
  for (const std::string& line : block) {
    for (const std::string& piece : spokenPieces(line)) {
      if (speakAndWait(g, piece)) continue;
      stopspeech(g);
      return false;
    }
  }
  return true;
}

/// Returns false where the file cannot be read.
bool readFileAloud(GameState& g, const char* fileName) {
  std::string text;
  if (!carryOn([&] { text = g.platform.files().read(fileName); })) return false;
  const auto blocks = readingBlocks(textLines(text));
  for (std::size_t i = 0; i < blocks.size(); ++i) {
    if (i > 0) dyke(g, kPauseBetweenBlocks);
    if (!readBlock(g, blocks[i])) break;
  }
  return true;
}

/// What is reset: the files that begin with `prefix`, and how they are spoken of.
struct Reset {
  std::string prefix, question, confirmation;
};

Reset resetOf(const GameState& g, int track) {
  const std::string& name = g.trackNames[track];
  return {recordPrefix(track), " Reset the " + name + " records? no ",
          " The " + name + " records have been reset. "};
}

Reset resetOfAll() {
  return {"vorn1", " Reset  all  records? no ", " All  records have been reset. "};
}

Reset chooseReset(GameState& g) {
  std::vector<std::string> entries = {" all "};
  for (int track = 1; track <= kTracks; ++track) entries.push_back(g.trackNames[track]);
  int choice = 1;
  chooseFromList(
      g, {.prompt = " select the track record to reset, all ", .entries = entries, .echoesOtherKeys = true},
      choice);
  return choice == 1 ? resetOfAll() : resetOf(g, choice - 1);
}

}  // namespace

std::vector<std::string> spokenPieces(std::string_view line) {
  std::vector<std::string> pieces;
  while (line.size() > kLongestPiece) {
    const std::size_t blank = line.substr(0, kLongestPiece).rfind(' ');
    const std::size_t length = blank == std::string_view::npos || blank == 0 ? kLongestPiece : blank + 1;
    pieces.emplace_back(line.substr(0, length));
    line.remove_prefix(length);
  }
  pieces.emplace_back(line);
  return pieces;
}

std::vector<std::vector<std::string>> readingBlocks(const std::vector<std::string>& lines) {
  std::vector<std::vector<std::string>> blocks;
  bool isOpen = false;
  for (const std::string& line : lines) {
    if (!isOpen) blocks.emplace_back();
    blocks.back().push_back(line);
    isOpen = !(line.starts_with(' ') || blocks.back().size() == kLongestBlock);
  }
  return blocks;
}

void readlog(GameState& g) {
  constexpr const char* kNone = " sorry, there was no log file to reed. ";
  clk(g);
  stopspeech(g);
  if (!g.platform.files().find(kLogFile)) {
    say(g, kNone);
    return;
  }
  dyke(g, kPauseBeforeLog);
  if (!readFileAloud(g, kLogFile)) say(g, kNone);
}

void readrecords(GameState& g) {
  constexpr const char* kNone = " Sorry, but there was no records file to reed. ";
  stopspeech(g);
  clk(g);
  if (!g.platform.files().find(kRecordsSummaryFile) || !readFileAloud(g, kRecordsSummaryFile)) say(g, kNone);
}

void delog(GameState& g) {
  if (!g.platform.files().find(kLogFile)) {
    say(g, " sorry, there was no log file to delete. ");
    return;
  }
  if (!askYesNo(
          g, {.prompt = " Are you sure that you want to delete the log file? no ", .startsAtYes = false})) {
    return;
  }
  if (!keep(g, Kept::kLog, [&] { g.platform.files().remove(kLogFile); })) return;
  say(g, " The log file has been deleted. ");
  startlog(g);
}

void resrec(GameState& g) {
  const Reset reset = chooseReset(g);
  if (!askYesNo(g, {.prompt = reset.question, .startsAtYes = false})) return;
  bool isReset = true;
  for (const std::string& name : g.platform.files().list(reset.prefix, kRecordSuffix)) {
    isReset &= keep(g, Kept::kRecord, [&] { g.platform.files().remove(name); });
  }
  WriteNewRecordFile(g);
  if (isReset) say(g, reset.confirmation);
}

}  // namespace vorn
