#include "desktop/recording.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "support/program.h"
#include "support/temporary_folder.h"

namespace vorn {
namespace {

constexpr double kFramesPerSecond = 48000;
constexpr int kBytesPerFrame = 4;

std::vector<std::string> words(const std::string& command) {
  std::istringstream in(command);
  return {std::istream_iterator<std::string>(in), {}};
}

/// Both channels of the recording `file`, in turn.
std::vector<std::int16_t> samplesOf(const std::string& file, double from, double seconds) {
  std::ifstream in(file, std::ios::binary);
  in.seekg(static_cast<std::streamoff>(from * kFramesPerSecond) * kBytesPerFrame);
  std::vector<std::int16_t> samples(static_cast<std::size_t>(seconds * kFramesPerSecond) * 2);
  in.read(reinterpret_cast<char*>(samples.data()), static_cast<std::streamsize>(samples.size() * 2));
  samples.resize(static_cast<std::size_t>(in.gcount()) / 2);
  return samples;
}

/// Root mean square of each sample's difference from the one `back` places before it, 0 .. 1; of the samples
/// themselves where `back` is 0.
double rootMeanSquare(const std::vector<std::int16_t>& samples, std::size_t back) {
  double sum = 0;
  for (std::size_t i = back; i < samples.size(); ++i) {
    const int step = back == 0 ? samples[i] : samples[i] - samples[i - back];
    sum += step / 32768.0 * (step / 32768.0);
  }
  return std::sqrt(sum / static_cast<double>(samples.size() - back));
}

}  // namespace

Recording::Recording() {
  const char* const file = std::getenv("VORN_RECORDING");
  if (!file) throw std::runtime_error("nobody records");
  file_ = file;
}

double Recording::now() const {
  return static_cast<double>(std::filesystem::file_size(file_)) / kBytesPerFrame / kFramesPerSecond;
}

double Recording::level(double from, double seconds) const {
  return rootMeanSquare(samplesOf(file_, from, seconds), 0);
}

double Recording::steepness(double from, double seconds) const {
  constexpr std::size_t kChannels = 2;
  return rootMeanSquare(samplesOf(file_, from, seconds), kChannels);
}

double Recording::millisecondsToSound(double from) const {
  constexpr int kHeard = 100;  // of 32768
  const auto samples = samplesOf(file_, from, now() - from);
  const auto sound = std::find_if(samples.begin(), samples.end(),
                                  [](std::int16_t sample) { return std::abs(sample) >= kHeard; });
  return static_cast<double>(sound - samples.begin()) / 2 / kFramesPerSecond * 1000;
}

double Recording::secondsOfSound(double from) const {
  constexpr std::size_t kPiece = 2 * 480;  // samples of ten milliseconds
  constexpr int kHeard = 30;               // of 32768
  const auto samples = samplesOf(file_, from, now() - from);
  int heard = 0;
  for (std::size_t at = 0; at + kPiece <= samples.size(); at += kPiece) {
    const auto piece = samples.begin() + static_cast<std::ptrdiff_t>(at);
    heard +=
        std::any_of(piece, piece + kPiece, [](std::int16_t sample) { return std::abs(sample) >= kHeard; });
  }
  return heard * 0.01;
}

bool Recording::isUnderstood(const std::string& sentences, double seconds,
                             const std::function<double()>& say) const {
  const std::string expected = sentences.substr(0, sentences.find(" |"));
  for (int attempt = 0; attempt < 3; ++attempt) {
    const double start = say();
    const std::string heard = recognise(start, std::min(seconds, now() - start), sentences);
    if (heard.rfind(expected, 0) == 0) return true;
    std::cout << "understood: " << heard << std::endl;
  }
  return false;
}

std::string Recording::recognise(double from, double seconds, const std::string& sentences) const {
  const TemporaryFolder folder;
  const std::string wav = folder.path() / "said.wav";
  const std::string grammar = folder.path() / "said.jsgf";
  folder.write("said.jsgf", "#JSGF V1.0;\ngrammar said;\npublic <said> = " + sentences + ";\n");
  const Finished cut = runProgram(words("sox -t raw -r 48000 -c 2 -e signed -b 16 " + file_ +
                                        " -r 16000 -c 1 " + wav + " trim " + std::to_string(from) + " " +
                                        std::to_string(seconds) + " norm -6 pad 0.3 0.4"));
  if (cut.exitStatus != 0) return cut.errors;
  const Finished heard = runProgram(words("pocketsphinx_continuous -infile " + wav + " -jsgf " + grammar +
                                          " -beam 1e-80 -wbeam 1e-60 -pbeam 1e-80 -logfn /dev/null"));
  return heard.output;
}

}  // namespace vorn
