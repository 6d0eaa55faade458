#include "progress.h"

#include <utility>

namespace vorn::sounds {

Progress::Progress(std::FILE* out, std::string label, int total)
    : out_(out), label_(std::move(label)), total_(total) {
  say(0);
}

void Progress::show(int done) {
  constexpr std::chrono::seconds kBetween{10};
  if (std::chrono::steady_clock::now() - said_ >= kBetween) say(done);
}

void Progress::say(int done) {
  std::fprintf(out_, "%s: %d of %d.\n", label_.c_str(), done, total_);
  std::fflush(out_);
  said_ = std::chrono::steady_clock::now();
}

}  // namespace vorn::sounds
