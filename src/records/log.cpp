#include "records/log.h"

#include "speech/losses.h"

namespace vorn {

std::string dateText(const Date& date) {
  return std::to_string(date.month) + "/" + std::to_string(date.day) + "/" + std::to_string(date.year);
}

void appendToLog(GameState& g, const std::vector<std::string>& lines) {
  std::string bytes;
  for (const std::string& line : lines) bytes += line + "\r\n";
  keep(g, Kept::kLog, [&] { g.platform.files().append(kLogFile, bytes); });
}

void startlog(GameState& g) {
  appendToLog(g, {" ", "Vorn 1 log for " + dateText(g.platform.today()) + " By Ostrin "});
}

}  // namespace vorn
