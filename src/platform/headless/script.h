/// The language of headless scripts: one statement a line, taken apart into the
/// steps that it consists of. Nothing here waits but a source for its writer.
#pragma once

#include <cstdint>
#include <istream>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/common/key_codes.h"

namespace vorn {

/// A line that cannot be understood or carried out, with the reason.
class ScriptError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Where the lines come from.
class ScriptSource {
 public:
  virtual ~ScriptSource() = default;
  /// The next line without its end, nothing at the end of the script. Called
  /// only when the line is needed; may block for its writer.
  virtual std::optional<std::string> nextLine() = 0;
  virtual std::string name() const = 0;  ///< for messages
};

/// A script from a file or from standard input. Does not own the stream.
class StreamScript : public ScriptSource {
 public:
  StreamScript(std::istream& stream, std::string name) : stream_(stream), name_(std::move(name)) {}
  std::optional<std::string> nextLine() override;
  std::string name() const override { return name_; }

 private:
  std::istream& stream_;
  std::string name_;
};

namespace step {

enum class Axis { kX, kY, kRx, kRy };

struct Pause {
  std::int64_t milliseconds;
};
struct AwaitTicks {
  std::int64_t count;
  std::optional<std::int64_t> orMilliseconds;
};
struct AwaitText {
  std::string text;  ///< UTF-8
};
struct AwaitQuiet {};

struct MoveKey {
  const Key* key;
  bool isDown;
};
struct MoveAxis {
  Axis axis;
  int value;  ///< -10000 .. 10000
};
struct MoveButton {
  int number;  ///< 0 .. 31
  bool isDown;
};
struct LoseController {};
struct MoveFocus {
  bool isOn;
};
struct GetField {
  std::string name;
};
struct SetField {
  std::string name;
  double value;
};
struct Echo {
  std::string text;  ///< UTF-8
};
struct CloseWindow {};
struct EndSession {};

}  // namespace step

/// What takes time.
using Wait = std::variant<step::Pause, step::AwaitTicks, step::AwaitText, step::AwaitQuiet>;
/// What happens at once.
using Action =
    std::variant<step::MoveKey, step::MoveAxis, step::MoveButton, step::LoseController, step::MoveFocus,
                 step::GetField, step::SetField, step::Echo, step::CloseWindow, step::EndSession>;
using Step = std::variant<Wait, Action>;

/// The steps of one line; none for a comment or an empty line. Throws `ScriptError`.
std::vector<Step> parseLine(std::string_view line);

/// An axis as scripts and traces write it.
const char* axisName(step::Axis axis);

}  // namespace vorn
