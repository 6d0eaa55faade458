#include "platform/desktop/pulse_output.h"

#include <pulse/pulseaudio.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <utility>

#include "platform/common/watchdog.h"

namespace vorn {
namespace {

using namespace std::chrono_literals;
using std::chrono::microseconds;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr const char* kName = "Vorn 1 TTS";
constexpr std::uint32_t kFrameBytes = 2 * sizeof(float);
constexpr auto kLongestAnswer = 5s;
constexpr auto kPatience = 600ms;  ///< with a device that takes nothing
constexpr auto kNextLook = 100ms;
constexpr auto kSettled = 1500ms;  ///< from then on the server knows how late its device is
constexpr int kSilenceBeforeSleep = Mixer::kRate / 2;
constexpr std::uint32_t kSleepingPiece = 4096;  ///< frames asked for at once by a device that sleeps

/// A connection to the server. All calls and answers are on one thread, which `iterate`s.
class Connection {
 public:
  Connection() : loop_(pa_mainloop_new()), context_(pa_context_new(pa_mainloop_get_api(loop_), kName)) {}
  ~Connection() {
    pa_context_disconnect(context_);
    pa_context_unref(context_);
    pa_mainloop_free(loop_);
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  pa_context* context() const { return context_; }
  bool isGood() const { return PA_CONTEXT_IS_GOOD(pa_context_get_state(context_)); }

  /// Carries out what has come, or comes `within`.
  void iterate(microseconds within) {
    if (pa_mainloop_prepare(loop_, static_cast<int>(within.count())) >= 0 && pa_mainloop_poll(loop_) >= 0) {
      pa_mainloop_dispatch(loop_);
    }
  }
  void wake() { pa_mainloop_wakeup(loop_); }  ///< may be called on any thread

  /// Iterates until `isDone`; false where the connection breaks first, or `isEnough`, or it takes too long.
  bool await(const std::function<bool()>& isDone, const std::function<bool()>& isEnough) {
    const auto end = steady_clock::now() + kLongestAnswer;
    while (!isDone()) {
      if (!isGood() || isEnough() || steady_clock::now() > end) {
        return false;
      }
      iterate(kNextLook);
    }
    return true;
  }
  bool connect(const std::function<bool()>& isEnough) {
    return pa_context_connect(context_, nullptr, PA_CONTEXT_NOFLAGS, nullptr) >= 0 &&
           await([this] { return pa_context_get_state(context_) == PA_CONTEXT_READY; }, isEnough);
  }

  struct Sink {
    std::string name;         ///< the server's own
    std::string description;  ///< for people; several sinks may have the same
  };
  std::vector<Sink> sinks(const std::function<bool()>& isEnough) {
    struct Answer {
      std::vector<Sink> sinks;
      bool isWhole = false;
    } answer;
    const auto take = [](pa_context*, const pa_sink_info* sink, int isLast, void* to) {
      auto& taken = *static_cast<Answer*>(to);
      if (isLast != 0) {
        taken.isWhole = true;
      } else {
        taken.sinks.push_back({sink->name, sink->description});
      }
    };
    pa_operation* const asked = pa_context_get_sink_info_list(context_, take, &answer);
    if (asked == nullptr) {
      return {};
    }
    await([&] { return answer.isWhole; }, isEnough);
    pa_operation_cancel(asked);
    pa_operation_unref(asked);
    return answer.sinks;
  }

 private:
  pa_mainloop* loop_;
  pa_context* context_;
};

/// One stream to one device.
class PulseOutput {
 public:
  explicit PulseOutput(AudioLine& line) : line_(line) {
    line_.setWaker([this] { connection_.wake(); });
  }
  ~PulseOutput();
  PulseOutput(const PulseOutput&) = delete;
  PulseOutput& operator=(const PulseOutput&) = delete;

  bool findServer();
  bool open();
  /// Until the device fails or the game ends.
  void play();

 private:
  static PulseOutput& self(void* output) { return *static_cast<PulseOutput*>(output); }
  bool isGood() const { return connection_.isGood() && PA_STREAM_IS_GOOD(pa_stream_get_state(stream_)); }
  std::string wishedSink();
  void setBuffer();
  void fill(std::size_t bytes);
  void lookAfterSleep();
  void lookAfterDelay();
  void noteDelay();

