// The figures of the real program on a desktop. Run it within
// tests/desktop/with_desktop.sh --record FILE.wav:
//
//   desktop_bench race          a demonstration lap: how late ticks are, processor load, memory
//   desktop_bench menu PROGRAM  the main menu of PROGRAM: how soon it sounds and speaks, load and wakeups
//   desktop_bench horn          a key that sounds the horn over a running engine: how soon it does

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "demo/demo_platform.h"
#include "desktop/key_presser.h"
#include "platform/common/forwarding_platform.h"
#include "platform/desktop/desktop_platform.h"
#include "shell/start_up.h"
#include "support/program.h"
#include "support/temporary_folder.h"

namespace vorn {
namespace {

using Clock = std::chrono::steady_clock;

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

double secondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

double processorSeconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// How often the threads of `process` have gone to sleep so far.
double wakeupsOf(pid_t process) {
  double wakeups = 0;
  for (const auto& task : std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/task")) {
    std::ifstream status(task.path() / "status");
    for (std::string word; status >> word;) {
      double count = 0;
      if (word == "voluntary_ctxt_switches:" && status >> count) wakeups += count;
    }
  }
  return wakeups;
}

double percentile(std::vector<double> values, double share) {
  if (values.empty()) throw std::runtime_error("nothing was measured");
  std::sort(values.begin(), values.end());
  return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1))];
}

/// A folder with the game's sounds in which nobody has played yet.
class NewFolder : public TemporaryFolder {
 public:
  NewFolder() {
    for (const auto& sound : std::filesystem::directory_iterator(VORN_SOUND_FOLDER)) {
      const std::filesystem::path name = sound.path().filename();
      if (name.extension() == ".wav") std::filesystem::create_symlink(sound.path(), path() / name);
    }
  }
};

/// Notes how far apart the reports of the car are, how late the waits for a tick end, and the load meanwhile.
class TickWatch : public ForwardingPlatform {
 public:
  using ForwardingPlatform::ForwardingPlatform;

  void carTicked(const TickReport& report) override {
    const auto now = Clock::now();
    if (report.raceTicks > lastRaceTicks_ && report.raceTicks < lastRaceTicks_ + 2) {
      intervals_.push_back(std::chrono::duration<double, std::milli>(now - last_).count());
    } else {
      start_ = now;
      processorAtStart_ = processorSeconds();
      wakeupsAtStart_ = wakeupsOf(getpid());
    }
    last_ = now;
    lastRaceTicks_ = report.raceTicks;
    processorAtLast_ = processorSeconds();
    if (++ticks_ % kTicksALook == 0)
      wakeupsPerSecond_ = (wakeupsOf(getpid()) - wakeupsAtStart_) / secondsSince(start_);
  }

  void print() const {
    const double lasted = std::chrono::duration<double>(last_ - start_).count();
    std::cout << "ticks " << intervals_.size() << "\ninterval ms p50 " << percentile(intervals_, 0.5)
              << ", p99 " << percentile(intervals_, 0.99) << ", longest " << percentile(intervals_, 1)
              << "\nend of the wait, ms late p50 " << percentile(late_, 0.5) << ", p99 "
              << percentile(late_, 0.99) << ", longest " << percentile(late_, 1)
              << "\nprocessor while racing, percent of a core "
              << 100 * (processorAtLast_ - processorAtStart_) / lasted << "\nwakeups a second "
              << wakeupsPerSecond_ << '\n';
  }

 private:
  static constexpr int kTicksALook = 50;

  /// A wait that no event cut short ends a tick. The game counts whole milliseconds.
  void doYield(int atMostMs) override {
    const auto end =
        std::chrono::floor<std::chrono::milliseconds>(Clock::now()) + std::chrono::milliseconds(atMostMs);
    inner().yield(atMostMs);
    const auto now = Clock::now();
    if (atMostMs > 0 && lastRaceTicks_ >= 0 && now >= end) {
      late_.push_back(std::chrono::duration<double, std::milli>(now - end).count());
    }
  }

  std::vector<double> intervals_;
  std::vector<double> late_;
  Clock::time_point start_, last_;
  double lastRaceTicks_ = -10;
  double processorAtStart_ = 0, processorAtLast_ = 0;
  double wakeupsAtStart_ = 0, wakeupsPerSecond_ = 0;
  int ticks_ = 0;
};

void measureRace() {
  DesktopOptions options;
  const NewFolder folder;
  options.folder = folder.path();
  options.speech = SpeechChoice::kEspeak;
  const auto desktop = makeDesktopPlatform(options);
  TickWatch watch(*desktop);
  std::ostringstream captions;
  const auto demonstration = makeDemoPlatform(watch, 1, captions);
  GameState game(*demonstration);
  Form_Load(game);
  watch.print();
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  std::cout << "most memory, MB " << usage.ru_maxrss / 1024 << '\n';
}

/// The recording that with_desktop.sh makes.
class Recording {
 public:
  Recording() : file_(std::getenv("VORN_RECORDING")) {}
  std::uintmax_t frames() const { return std::filesystem::file_size(file_) / 4; }

