#include "recording/recording_platform.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <functional>
#include <iostream>
#include <utility>

#include "platform/common/folder_files.h"
#include "platform/common/forwarding_devices.h"
#include "platform/common/forwarding_platform.h"
#include "platform/common/random.h"
#include "platform/common/system_clock.h"
#include "platform/headless/options.h"
#include "platform/headless/trace.h"
#include "platform/headless/virtual_clock.h"
#include "recording/input_recorder.h"
#include "recording/script_writer.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;
namespace chr = std::chrono;

class RecordedKeyboard : public ForwardingKeyboard {
 public:
  RecordedKeyboard(std::unique_ptr<KeyboardDevice> inner, InputRecorder& recorder)
      : ForwardingKeyboard(std::move(inner)), recorder_(recorder) {}
  KeyboardState GetDeviceStateKeyboard() override {
    const KeyboardState state = inner().GetDeviceStateKeyboard();
    recorder_.keyboardRead(state);
    return state;
  }

 private:
  InputRecorder& recorder_;
};

class RecordedController : public ForwardingController {
 public:
  RecordedController(std::unique_ptr<ControllerDevice> inner, InputRecorder& recorder)
      : ForwardingController(std::move(inner)), recorder_(recorder) {}
  JoystickState GetDeviceStateJoystick() override {
    const JoystickState state = inner().GetDeviceStateJoystick();
    recorder_.controllerRead(state);
    return state;
  }

 private:
  InputRecorder& recorder_;
};

class RecordedVoice : public ForwardingVoice {
 public:
  /// `tellVoices` hears how many voices there are, each time that the game asks.
  RecordedVoice(std::unique_ptr<Voice> inner, ScriptWriter& writer,
                std::function<void(std::size_t)> tellVoices)
      : ForwardingVoice(std::move(inner)), writer_(writer), tellVoices_(std::move(tellVoices)) {}
  std::vector<std::string> GetVoices() override {
    std::vector<std::string> voices = inner().GetVoices();
    tellVoices_(voices.size());
    return voices;
  }

 private:
  void doSpeak(const std::string& text, int flags) override {
    if (!text.empty()) writer_.requested(text);
    inner().Speak(text, flags);
  }

  ScriptWriter& writer_;
  std::function<void(std::size_t)> tellVoices_;
};

/// Car ticks as comments of the script.
class TickComments : public TraceSink {
 public:
  explicit TickComments(ScriptWriter& writer) : writer_(writer) {}
  void write(const TraceLine& line) override {
    TraceLine car = line;
    car.erase("ms");  // which a replay has of its own
    writer_.comment(traceText(car));
  }
  void flush() override {}

 private:
  ScriptWriter& writer_;
};

std::ofstream newFile(const fs::path& path) {
  if (fs::exists(path)) throw PlatformError("record", path.string(), "there is such a file already");
  std::ofstream file(path, std::ios::binary);
  if (!file) throw PlatformError("record", path.string(), "it cannot be written");
  return file;
}

/// What a replay has to begin with.
void copyPlayersFiles(Files& files, const fs::path& folder) {
  std::error_code error;
  fs::create_directories(folder, error);
  FolderFiles copies(folder);
  for (const char* const kind : {".cfg", ".rec", ".txt", ".ghost"}) {
    for (const std::string& name : files.list("vorn1", kind)) copies.write(name, files.read(name));
  }
}

chr::year_month_day dateOf(const Date& date) {
  return {chr::year(date.year), chr::month(static_cast<unsigned>(date.month)),
          chr::day(static_cast<unsigned>(date.day))};
}

std::string optionsText(const Date& date, chr::seconds time, std::uint64_t seed, std::size_t voices,
                        bool hasController) {
  const auto twoDigits = [](std::int64_t number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
  };
  const std::int64_t seconds = time.count();
  return "options: --seed " + std::to_string(seed) + " --date " + std::to_string(date.year) + '-' +
         twoDigits(date.month) + '-' + twoDigits(date.day) + " --time " + twoDigits(seconds / 3600) + ':' +
         twoDigits(seconds / 60 % 60) + ':' + twoDigits(seconds % 60) + " --voices " +
         std::to_string(voices) + (hasController ? " --controller" : "");
}

