#include "platform/headless/trace.h"

#include <utility>

#include "platform/common/windows1252.h"
#include "platform/errors.h"

namespace vorn {

std::string traceText(const TraceLine& line) {
  return line.dump(-1, ' ', false, TraceLine::error_handler_t::replace);
}

void StreamTraceSink::write(const TraceLine& line) {
  const std::string text = traceText(line) + '\n';
  stream_.write(text.data(), static_cast<std::streamsize>(text.size()));
}

void StreamTraceSink::flush() {
  if (!stream_.flush()) throw PlatformError("trace", "", "the trace cannot be written");
}

namespace {

template <typename Value>
struct Field {
  const char* name;
  Value value;
};
template <typename Value>
Field(const char*, Value) -> Field<Value>;

}  // namespace

template <typename... Fields>
void Trace::put(const char* event, Fields&&... fields) {
  if (sink_ == nullptr || hasEnded_) return;
  TraceLine line = TraceLine::object();
  // No name comes twice, so none is looked for; and the line grows once.
  auto& object = line.get_ref<TraceLine::object_t&>();
  object.reserve(2 + sizeof...(fields));
  object.emplace_back("ms", clock_.now());
  object.emplace_back("ev", event);
  (object.emplace_back(fields.name, std::move(fields.value)), ...);
  sink_->write(line);
}

void Trace::window(std::string_view caption) {
  put("window", Field{"caption", utf8FromWindows1252(caption)});
}

void Trace::speak(std::string_view text, int flags, int rate, int volume, int voice) {
  put("speak", Field{"text", utf8FromWindows1252(text)}, Field{"flags", flags}, Field{"rate", rate},
      Field{"volume", volume}, Field{"voice", voice});
}

void Trace::voice(const char* operation, TraceValue value) {
  put("voice", Field{"op", operation}, Field{"value", std::move(value)});
}

void Trace::sound(const std::string& buffer, const char* operation, TraceValue value) {
  put("sound", Field{"buffer", buffer}, Field{"op", operation}, Field{"value", std::move(value)});
}

void Trace::device(const char* device, const char* operation, TraceValue value) {
  put("device", Field{"device", device}, Field{"op", operation}, Field{"value", std::move(value)});
}

void Trace::input(const char* source, TraceValue name, TraceValue value) {
  put("input", Field{"source", source}, Field{"name", std::move(name)}, Field{"value", std::move(value)});
}

void Trace::tick(const TickReport& report) {
  put("tick", Field{"raceTicks", report.raceTicks}, Field{"speed", report.speed}, Field{"gear", report.gear},
      Field{"engineRpm", report.engineRpm}, Field{"soundRpm", report.soundRpm}, Field{"fuel", report.fuel},
      Field{"lapPosition", report.lapPosition}, Field{"lateralPosition", report.lateralPosition},
      Field{"lapsCompleted", report.lapsCompleted}, Field{"segment", report.segment},
      Field{"poleDistance", report.poleDistance}, Field{"joySteering", report.joySteering},
      Field{"joyGasBrake", report.joyGasBrake}, Field{"steerKeyTicks", report.steerKeyTicks},
      Field{"marblesTicks", report.marblesTicks}, Field{"wallTicks", report.wallTicks},
      Field{"pit", report.pit});
}

void Trace::file(std::string_view operation, std::string_view name) {
  put("file", Field{"op", operation}, Field{"name", name});
}

void Trace::box(std::string_view text) {
  put("box", Field{"text", utf8FromWindows1252(text)});
}

void Trace::program(std::string_view name, int style) {
  put("program", Field{"name", utf8FromWindows1252(name)}, Field{"style", style});
}

void Trace::value(const std::string& name, const FieldTable::Value& value) {
  TraceValue written;
  if (const auto* text = std::get_if<std::string>(&value)) {
    written = utf8FromWindows1252(*text);
  } else if (const auto* real = std::get_if<double>(&value)) {
    written = *real;
  } else {
    written = std::get<std::int64_t>(value);
  }
  put("value", Field{"name", name}, Field{"value", std::move(written)});
}

void Trace::echo(const std::string& utf8) {
  put("echo", Field{"text", utf8});
}

void Trace::error(const std::string& text) {
  put("error", Field{"text", text});
}

void Trace::end(int exitStatus) {
  put("end", Field{"exit", exitStatus});
  flush();
  hasEnded_ = true;
}

void Trace::flush() {
  if (sink_ != nullptr && !hasEnded_) sink_->flush();
}

}  // namespace vorn
