#include "platform/headless/script.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <utility>

#include "text/reals.h"

namespace vorn {
namespace {

constexpr std::int64_t kTapMs = 60;
constexpr std::int64_t kAfterTapMs = 20;
constexpr std::int64_t kLongestMs = 1'000'000'000'000;  // beyond any session, and sums of it still fit
constexpr std::int64_t kMostTicks = 1'000'000'000;
constexpr int kAxisEnd = 10000;
constexpr int kLastButton = 31;

/// A line that is taken apart from its beginning.
class Line {
 public:
  explicit Line(std::string_view text) : rest_(text) {}

  bool isAtEnd() const { return rest_.find_first_not_of(' ') == std::string_view::npos; }
  std::string_view word(const char* what) {
    if (isAtEnd()) throw ScriptError(std::string(what) + " is missing");
    rest_.remove_prefix(rest_.find_first_not_of(' '));
    const std::string_view taken = rest_.substr(0, rest_.find(' '));
    rest_.remove_prefix(taken.size());
    return taken;
  }
  /// Everything after one blank, further blanks included.
  std::string text() {
    const std::string_view taken = std::exchange(rest_, {});
    return std::string(taken.substr(taken.empty() ? 0 : 1));
  }

 private:
  std::string_view rest_;
};

[[noreturn]] void refuse(const std::string& reason, std::string_view word) {
  throw ScriptError(reason + ": " + std::string(word));
}

[[noreturn]] void refuseNumber(std::string_view word, const char* what) {
  refuse(std::string(what) + " is not a number that fits", word);
}

double takeReal(Line& line, const char* what) {
  const std::string_view word = line.word(what);
  const auto parsed = parseReal(word);
  if (!parsed || parsed->length != word.size()) {
    refuseNumber(word, what);
  }
  return parsed->value;
}

std::int64_t takeWhole(Line& line, std::int64_t low, std::int64_t high, const char* what) {
  const std::string_view word = line.word(what);
  std::int64_t number = 0;
  const auto parsed = std::from_chars(word.data(), word.data() + word.size(), number);
  if (parsed.ec != std::errc() || parsed.ptr != word.data() + word.size()) {
    refuseNumber(word, what);
  }
  if (number < low || number > high) {
    refuse(std::string(what) + " is not in " + std::to_string(low) + " to " + std::to_string(high),
           std::to_string(number));
  }
  return number;
}

std::int64_t takeMilliseconds(Line& line) {
  return takeWhole(line, 0, kLongestMs, "the number of milliseconds");
}

/// Which of the words stands there.
std::size_t takeOneOf(Line& line, const char* what, std::initializer_list<std::string_view> words) {
  const std::string_view word = line.word(what);
  const auto* const found = std::find(words.begin(), words.end(), word);
  if (found == words.end()) refuse(std::string("no such thing for ") + what, word);
  return static_cast<std::size_t>(found - words.begin());
}

const Key* takeKey(Line& line) {
  const std::string_view name = line.word("the key");
  const Key* const key = keyByName(name);
  if (key == nullptr) refuse("there is no such key", name);
  return key;
}

std::string takeText(Line& line) {
  std::string text = line.text();
  if (text.empty()) throw ScriptError("the text is missing");
  return text;
}

using Steps = std::vector<Step>;

void appendTap(Steps& steps, const Key* key, std::int64_t heldMs = kTapMs) {
  steps.insert(steps.end(), {step::MoveKey{key, true}, step::Pause{heldMs}, step::MoveKey{key, false},
                             step::Pause{kAfterTapMs}});
}

Steps parseWaitTick(Line& line) {
  step::AwaitTicks await{1, std::nullopt};
  Line ahead = line;
  if (!ahead.isAtEnd() && ahead.word("") != "or") {
    await.count = takeWhole(line, 1, kMostTicks, "the number of ticks");
  }
  if (!line.isAtEnd()) {
    takeOneOf(line, "what follows the ticks", {"or"});
    await.orMilliseconds = takeMilliseconds(line);
  }
  return {await};
}

Steps parseWait(Line& line) {
  Line ahead = line;
  const std::string_view kind = ahead.word("what to wait for");
  if (kind != "tick" && kind != "say" && kind != "quiet") return {step::Pause{takeMilliseconds(line)}};
  line = ahead;
  if (kind == "tick") return parseWaitTick(line);
  if (kind == "say") return {step::AwaitText{takeText(line)}};
  return {step::AwaitQuiet{}};
}

Steps parsePress(Line& line) {
  return {step::MoveKey{takeKey(line), true}};
}

Steps parseRelease(Line& line) {
  return {step::MoveKey{takeKey(line), false}};
}

Steps parseTap(Line& line) {
  const Key* const key = takeKey(line);
  Steps steps;
  appendTap(steps, key, line.isAtEnd() ? kTapMs : takeMilliseconds(line));
  return steps;
}

Steps parseType(Line& line) {
  Steps steps;
  for (const char character : takeText(line)) {
    const auto stroke = strokeFor(character);
    if (!stroke) refuse("only letters, digits and blanks can be typed", {&character, 1});
    if (stroke->shifted) appendTap(steps, keyByName("LeftShift"));
    appendTap(steps, stroke->key);
  }
  return steps;
}

constexpr const char* kAxisNames[] = {"X", "Y", "Rx", "Ry"};

Steps parseAxis(Line& line) {
  const std::size_t axis =
      takeOneOf(line, "the axis", {kAxisNames[0], kAxisNames[1], kAxisNames[2], kAxisNames[3]});
  return {step::MoveAxis{static_cast<step::Axis>(axis),
                         static_cast<int>(takeWhole(line, -kAxisEnd, kAxisEnd, "the axis value"))}};
}

Steps parseButton(Line& line) {
  const auto number = static_cast<int>(takeWhole(line, 0, kLastButton, "the button"));
  return {step::MoveButton{number, takeOneOf(line, "the button's state", {"up", "down"}) == 1}};
}

Steps parseLost(Line&) {
  return {step::LoseController{}};
}

Steps parseFocus(Line& line) {
  return {step::MoveFocus{takeOneOf(line, "the focus", {"off", "on"}) == 1}};
}

Steps parseGet(Line& line) {
  return {step::GetField{std::string(line.word("the field"))}};
}

Steps parseSet(Line& line) {
  std::string name(line.word("the field"));
  return {step::SetField{std::move(name), takeReal(line, "the value")}};
}

Steps parseEcho(Line& line) {
  return {step::Echo{line.text()}};
}

Steps parseClose(Line&) {
  return {step::CloseWindow{}};
}

Steps parseEnd(Line&) {
  return {step::EndSession{}};
}

struct Statement {
  std::string_view name;
  Steps (*parse)(Line& line);
};

constexpr Statement kStatements[] = {
    {"wait", parseWait},   {"press", parsePress}, {"release", parseRelease}, {"tap", parseTap},
    {"type", parseType},   {"axis", parseAxis},   {"button", parseButton},   {"lost", parseLost},
    {"focus", parseFocus}, {"get", parseGet},     {"set", parseSet},         {"echo", parseEcho},
    {"close", parseClose}, {"end", parseEnd},
};

}  // namespace

std::optional<std::string> StreamScript::nextLine() {
  std::string line;
  if (!std::getline(stream_, line)) return std::nullopt;
  if (line.ends_with('\r')) line.pop_back();
  return line;
}

std::vector<Step> parseLine(std::string_view text) {
  Line line(text);
  if (text.starts_with('#') || line.isAtEnd()) return {};
  const std::string_view name = line.word("the statement");
  const auto* const statement = std::find_if(std::begin(kStatements), std::end(kStatements),
                                             [&](const Statement& s) { return s.name == name; });
  if (statement == std::end(kStatements)) refuse("there is no such statement", name);
  Steps steps = statement->parse(line);
  if (!line.isAtEnd()) refuse("more than the statement takes", line.word(""));
  return steps;
}

const char* axisName(step::Axis axis) {
  return kAxisNames[static_cast<std::size_t>(axis)];
}

}  // namespace vorn
