/// What the parts of a headless session share: its time, its trace, and the
/// state of everything that a script can move and a game can read.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/common/folder_files.h"
#include "platform/common/key_latch.h"
#include "platform/headless/field_table.h"
#include "platform/headless/options.h"
#include "platform/headless/recording_cache.h"
#include "platform/headless/render.h"
#include "platform/headless/speech.h"
#include "platform/headless/trace.h"
#include "platform/headless/virtual_clock.h"
#include "platform/platform.h"

namespace vorn {

/// The game controller, attached or not.
struct ControllerState {
  JoystickState reading;
  bool hasChanged = false;    ///< since the last notification
  bool isLost = false;        ///< until it is acquired again
  std::optional<int> notify;  ///< handle of the notification, where one has been asked for
};

struct World {
  World(const HeadlessOptions& setUp, TraceSink* traceSink, Speaker& speaker)
      : options(setUp),
        clock(setUp.tickCount, setUp.date, setUp.timeOfDay),
        trace(clock, traceSink),
        files(setUp.folder, [this](std::string_view op, const std::string& name) { trace.file(op, name); }),
        speech(clock, speaker) {}
  World(const World&) = delete;
  World& operator=(const World&) = delete;

  const HeadlessOptions options;
  VirtualClock clock;
  Trace trace;
  FolderFiles files;

  SpeechQueue speech;
  std::deque<std::string>
      requestedTexts;  ///< what the game asked to be said, in UTF-8, and the script has not passed yet

  std::shared_ptr<RecordingCache> recordings;
  Render* render = nullptr;  ///< null: nobody listens

  KeyboardState keyboard{};  ///< the keys that are held
  KeyLatch taps;
  ControllerState controller;
  bool hasFocus = true;
  EventReceiver* receiver = nullptr;

  FieldTable fields;
  std::int64_t carTicks = 0;  ///< that have been traced
};

}  // namespace vorn
