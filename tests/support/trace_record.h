/// A trace kept in memory, to be asked in a test's own words.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/headless/trace.h"

namespace vorn {

class TraceRecord : public TraceSink {
 public:
  void write(const TraceLine& line) override;
  void flush() override { flushedLines_ = lines_.size(); }

  const std::vector<TraceLine>& lines() const { return lines_; }
  std::size_t flushedLines() const { return flushedLines_; }  ///< how many a reader has surely seen
  /// What a trace file would hold.
  std::string text() const;

  /// The lines of one event.
  std::vector<TraceLine> of(std::string_view event) const;
  /// Every text that was requested, purges left out.
  std::vector<std::string> spoken() const;
  /// Every request with its flags: "1 Exit Game. " is the text " Exit Game. " queued, "2" a purge.
  std::vector<std::string> speech() const;
  /// Whether a text that contains `text` was requested.
  bool said(std::string_view text) const;
  /// The first request, at `fromLine` or later, that contains `text`; null where there is none.
  const TraceLine* firstSaying(std::string_view text, std::size_t fromLine = 0) const;

  /// What was done with a buffer: "create vorn0.wav", "Play 0", "Stop".
  std::vector<std::string> soundsOf(std::string_view buffer) const;
  /// The same for all buffers, each with its name before it; `operations` empty: every operation.
  std::vector<std::string> sounds(const std::vector<std::string>& operations = {}) const;
  /// What was done with a device: "SetCooperativeLevel 10", "DIPROP_RANGE [-10000,10000]".
  std::vector<std::string> devices(std::string_view device) const;
  /// What was set of the voice: "create", "Rate 5".
  std::vector<std::string> voice() const;
  /// File operations: "write vorn1voc.cfg".
  std::vector<std::string> files() const;
  std::vector<TraceLine> ticks() const { return of("tick"); }
  /// The answers to `get` for one field, in order.
  std::vector<TraceValue> values(std::string_view field) const;
  /// The texts of all lines of `event` ("echo", "box", "error").
  std::vector<std::string> texts(std::string_view event) const;
  /// Milliseconds of each line of `event` whose `field` is `value`.
  std::vector<std::int64_t> timesOf(std::string_view event, const char* field, const TraceValue& value) const;
  /// Exit status of the last line; -1 where the trace has not ended.
  int exitStatus() const;

 private:
  std::vector<TraceLine> lines_;
  std::size_t flushedLines_ = 0;
};

}  // namespace vorn
