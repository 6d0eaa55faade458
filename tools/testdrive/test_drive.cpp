#include "testdrive/test_drive.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>
#include <stdexcept>

#include "demo/virtual_demo.h"
#include "hearing/spectrogram.h"
#include "platform/common/folder_files.h"
#include "platform/mixing/limiter.h"
#include "testdrive/mix_ear.h"
#include "text/settings_file.h"
#include "tracks/catalogue.h"

namespace vorn {
namespace {

using synth::Signal;
namespace fs = std::filesystem;

constexpr double kMixRate = Mixer::kRate;
constexpr std::int64_t kMostHeard = 2000;  // ms of a segment
constexpr std::int64_t kLastMoments = 300;

/// Keeps a trace.
class KeptTrace : public TraceSink {
 public:
  void write(const TraceLine& line) override { lines_.push_back(line); }
  void flush() override {}
  const std::vector<TraceLine>& lines() const { return lines_; }

 private:
  std::vector<TraceLine> lines_;
};

/// Passes a mix on to one listener and, where there is one, another.
class Fork : public RenderSink {
 public:
  Fork(RenderSink& one, RenderSink* other) : one_(one), other_(other) {}
  void write(std::span<const std::int16_t> samples) override {
    one_.write(samples);
    if (other_ != nullptr) other_->write(samples);
  }
  void flush() override {
    one_.flush();
    if (other_ != nullptr) other_->flush();
  }

