/// Headless sessions of games that fit into a test.
#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "platform/headless/headless_platform.h"
#include "support/temporary_folder.h"
#include "support/trace_record.h"
#include "support/wav_maker.h"

namespace vorn {

/// A test runs a script against a game of a few lines and reads the trace.
class HeadlessTest : public testing::Test, protected EventReceiver {
 protected:
  using Game = std::function<void(HeadlessPlatform&)>;

  /// Runs `game` under `script`. Returns the exit status.
  int run(const std::string& script, const Game& game = yieldForever) {
    trace = TraceRecord();
    diagnostics.str("");
    std::istringstream lines(script);
    StreamScript source(lines, "test.script");
    options.folder = folder.path();
    HeadlessPlatform platform(options, {&source, &trace, render, &diagnostics, nullptr});
    platform.setFields({[this](std::string_view name) -> std::optional<FieldTable::Value> {
                          const auto found = fields.find(std::string(name));
                          if (found == fields.end()) return std::nullopt;
                          return found->second;
                        },
                        [this](std::string_view name, double value) {
                          const auto found = fields.find(std::string(name));
                          if (found == fields.end() || std::holds_alternative<std::string>(found->second))
                            return false;
                          found->second = value;
                          return true;
                        }});
    platform.setEventReceiver(this);
    running = &platform;
    return platform.run([&] {
      game(platform);
      return 0;
    });
  }

  /// Runs a game that is over by itself, long before its script, and that must come to its end.
  void scene(const Game& game) {
    bool hasEnded = false;
    run("wait 1000000", [&](HeadlessPlatform& p) {
      game(p);
      hasEnded = true;
    });
    EXPECT_TRUE(hasEnded) << diagnostics.str();
  }

  static void yieldForever(HeadlessPlatform& platform) {
    for (;;) platform.yield();
  }
  static void yield(HeadlessPlatform& platform, int times) {
    for (int i = 0; i < times; ++i) platform.yield();
  }
  /// Milliseconds since the session began.
  std::int64_t now() const { return running->tickCount() - options.tickCount; }
  /// Milliseconds of the `echo` lines with `text`.
  std::vector<std::int64_t> echoes(const std::string& text) const {
    return trace.timesOf("echo", "text", text);
  }

  void Form_KeyDown(int virtualKeyCode, int shiftState) override {
    keysDown.push_back({now(), virtualKeyCode, shiftState});
    if (onKey) onKey();
  }
  void DirectXEvent8_DXCallback(int eventId) override {
    callbacks.push_back({now(), eventId});
    if (onCallback) onCallback();
  }

  struct KeyDown {
    std::int64_t ms;
    int virtualKeyCode, shiftState;
    bool operator==(const KeyDown&) const = default;
  };
  struct Callback {
    std::int64_t ms;
    int eventId;
    bool operator==(const Callback&) const = default;
  };

  HeadlessOptions options;
  TemporaryFolder folder;
  std::map<std::string, FieldTable::Value> fields;
  RenderSink* render = nullptr;
  TraceRecord trace;
  std::ostringstream diagnostics;
  HeadlessPlatform* running = nullptr;
  std::vector<KeyDown> keysDown;
  std::vector<Callback> callbacks;
  std::function<void()> onKey, onCallback;
};

}  // namespace vorn