  /// Milliseconds from frame `from` to the first one that is heard, at most `within`.
  double millisecondsToSound(std::uintmax_t from, int within) const {
    constexpr int kHeard = 1;  // of 32768: before there is silence
    std::ifstream in(file_, std::ios::binary);
    in.seekg(static_cast<std::streamoff>(from * 4));
    std::vector<std::int16_t> samples(static_cast<std::size_t>(within) * 48 * 2);
    in.read(reinterpret_cast<char*>(samples.data()), static_cast<std::streamsize>(samples.size() * 2));
    const auto loud = std::find_if(samples.begin(), samples.end(),
                                   [](std::int16_t sample) { return std::abs(sample) >= kHeard; });
    if (loud == samples.end()) throw std::runtime_error("nothing was heard");
    return static_cast<double>(loud - samples.begin()) / 2 / 48;
  }

 private:
  std::string file_;
};

void rest(int milliseconds) {
  std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

// What the kernel says a process has used so far.
double processorSecondsOf(pid_t process) {
  std::ifstream stat("/proc/" + std::to_string(process) + "/stat");
  std::string word;
  for (int i = 0; i < 13; ++i) stat >> word;
  double user = 0, system = 0;
  stat >> user >> system;
  return (user + system) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

void waitFor(LiveProgram& game, const std::string& part) {
  while (const auto text = game.readLine()) {
    if (text->find(part) != std::string::npos) return;
  }
  throw std::runtime_error("never heard \"" + part + "\"");
}

/// Presses `key` `times` times, each after `quietMs`, and prints how soon it is heard.
void measureKey(KeyPresser& keys, const Recording& recording, const std::string& key, int times, int quietMs,
                const std::string& what) {
  std::vector<double> delays;
  for (int i = 0; i < times; ++i) {
    const std::uintmax_t pressed = recording.frames();
    keys.press(key);
    rest(100);
    keys.release(key);
    rest(quietMs);
    delays.push_back(recording.millisecondsToSound(pressed, 1000));
  }
  std::cout << "from key to " << what << ", sound server and recorder included, ms p50 "
            << percentile(delays, 0.5) << ", p95 " << percentile(delays, 0.95) << '\n';
}

void measureMenu(const std::string& program) {
  const Recording recording;
  const std::vector<std::string> command = {program,  "--captions", "--speech",
                                            "espeak", "--folder",   VORN_SOUND_FOLDER};
  std::vector<double> starts;
  for (int i = 0; i < 10; ++i) {
    const std::uintmax_t started = recording.frames();
    const LiveProgram game(command);
    rest(2000);
    starts.push_back(recording.millisecondsToSound(started, 2000));
  }
  std::cout << "from the start to the first sound, ms p50 " << percentile(starts, 0.5) << ", p95 "
            << percentile(starts, 0.95) << '\n';

  LiveProgram game(command);
  KeyPresser keys;
  rest(1000);
  const auto cut = Clock::now();
  keys.tap("Space");  // cuts the title sound
  waitFor(game, "version 2");
  std::cout << "from the key that cuts the title to the request of the first speech, ms "
            << 1000 * secondsSince(cut) << '\n';
  rest(5000);
  measureKey(keys, recording, "Up", 20, 3500, "speech");  // long enough to be quiet again
  const double processor = processorSecondsOf(game.process()), wakeups = wakeupsOf(game.process());
  rest(10000);
  std::cout << "processor in the menu, percent of a core "
            << 10 * (processorSecondsOf(game.process()) - processor) << "\nwakeups a second "
            << (wakeupsOf(game.process()) - wakeups) / 10 << '\n';
}

/// Honks at every key, as the car does while it stands.
class Honker : public EventReceiver {
 public:
  explicit Honker(SoundBuffer& horn) : horn_(horn) {}
  void Form_KeyDown(int, int) override { horn_.Play(SoundBuffer::kOnce); }
  void DirectXEvent8_DXCallback(int) override {}

 private:
  SoundBuffer& horn_;
};

void measureHorn() {
  const Recording recording;
  DesktopOptions options;
  const NewFolder folder;
  options.folder = folder.path();
  options.speech = SpeechChoice::kEspeak;
  const auto desktop = makeDesktopPlatform(options);
  const auto device = desktop->createSoundDevice();
  const auto engine = device->CreateSoundBufferFromFile("engineBuffer", "vorn1.wav", 0);
  const auto horn = device->CreateSoundBufferFromFile("hornBuffer", "vorn7.wav", 0);
  engine->SetVolume(-9900);  // it keeps the device at work, too softly to be taken for the horn
  engine->Play(SoundBuffer::kLooping);
  Honker honker(*horn);
  desktop->setEventReceiver(&honker);
  KeyPresser keys;
  std::atomic<bool> isOver{false};
  std::thread player([&] {
    rest(1000);
    measureKey(keys, recording, "Space", 20, 3500, "the horn");
    isOver = true;
  });
  while (!isOver) desktop->yield(1);
  player.join();
}

}  // namespace
}  // namespace vorn

int main(int argc, char** argv) {
  const std::string what = argc > 1 ? argv[1] : "";
  if (what == "race" && argc == 2) {
    vorn::measureRace();
  } else if (what == "menu" && argc == 3) {
    vorn::measureMenu(argv[2]);
  } else if (what == "horn" && argc == 2) {
    vorn::measureHorn();
  } else {
    std::cerr << "usage: desktop_bench race | menu PROGRAM | horn\n";
    return 2;
  }
}