 private:
  RenderSink& one_;
  RenderSink* other_;
};

/// Decibels by which `sound` at its stronger moments stands above the usual
/// strength of `rest`, in the third octave in which it does so most.
double prominence(const Signal& sound, const Signal& rest) {
  const std::vector<double> thirds = hearing::thirdOctaves(250, 6300);
  const auto up = hearing::levelsIn(thirds, sound, kMixRate, 0.9);
  const auto down = hearing::levelsIn(thirds, rest, kMixRate, 0.5);
  double most = -200;
  for (std::size_t band = 0; band < up.size(); ++band) most = std::max(most, up[band] - down[band]);
  return most;
}

Ear sideOf(const Segment& segment) {
  return segment.pan <= 0 ? Ear::kLeft : Ear::kRight;
}

CueHeard listenTo(const BufferCourse& course, const Recording& recording, const MixEar& mix, Ear nearEar) {
  const std::int64_t middle = (course.from + course.to) / 2, end = std::min(course.to, middle + kMostHeard);
  const Signal alone = playedAlone(course, recording, middle, end);
  const Signal nearMix = mix.heard(nearEar, middle, end);
  const Signal farMix = mix.heard(nearEar == Ear::kLeft ? Ear::kRight : Ear::kLeft, middle, end);
  Signal rest = nearMix;
  for (std::size_t i = 0; i < rest.size(); ++i) rest[i] -= alone[i];
  const std::int64_t last = course.to - kLastMoments;
  return {.file = course.file,
          .nearShare = shareIn(nearMix, alone),
          .farShare = shareIn(farMix, alone),
          .prominence = prominence(alone, rest),
          .lastShare =
              shareIn(mix.heard(nearEar, last, course.to), playedAlone(course, recording, last, course.to))};
}

/// The limiter holds a sum that would be too loud just below its ceiling.
double shareLimited(const MixEar& mix, std::int64_t start, std::int64_t end) {
  constexpr std::int64_t kMoment = 10;  // ms
  constexpr double kHeld = 0.98 * Limiter::kCeiling;
  std::int64_t held = 0, all = 0;
  for (std::int64_t at = start; at < end; at += kMoment, ++all) held += mix.peak(at, at + kMoment) >= kHeld;
  return static_cast<double>(held) / static_cast<double>(all);
}

struct Tick {
  std::int64_t ms;  ///< its end
  double lateralPosition;
};

std::vector<Tick> ticksIn(const std::vector<TraceLine>& trace) {
  std::vector<Tick> ticks;
  for (const TraceLine& line : trace) {
    if (line.at("ev") == "tick") ticks.push_back({line.at("ms"), line.at("lateralPosition")});
  }
  return ticks;
}

/// What the walls are heard of in both ears at one place.
struct WallsAtOnePlace {
  int ticks = 0;
  TwoShares leftEar, rightEar;
};

std::vector<WallsHeard> listenToWalls(const std::vector<TraceLine>& trace, const std::vector<Tick>& ticks,
                                      const MixEar& mix, FolderFiles& files) {
  constexpr std::int64_t kGlide = 12;  // ms until a tick's volumes have been reached
  constexpr int kPlaces = 10;          // lateral units that count as one place
  constexpr int kFewTicks = 10;        // nothing can be said from so few
  const std::int64_t start = ticks.front().ms, end = ticks.back().ms;
  const auto alone = [&](const char* buffer) {
    const BufferCourse course = asLoudAsRecorded(coursesOf(trace, buffer, end).back());
    return playedAlone(course, readWav(course.file, files.readSound(course.file)), start, end);
  };
  const Signal left = alone("wallLeftBuffer"), right = alone("wallRightBuffer");
  const Signal leftEar = mix.heard(Ear::kLeft, start, end), rightEar = mix.heard(Ear::kRight, start, end);
  std::map<int, WallsAtOnePlace> places;
  for (std::size_t i = 1; i < ticks.size(); ++i) {
    const std::int64_t from = ticks[i - 1].ms + kGlide, to = ticks[i].ms;
    if (from >= to) continue;
    const auto during = [&](const Signal& signal) {
      return std::span(signal).subspan(static_cast<std::size_t>((from - start) * Render::kFramesPerMs),
                                       static_cast<std::size_t>((to - from) * Render::kFramesPerMs));
    };
    const auto place = static_cast<int>(std::lround(ticks[i].lateralPosition / kPlaces));
    WallsAtOnePlace& here = places[place * kPlaces];
    ++here.ticks;
    here.leftEar.hear(during(leftEar), during(left), during(right));
    here.rightEar.hear(during(rightEar), during(left), during(right));
  }
  std::vector<WallsHeard> walls;
  for (const auto& [lateralPosition, heard] : places) {
    if (heard.ticks < kFewTicks) continue;
    const double ratio = heard.rightEar.ofOther() / heard.leftEar.ofOne();
    walls.push_back({lateralPosition, heard.ticks, 20 * std::log10(std::abs(ratio))});
  }
  return walls;
}

/// The sounds of a folder beside the options of a player who has chosen an engine.
class SetWithEngine {
 public:
  SetWithEngine(const fs::path& sounds, int engine) {
    std::string name = fs::temp_directory_path() / "testdrive-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("cannot make a folder like " + name);
    path_ = name;
    for (const auto& file : fs::directory_iterator(sounds)) {
      if (file.path().extension() == ".wav") {
        fs::create_symlink(fs::absolute(file.path()), path_ / file.path().filename());
      }
    }
    // Before the engine stand wall sound and switches, all as they are at first.
    std::ofstream(path_ / "vorn1ops.cfg") << settingsText({1, 1, 1, 1, 1, engine});
  }
  ~SetWithEngine() { fs::remove_all(path_); }
  SetWithEngine(const SetWithEngine&) = delete;
  SetWithEngine& operator=(const SetWithEngine&) = delete;
  const fs::path& path() const { return path_; }

