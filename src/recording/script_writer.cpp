#include "recording/script_writer.h"

#include <algorithm>
#include <vector>

#include "platform/common/windows1252.h"

namespace vorn {
namespace {

constexpr std::size_t kEnoughOfAText =
    60;  // characters; texts are waited for in their order, so a part will do
constexpr int kFarewellMs = 60000;

}  // namespace

void ScriptWriter::comment(const std::string& text) {
  out_ << "# " << text << std::endl;
}

void ScriptWriter::requested(const std::string& text) {
  const std::size_t lineEnd = std::min(text.find_first_of("\r\n"), text.size());
  milestones_.push_back({now_ + 1, text.substr(0, std::min(lineEnd, kEnoughOfAText))});
}

std::int64_t ScriptWriter::latestMilestone() const {
  const auto latest = std::find_if(milestones_.rbegin(), milestones_.rend(),
                                   [this](const Milestone& milestone) { return milestone.yield <= now_; });
  return latest == milestones_.rend() ? latest_ : latest->yield;
}

void ScriptWriter::put(const std::string& statement, std::int64_t at) {
  waitUntil(std::max(at, written_));
  out_ << statement << std::endl;
}

void ScriptWriter::finish() {
  waitUntil(std::max(now_, written_));
  out_ << "wait " << kFarewellMs << std::endl;
}

// A replay counts ticks from where its wait begins, and passes texts that were requested before.
void ScriptWriter::waitUntil(std::int64_t yield) {
  int ticks = 0;
  std::vector<std::string> texts;
  for (; !milestones_.empty() && milestones_.front().yield <= yield; milestones_.pop_front()) {
    const Milestone& milestone = milestones_.front();
    latest_ = milestone.yield;
    if (milestone.text) {
      texts.push_back(*milestone.text);
    } else {
      ++ticks;
    }
  }
  if (ticks > 0) out_ << "wait tick " << ticks << '\n';
  for (const std::string& text : texts) out_ << "wait say " << utf8FromWindows1252(text) << '\n';
  const std::int64_t reached = std::max(latest_, written_);
  if (yield > reached) out_ << "wait " << yield - reached << '\n';
  written_ = yield;
}

}  // namespace vorn