class RecordingPlatform : public ForwardingPlatform, private EventReceiver {
 public:
  RecordingPlatform(Platform& inner, const fs::path& script, std::string furtherOptions)
      : ForwardingPlatform(inner),
        furtherOptions_(std::move(furtherOptions)),
        script_(script),
        file_(newFile(script)),
        writer_(file_),
        recorder_(writer_),
        seed_(clockSeed()),
        random_(seed_),
        date_(inner.today()),
        time_(static_cast<int>(inner.secondsSinceMidnight())),
        clock_(HeadlessOptions().tickCount, dateOf(date_), time_),
        ticks_(writer_),
        trace_(clock_, &ticks_),
        due_(inner.tickCount()) {
    copyPlayersFiles(inner.files(), fs::path(script).replace_extension(".folder"));
    inner.setEventReceiver(this);
  }
  ~RecordingPlatform() override {
    inner().setEventReceiver(nullptr);
    recorder_.settle();
    writer_.finish();
    if (!file_.flush()) {
      std::cerr << script_.string() << " is not whole: it could not be written to its end." << std::endl;
    }
  }
  RecordingPlatform(const RecordingPlatform&) = delete;
  RecordingPlatform& operator=(const RecordingPlatform&) = delete;

  std::int32_t tickCount() override { return clock_.tickCount(); }
  double secondsSinceMidnight() override { return clock_.secondsSinceMidnight(); }
  Date today() override { return clock_.today(); }
  void setEventReceiver(EventReceiver* receiver) override { receiver_ = receiver; }
  std::unique_ptr<KeyboardDevice> createKeyboardDevice() override {
    return std::make_unique<RecordedKeyboard>(inner().createKeyboardDevice(), recorder_);
  }
  std::unique_ptr<ControllerDevice> createControllerDevice(const std::string& identifier) override {
    return std::make_unique<RecordedController>(inner().createControllerDevice(identifier), recorder_);
  }
  std::unique_ptr<Voice> createVoice() override {
    return std::make_unique<RecordedVoice>(inner().createVoice(), writer_,
                                           [this](std::size_t voices) { writeOptions(voices); });
  }
  double randomFraction() override { return random_.fraction(); }
  void reseedRandom() override {}  // chance belongs to the seed, as in a replay
  void carTicked(const TickReport& report) override {
    writer_.ticked();
    trace_.tick(report);
    inner().carTicked(report);
  }

 private:
  void Form_KeyDown(int virtualKeyCode, int shiftState) override {
    recorder_.keyWentDown(virtualKeyCode);
    if (receiver_ != nullptr) receiver_->Form_KeyDown(virtualKeyCode, shiftState);
  }
  void DirectXEvent8_DXCallback(int eventId) override {
    if (receiver_ != nullptr) receiver_->DirectXEvent8_DXCallback(eventId);
  }

  void writeOptions(std::size_t voices);
  void doYield(int atMostMs) override;
  void record(const char* statement);
  /// Real milliseconds until the yield that goes on is over.
  std::int32_t left() {
    return static_cast<std::int32_t>(due_ - static_cast<std::uint32_t>(inner().tickCount()));
  }

  const std::string furtherOptions_;
  const fs::path script_;
  std::ofstream file_;
  ScriptWriter writer_;
  InputRecorder recorder_;
  const std::uint64_t seed_;
  RandomSource random_;
  const Date date_;
  const chr::seconds time_;
  VirtualClock clock_;
  TickComments ticks_;
  Trace trace_;
  EventReceiver* receiver_ = nullptr;
  bool hasOptions_ = false;
  bool hasClosed_ = false;
  std::uint32_t due_;  ///< tick count of the inner platform at which the yield is over
};

/// The first time, which is when the game opens its voice, before anything else can happen.
void RecordingPlatform::writeOptions(std::size_t voices) {
  if (std::exchange(hasOptions_, true)) return;
  writer_.comment(optionsText(date_, time_, seed_, voices, !inner().attachedControllers().empty()) +
                  furtherOptions_);
}

void RecordingPlatform::doYield(int atMostMs) {
  constexpr std::int32_t kLongestLag =
      50;  // ms; where a text has been waited for, time is not caught up with
  clock_.advanceTo(clock_.now() + 1);
  writer_.yielded();
  if (atMostMs > 0) ++due_;
  if (left() < -kLongestLag) due_ = static_cast<std::uint32_t>(inner().tickCount());
  try {
    do {
      inner().yield(atMostMs > 0 ? std::max(left(), 0) : 0);
    } while (atMostMs > 0 && left() > 0);
  } catch (const WindowClosed&) {
    record("close");
    hasClosed_ = true;
    throw;
  } catch (const ProgramEnd&) {
    record(hasClosed_ ? "close" : "end");
    throw;
  }
}

void RecordingPlatform::record(const char* statement) {
  recorder_.settle();
  writer_.put(statement, writer_.now());
}

}  // namespace

std::unique_ptr<Platform> makeRecordingPlatform(Platform& inner, const fs::path& script,
                                                const std::string& furtherOptions) {
  return std::make_unique<RecordingPlatform>(inner, script, furtherOptions);
}

}  // namespace vorn
