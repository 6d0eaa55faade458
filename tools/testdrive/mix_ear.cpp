#include "testdrive/mix_ear.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>

#include "platform/mixing/mixer.h"

namespace vorn {
namespace {

constexpr std::int64_t kFramesPerMs = Render::kFramesPerMs;
constexpr double kFullScale = 32767;

void tell(SoundBuffer& buffer, const TraceLine& line) {
  const std::string op = line.at("op");
  if (op == "Stop") buffer.Stop();
  if (line.at("value").is_null() || line.at("value").is_string()) return;
  const int value = line.at("value");
  if (op == "Play") buffer.Play(value);
  if (op == "SetVolume") buffer.SetVolume(value);
  if (op == "SetFrequency") buffer.SetFrequency(value);
  if (op == "SetCurrentPosition") buffer.SetCurrentPosition(value);
}

}  // namespace

synth::Signal MixEar::heard(Ear ear, std::int64_t from, std::int64_t to) const {
  const auto end = std::min(static_cast<std::int64_t>(samples_.size() / 2), to * kFramesPerMs);
  synth::Signal signal;
  for (std::int64_t frame = from * kFramesPerMs; frame < end; ++frame) {
    signal.push_back(samples_[static_cast<std::size_t>(2 * frame + (ear == Ear::kRight))] / kFullScale);
  }
  return signal;
}

double MixEar::peak(std::int64_t from, std::int64_t to) const {
  const auto end = std::min(static_cast<std::int64_t>(samples_.size()), 2 * to * kFramesPerMs);
  int highest = 0;
  for (std::int64_t i = 2 * from * kFramesPerMs; i < end; ++i) {
    highest = std::max(highest, std::abs(int{samples_[static_cast<std::size_t>(i)]}));
  }
  return highest / kFullScale;
}

int MixEar::longestPlateau(std::int64_t from, std::int64_t to) const {
  int longest = 0;
  for (const Ear ear : {Ear::kLeft, Ear::kRight}) {
    const synth::Signal signal = heard(ear, from, to);
    const double highest = synth::peakOf(signal);
    int run = 0;
    for (const double sample : signal) {
      run = std::abs(sample) == highest ? run + 1 : 0;
      longest = std::max(longest, run);
    }
  }
  return longest;
}

std::int64_t MixEar::duration() const {
  return static_cast<std::int64_t>(samples_.size()) / 2 / kFramesPerMs;
}

std::vector<BufferCourse> coursesOf(const std::vector<TraceLine>& trace, const std::string& buffer,
                                    std::int64_t end) {
  std::vector<BufferCourse> courses;
  for (const TraceLine& line : trace) {
    if (line.at("ev") != "sound" || line.at("buffer") != buffer) continue;
    const std::int64_t ms = line.at("ms");
    if (line.at("op") == "create") {
      if (!courses.empty()) courses.back().to = ms;
      courses.push_back({line.at("value"), ms, end, {}});
    }
    if (!courses.empty()) courses.back().lines.push_back(line);
  }
  return courses;
}

BufferCourse asLoudAsRecorded(BufferCourse course) {
  std::erase_if(course.lines, [](const TraceLine& line) { return line.at("op") == "SetVolume"; });
  return course;
}

synth::Signal playedAlone(const BufferCourse& course, const Recording& recording, std::int64_t from,
                          std::int64_t to) {
  Mixer mixer;
  const auto buffer = mixer.createBuffer(std::make_shared<const Recording>(recording));
  synth::Signal signal;
  std::array<float, 2 * kFramesPerMs> frames{};
  auto line = course.lines.begin();
  for (std::int64_t ms = course.from; ms < to; ++ms) {
    for (; line != course.lines.end() && line->at("ms") <= ms; ++line) tell(*buffer, *line);
    mixer.render(frames.data(), kFramesPerMs);
    for (std::size_t i = 0; ms >= from && i < frames.size(); i += 2) signal.push_back(frames[i]);
  }
  return signal;
}

void TwoShares::hear(std::span<const double> whole, std::span<const double> one,
                     std::span<const double> other) {
  for (std::size_t i = 0; i < whole.size(); ++i) {
    oneOne_ += one[i] * one[i];
    oneOther_ += one[i] * other[i];
    otherOther_ += other[i] * other[i];
    oneWhole_ += one[i] * whole[i];
    otherWhole_ += other[i] * whole[i];
  }
}

double shareIn(const synth::Signal& whole, const synth::Signal& part) {
  const double power = std::inner_product(part.begin(), part.end(), part.begin(), 0.0);
  return std::inner_product(part.begin(), part.end(), whole.begin(), 0.0) / power;
}

}  // namespace vorn
