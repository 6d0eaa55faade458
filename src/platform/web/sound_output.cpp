#include "platform/web/sound_output.h"

#include <emscripten/threading.h>

#include <algorithm>
#include <chrono>

namespace vorn {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kPiece = 128;  ///< frames: what a worklet asks for at once
/// Frames that are kept ready: as few as the machine allows, more after each gap.
constexpr std::uint32_t kFewest = 5 * kPiece, kMost = 24 * kPiece, kMoreAfterGap = 2 * kPiece;
constexpr auto kStillCompiling =
    std::chrono::seconds(8);  ///< gaps of a browser's first seconds are no measure
constexpr double kLongestWaitMs = 10;
constexpr auto kNobodyReadsAfter = std::chrono::milliseconds(200);
constexpr auto kMostCaughtUp = std::chrono::seconds(1);  ///< a machine that slept need not render its night

}  // namespace

SoundOutput::SoundOutput(Mixer& mixer, SoundRing& ring)
    : mixer_(mixer), ring_(ring), worker_([this] { work(); }) {}

SoundOutput::~SoundOutput() {
  isEnding_ = true;
  worker_.join();
}

void SoundOutput::fill(std::uint32_t ahead) {
  while (ring_.written - ring_.read < ahead) {
    std::array<float, std::size_t{2} * kPiece> piece;
    mixer_.render(piece.data(), kPiece);
    const std::uint32_t at = ring_.written % SoundRing::kFrames;  // pieces never straddle the end
    std::copy(piece.begin(), piece.end(), ring_.samples.begin() + std::ptrdiff_t{2} * at);
    ring_.written += kPiece;
  }
}

void SoundOutput::work() {
  std::uint32_t ahead = kFewest, gaps = ring_.gaps, read = ring_.read;
  Clock::time_point lastRead = Clock::now();
  const Clock::time_point begin = lastRead;
  bool isSettled = false;
  while (!isEnding_) {
    mixer_.voice().setDeviceLatency(static_cast<int>(ahead));
    ring_.ahead = ahead;
    fill(ahead);
    emscripten_futex_wait(&ring_.read, read, kLongestWaitMs);
    const Clock::time_point now = Clock::now();
    if (ring_.read != read) {
      read = ring_.read;
      lastRead = now;
      if (!isSettled && now >= begin + kStillCompiling) {
        isSettled = true;
        ahead = kFewest;
      }
      if (ring_.gaps != gaps) {
        gaps = ring_.gaps;
        ahead = std::min(ahead + kMoreAfterGap, kMost);
      }
      continue;
    }
    lastRead = std::max(lastRead, now - kMostCaughtUp);
    for (; lastRead + kNobodyReadsAfter < now;
         lastRead += std::chrono::microseconds(1'000'000LL * kPiece / Mixer::kRate)) {
      std::array<float, std::size_t{2} * kPiece> unheard;
      mixer_.render(unheard.data(), kPiece);
    }
  }
}

}  // namespace vorn