  AudioLine& line_;
  Connection connection_;
  pa_stream* stream_ = nullptr;
  int frames_ = 0;  ///< of the buffer, as the line wishes it
  bool isAsleep_ = false;
  std::uint64_t requests_ = 0;
  bool isDelayKnown_ = false;
  steady_clock::time_point since_;  ///< it plays to its present device
};

/// The server keeps two pieces of what it asks for at once. What is more than that it shares out evenly
/// between them and the device, whose part stays the same whether the stream sleeps or not.
pa_buffer_attr bufferOf(int frames, bool isAsleep) {
  const auto size = static_cast<std::uint32_t>(frames);
  const std::uint32_t piece = isAsleep ? kSleepingPiece : size / 2;
  pa_buffer_attr buffer{};
  buffer.maxlength = static_cast<std::uint32_t>(-1);
  buffer.tlength = (2 * piece + size / 2) * kFrameBytes;
  buffer.prebuf = kFrameBytes;  // it plays on as soon as there is anything, and loses nothing
  buffer.minreq = piece * kFrameBytes;
  buffer.fragsize = static_cast<std::uint32_t>(-1);
  return buffer;
}

/// What the player calls `sink` among `all`.
std::string labelOf(const Connection::Sink& sink, const std::vector<Connection::Sink>& all) {
  const auto isAlike = [&](const Connection::Sink& other) { return other.description == sink.description; };
  const bool isOnlyOne = std::count_if(all.begin(), all.end(), isAlike) == 1;
  return isOnlyOne ? sink.description : sink.description + " (" + sink.name + ")";
}

void forget(pa_operation* operation) {
  if (operation != nullptr) {
    pa_operation_unref(operation);
  }
}

PulseOutput::~PulseOutput() {
  line_.setWaker(nullptr);
  line_.setTaken(false);
  if (stream_ != nullptr) {
    pa_stream_set_write_callback(stream_, nullptr, nullptr);
    pa_stream_set_started_callback(stream_, nullptr, nullptr);
    pa_stream_set_moved_callback(stream_, nullptr, nullptr);
    pa_stream_disconnect(stream_);
    pa_stream_unref(stream_);
  }
}

bool PulseOutput::findServer() {
  return connection_.connect([this] { return line_.isEnding(); });
}

bool PulseOutput::open() {
  const pa_sample_spec format{PA_SAMPLE_FLOAT32NE, Mixer::kRate, 2};
  stream_ = pa_stream_new(connection_.context(), kName, &format, nullptr);
  if (stream_ == nullptr) {
    return false;
  }
  pa_stream_set_write_callback(
      stream_, [](pa_stream*, std::size_t bytes, void* output) { self(output).fill(bytes); }, this);
  pa_stream_set_started_callback(
      stream_, [](pa_stream*, void* output) { self(output).line_.setTaken(true); }, this);
  pa_stream_set_moved_callback(
      stream_,
      [](pa_stream*, void* output) {
        self(output).isDelayKnown_ = false;
        self(output).since_ = steady_clock::now();
      },
      this);
  frames_ = line_.frames();
  const pa_buffer_attr buffer = bufferOf(frames_, false);
  line_.begin(static_cast<int>(buffer.tlength / kFrameBytes));
  const std::string sink = wishedSink();
  const bool isConnecting =
      pa_stream_connect_playback(stream_, sink.empty() ? nullptr : sink.c_str(), &buffer,
                                 PA_STREAM_ADJUST_LATENCY, nullptr, nullptr) >= 0;
  const auto isReady = [this] { return pa_stream_get_state(stream_) == PA_STREAM_READY; };
  const auto hasFailed = [&] { return !isGood() || line_.isEnding(); };
  if (!isConnecting || !connection_.await(isReady, hasFailed)) {
    return false;
  }
  since_ = steady_clock::now();
  return true;
}

/// The server's name of the device that the player wants; empty for whichever it plays to.
std::string PulseOutput::wishedSink() {
  const std::string& wish = line_.wishedDevice();
  if (wish.empty()) {
    return "";
  }
  const auto sinks = connection_.sinks([this] { return line_.isEnding(); });
  const auto found = std::find_if(sinks.begin(), sinks.end(), [&](const Connection::Sink& sink) {
    return wish == labelOf(sink, sinks) || wish == sink.description || wish == sink.name;
  });
  line_.tellMissing(found == sinks.end());
  return found == sinks.end() ? "" : found->name;
}

void PulseOutput::play() {
  Watchdog watchdog;
  while (!line_.isEnding() && isGood() && watchdog.idleFor(requests_, steady_clock::now()) < kPatience) {
    connection_.iterate(kNextLook);
    lookAfterSleep();
    if (frames_ != line_.frames()) {
      frames_ = line_.frames();
      setBuffer();
    }
    lookAfterDelay();
  }
}

/// Takes the buffer's size over while the stream plays on.
void PulseOutput::setBuffer() {
  const pa_buffer_attr buffer = bufferOf(frames_, isAsleep_);
  line_.begin(static_cast<int>(buffer.tlength / kFrameBytes));
  forget(pa_stream_set_buffer_attr(stream_, &buffer, nullptr, nullptr));
}

/// A device that sleeps is given long pieces of silence. They are dropped when it
/// wakes, so that it answers sooner than one that was playing.
void PulseOutput::lookAfterSleep() {
  const bool wasAsleep = isAsleep_;
  isAsleep_ = wasAsleep ? line_.isAsleep() : line_.isTaken() && line_.fallAsleep(kSilenceBeforeSleep);
  if (isAsleep_ == wasAsleep) {
    return;
  }
  setBuffer();
  if (!isAsleep_) {
    forget(pa_stream_flush(stream_, nullptr, nullptr));
  }
}

void PulseOutput::fill(std::size_t bytes) {
  ++requests_;
  // A long piece that was still asked for in sleep: it would delay all that follows.
  const bool isLeftOver = !isAsleep_ && bytes > bufferOf(frames_, false).tlength;
  for (std::size_t left = bytes; left >= kFrameBytes;) {
    void* samples = nullptr;
    std::size_t size = left;
    if (pa_stream_begin_write(stream_, &samples, &size) < 0 || samples == nullptr) {
      return;
    }
    size = std::min(size, left) / kFrameBytes * kFrameBytes;
    const auto frames = static_cast<int>(size / kFrameBytes);
    if (isAsleep_ || isLeftOver) {
      std::fill_n(static_cast<float*>(samples), 2 * frames, 0.0F);
    } else {
      line_.render(static_cast<float*>(samples), frames);
    }
    if (pa_stream_write(stream_, samples, size, nullptr, 0, PA_SEEK_RELATIVE) < 0) {
      return;
    }
    left -= size;
  }
  if (isLeftOver) {
    forget(pa_stream_flush(stream_, nullptr, nullptr));
  }
}

void PulseOutput::lookAfterDelay() {
  if (isDelayKnown_ || steady_clock::now() - since_ < kSettled) {
    return;
  }
  isDelayKnown_ = true;
  forget(pa_stream_update_timing_info(
      stream_,
      [](pa_stream*, int isThere, void* output) {
        if (isThere != 0) self(output).noteDelay();
      },
      this));
}

void PulseOutput::noteDelay() {
  if (const pa_timing_info* timing = pa_stream_get_timing_info(stream_)) {
    line_.tellDelay(static_cast<int>(timing->sink_usec / 1000));
  }
}

}  // namespace

bool playThroughPulse(AudioLine& line) {
  PulseOutput output(line);
  if (!output.findServer()) {
    return false;
  }
  const bool isOpen = output.open();
  line.tellOpening(isOpen ? "" : "the sound server has none");
  if (isOpen) {
    output.play();
  }
  return true;
}

std::vector<std::string> pulseDevices() {
  const auto never = [] { return false; };
  Connection connection;
  std::vector<std::string> names;
  if (connection.connect(never)) {
    const auto sinks = connection.sinks(never);
    for (const Connection::Sink& sink : sinks) names.push_back(labelOf(sink, sinks));
  }
  return names;
}

}  // namespace vorn
