#include "support/trace_record.h"

#include <algorithm>

namespace vorn {
namespace {

/// "Play 0", or "Stop" where there is no value.
std::string operation(const TraceLine& line) {
  const std::string name = line.at("op");
  const TraceValue& value = line.at("value");
  if (value.is_null()) return name;
  return name + " " + (value.is_string() ? value.get<std::string>() : value.dump());
}

template <typename Result, typename Make>
std::vector<Result> collect(const std::vector<TraceLine>& lines, Make make) {
  std::vector<Result> results;
  for (const TraceLine& line : lines) results.push_back(make(line));
  return results;
}

}  // namespace

void TraceRecord::write(const TraceLine& line) {
  lines_.push_back(line);
}

std::string TraceRecord::text() const {
  std::string text;
  for (const TraceLine& line : lines_) text += traceText(line) + '\n';
  return text;
}

std::vector<TraceLine> TraceRecord::of(std::string_view event) const {
  std::vector<TraceLine> found;
  for (const TraceLine& line : lines_) {
    if (line.at("ev") == event) found.push_back(line);
  }
  return found;
}

std::vector<std::string> TraceRecord::spoken() const {
  std::vector<std::string> texts = this->texts("speak");
  std::erase(texts, "");
  return texts;
}

std::vector<std::string> TraceRecord::speech() const {
  return collect<std::string>(of("speak"), [](const TraceLine& line) {
    return line.at("flags").dump() + line.at("text").get<std::string>();
  });
}

bool TraceRecord::said(std::string_view text) const {
  return firstSaying(text) != nullptr;
}

const TraceLine* TraceRecord::firstSaying(std::string_view text, std::size_t fromLine) const {
  for (std::size_t i = fromLine; i < lines_.size(); ++i) {
    const TraceLine& line = lines_[i];
    if (line.at("ev") == "speak" &&
        line.at("text").get_ref<const std::string&>().find(text) != std::string::npos) {
      return &line;
    }
  }
  return nullptr;
}

std::vector<std::string> TraceRecord::soundsOf(std::string_view buffer) const {
  std::vector<std::string> operations;
  for (const TraceLine& line : of("sound")) {
    if (line.at("buffer") == buffer) operations.push_back(operation(line));
  }
  return operations;
}

std::vector<std::string> TraceRecord::sounds(const std::vector<std::string>& operations) const {
  std::vector<std::string> found;
  for (const TraceLine& line : of("sound")) {
    const bool isWanted = operations.empty() ||
                          std::find(operations.begin(), operations.end(), line.at("op")) != operations.end();
    if (isWanted) found.push_back(line.at("buffer").get<std::string>() + " " + operation(line));
  }
  return found;
}

std::vector<std::string> TraceRecord::devices(std::string_view device) const {
  std::vector<std::string> operations;
  for (const TraceLine& line : of("device")) {
    if (line.at("device") == device) operations.push_back(operation(line));
  }
  return operations;
}

std::vector<std::string> TraceRecord::voice() const {
  return collect<std::string>(of("voice"), operation);
}

std::vector<std::string> TraceRecord::files() const {
  return collect<std::string>(of("file"), [](const TraceLine& line) {
    return line.at("op").get<std::string>() + " " + line.at("name").get<std::string>();
  });
}

std::vector<TraceValue> TraceRecord::values(std::string_view field) const {
  std::vector<TraceValue> values;
  for (const TraceLine& line : of("value")) {
    if (line.at("name") == field) values.push_back(line.at("value"));
  }
  return values;
}

std::vector<std::string> TraceRecord::texts(std::string_view event) const {
  return collect<std::string>(of(event),
                              [](const TraceLine& line) { return line.at("text").get<std::string>(); });
}

std::vector<std::int64_t> TraceRecord::timesOf(std::string_view event, const char* field,
                                               const TraceValue& value) const {
  std::vector<std::int64_t> times;
  for (const TraceLine& line : of(event)) {
    if (line.at(field) == value) times.push_back(line.at("ms"));
  }
  return times;
}

int TraceRecord::exitStatus() const {
  if (lines_.empty() || lines_.back().at("ev") != "end") return -1;
  return lines_.back().at("exit");
}

}  // namespace vorn
