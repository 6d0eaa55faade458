// The figures of the real program on a desktop. Run it within
// tests/desktop/with_desktop.sh --record FILE.wav:
//
//   desktop_bench race          a demonstration lap: how late ticks are, processor load, memory
//   desktop_bench menu PROGRAM  keys in the main menu of PROGRAM: how soon speech sounds

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
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

namespace vorn {
namespace {

using Clock = std::chrono::steady_clock;

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

double processorSeconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double percentile(std::vector<double> values, double share) {
  if (values.empty()) throw std::runtime_error("nothing was measured");
  std::sort(values.begin(), values.end());
  return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1))];
}

/// Notes how long after the earliest possible moment each car tick came, and the load meanwhile.
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
    }
    last_ = now;
    lastRaceTicks_ = report.raceTicks;
    processorAtLast_ = processorSeconds();
  }

  void print() const {
    const double lasted = std::chrono::duration<double>(last_ - start_).count();
    std::cout << "ticks " << intervals_.size() << "\ninterval ms p50 " << percentile(intervals_, 0.5)
              << ", p99 " << percentile(intervals_, 0.99) << ", longest " << percentile(intervals_, 1)
              << "\nprocessor while racing, percent of a core "
              << 100 * (processorAtLast_ - processorAtStart_) / lasted << '\n';
  }

 private:
  std::vector<double> intervals_;
  Clock::time_point start_, last_;
  double lastRaceTicks_ = -10;
  double processorAtStart_ = 0, processorAtLast_ = 0;
};

void measureRace() {
  DesktopOptions options;
  options.folder = VORN_SOUND_FOLDER;
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

void measureMenu(const std::string& program) {
  const Recording recording;
  LiveProgram game({program, "--captions", "--speech", "espeak", "--folder", VORN_SOUND_FOLDER});
  KeyPresser keys;
  rest(1000);
  keys.tap("Space");  // cuts the title sound
  const auto cut = Clock::now();
  while (const auto text = game.readLine()) {
    if (text->find("version 2") != std::string::npos) break;
  }
  std::cout << "from the key that cuts the title to the request of the first speech, ms "
            << std::chrono::duration<double, std::milli>(Clock::now() - cut).count() << '\n';
  rest(5000);
  std::vector<double> delays;
  for (int i = 0; i < 20; ++i) {
    const std::uintmax_t pressed = recording.frames();
    keys.press("Up");
    rest(100);
    keys.release("Up");
    rest(3500);  // until it is quiet again
    delays.push_back(recording.millisecondsToSound(pressed, 1000));
  }
  std::cout << "from key to speech, sound server and recorder included, ms p50 " << percentile(delays, 0.5)
            << ", p95 " << percentile(delays, 0.95) << '\n';
  const double before = processorSecondsOf(game.process());
  rest(10000);
  std::cout << "processor in the menu, percent of a core "
            << 10 * (processorSecondsOf(game.process()) - before) << '\n';
}

}  // namespace
}  // namespace vorn

int main(int argc, char** argv) {
  const std::string what = argc > 1 ? argv[1] : "";
  if (what == "race" && argc == 2) {
    vorn::measureRace();
  } else if (what == "menu" && argc == 3) {
    vorn::measureMenu(argv[2]);
  } else {
    std::cerr << "usage: desktop_bench race | menu PROGRAM\n";
    return 2;
  }
}