 private:
  fs::path path_;
};

}  // namespace

TestDrive driveLap(const Lap& lap, const std::string& folder, RenderSink* recording) {
  const SetWithEngine set(folder, lap.engine);
  MixEar mix;
  Fork listeners(mix, recording);
  KeptTrace trace;
  std::ostringstream captions, diagnostics;
  HeadlessOptions options;
  options.folder = set.path();
  HeadlessConnections connections;
  connections.trace = &trace;
  connections.render = &listeners;
  connections.diagnostics = &diagnostics;
  const VirtualDemo demo = playVirtualDemo(lap.track, options, connections, captions);
  if (demo.exitStatus != 0 || captions.str().find(" Your time for ") == std::string::npos) {
    throw std::runtime_error("the lap was not finished: " + diagnostics.str() + captions.str());
  }

  const std::vector<Tick> ticks = ticksIn(trace.lines());
  const std::int64_t start = ticks.front().ms, end = ticks.back().ms;
  FolderFiles files(folder);
  TestDrive drive{.track = allTracks()[static_cast<std::size_t>(lap.track - 1)],
                  .seconds = static_cast<double>(end - start) / 1000,
                  .cues = {},
                  .walls = listenToWalls(trace.lines(), ticks, mix, files),
                  .peak = mix.peak(start, end),
                  .limited = shareLimited(mix, start, end),
                  .longestPlateau = mix.longestPlateau(start, end)};
  const auto courses = coursesOf(trace.lines(), "warnBuffer", end);
  if (courses.size() != drive.track->segments.size()) throw std::runtime_error("not every segment has a cue");
  for (std::size_t i = 0; i < courses.size(); ++i) {
    const Recording cue = readWav(courses[i].file, files.readSound(courses[i].file));
    drive.cues.push_back(listenTo(courses[i], cue, mix, sideOf(drive.track->segments[i])));
  }
  return drive;
}

/// Measured on all tracks with all engines: shares of 0.92 to 1.08 in its ear (to 1.16 in its last moments,
/// where a short tone has something of the engine's own), up to 0.28 in the other one (0.57 straight
/// ahead), 10 dB and more above the rest; the walls' difference rises by about 4 dB every ten units, by 0.7
/// where the car seldom is; never two samples in a row at the peak.
std::vector<std::string> faultsOf(const TestDrive& drive) {
  constexpr double kShareGoesAstray = 0.15, kLastGoesAstray = 0.2, kHeardAbove = 6;
  constexpr int kPlateau = 3;
  constexpr double kRounding = 1e-4;  // of the limiter and of samples
  std::vector<std::string> faults;
  for (std::size_t i = 0; i < drive.cues.size(); ++i) {
    const CueHeard& cue = drive.cues[i];
    const auto fault = [&, segment = i + 1](const std::string& what) {
      faults.push_back(fmt::format("segment {}, {}: {}", segment, cue.file, what));
    };
    if (std::abs(cue.nearShare - 1) > kShareGoesAstray) {
      fault(fmt::format("{:.2f} of it in its ear", cue.nearShare));
    }
    // A cue straight ahead only leans to a side.
    const double farAtMost = drive.track->segments[i].pan == 0 ? 0.8 : 0.4;
    if (std::abs(cue.farShare) >= farAtMost * cue.nearShare) {
      fault(fmt::format("{:.2f} of it in the other ear", cue.farShare));
    }
    if (cue.prominence < kHeardAbove) fault(fmt::format("only {:.1f} dB above the rest", cue.prominence));
    // At its end it is at its loudest, and the mark of the segment may come on top:
    // the limiter holds the sum then, but must not take the cue away.
    if (std::abs(cue.lastShare - 1) > kLastGoesAstray) {
      fault(fmt::format("{:.2f} of it left at the end", cue.lastShare));
    }
  }
  for (std::size_t i = 1; i < drive.walls.size(); ++i) {
    const WallsHeard &here = drive.walls[i], &before = drive.walls[i - 1];
    if (here.difference > before.difference) continue;
    faults.push_back(fmt::format("walls: {:.1f} dB at {}, but {:.1f} dB at {}", here.difference,
                                 here.lateralPosition, before.difference, before.lateralPosition));
  }
  if (drive.peak > Limiter::kCeiling + kRounding) {
    faults.push_back(fmt::format("a peak of {:.3f}", drive.peak));
  }
  if (drive.longestPlateau > kPlateau) {
    faults.push_back(fmt::format("{} samples in a row cut off", drive.longestPlateau));
  }
  return faults;
}

bool driveAllTracks(const std::string& folder, const std::string& recordings, std::span<const int> engines) {
  fs::create_directories(recordings);
  bool isWell = true;
  for (const int engine : engines) {
    for (int track = 1; track <= static_cast<int>(allTracks().size()); ++track) {
      const std::string file = fmt::format("{}/lap{:02}engine{}.wav", recordings, track, engine);
      const TestDrive drive = driveLap({track, engine}, folder, openRenderSink(file).get());
      const auto weakest = std::ranges::min_element(drive.cues, {}, &CueHeard::prominence);
      std::cout
          << fmt::format(
                 "{}: {}, {:.1f} s; cues {:.0f} dB above the rest and more; peak {:.2f}, limited in {:.1f} % "
                 "of all moments",
                 file, drive.track->name, drive.seconds, weakest->prominence, drive.peak, 100 * drive.limited)
          << std::endl;
      for (const std::string& fault : faultsOf(drive)) {
        std::cerr << file << ": " << fault << '\n';
        isWell = false;
      }
    }
  }
  return isWell;
}

}  // namespace vorn
