/// What a headless session does, a line an event: one JSON object with `ms`
/// (virtual milliseconds) and `ev` (what happened) first. Texts of the game are
/// Windows-1252 and are written as UTF-8; reals read back as the same double.
/// Calls do not wait, but a sink may block for its reader.
#pragma once

#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <string_view>

#include "platform/headless/field_table.h"
#include "platform/headless/virtual_clock.h"
#include "platform/platform.h"

namespace vorn {

using TraceLine = nlohmann::ordered_json;   ///< an object
using TraceValue = nlohmann::ordered_json;  ///< null, a number, an array of numbers or a text

/// The text of a line, without its end.
std::string traceText(const TraceLine& line);

/// Where a trace goes.
class TraceSink {
 public:
  virtual ~TraceSink() = default;
  virtual void write(const TraceLine& line) = 0;
  /// Everything written so far reaches the reader. Throws `PlatformError` where it cannot.
  virtual void flush() = 0;
};

/// A trace as text. Does not own the stream.
class StreamTraceSink : public TraceSink {
 public:
  explicit StreamTraceSink(std::ostream& stream) : stream_(stream) {}
  void write(const TraceLine& line) override;
  void flush() override;

 private:
  std::ostream& stream_;
};

class Trace {
 public:
  /// Neither is owned; without a sink nothing is traced.
  Trace(const VirtualClock& clock, TraceSink* sink) : clock_(clock), sink_(sink) {}

  void window(std::string_view caption);
  void speak(std::string_view text, int flags, int rate, int volume, int voice);
  void voice(const char* operation, TraceValue value = nullptr);
  void sound(const std::string& buffer, const char* operation, TraceValue value = nullptr);
  void device(const char* device, const char* operation, TraceValue value = nullptr);
  void input(const char* source, TraceValue name = nullptr, TraceValue value = nullptr);
  void tick(const TickReport& report);
  void file(std::string_view operation, std::string_view name);
  void box(std::string_view text);
  void program(std::string_view name, int style);
  void value(const std::string& name, const FieldTable::Value& value);
  void echo(const std::string& utf8);
  void error(const std::string& text);
  /// The last line: whatever is traced after it is dropped.
  void end(int exitStatus);
  void flush();

 private:
  template <typename... Fields>
  void put(const char* event, Fields&&... fields);

  const VirtualClock& clock_;
  TraceSink* sink_;
  bool hasEnded_ = false;
};

}  // namespace vorn
