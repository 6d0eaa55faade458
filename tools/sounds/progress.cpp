#include "progress.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

namespace vorn::sounds {
namespace {

constexpr int kPlainLines = 4;  // lines for the whole job where there is no terminal
constexpr int kWidestBar = 40;
constexpr int kNarrowestBar = 5;

int columnsOf(std::FILE* out) {
  winsize size{};
  return ioctl(fileno(out), TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

}  // namespace

Progress::Progress(std::FILE* out, std::string label, int total)
    : out_(out), label_(std::move(label)), total_(total), terminal_(isatty(fileno(out)) != 0) {}

void Progress::show(int done) {
  const int parts = terminal_ ? 100 : kPlainLines;
  const int part = parts * done / total_;
  if (part == shownPart_) return;
  shownPart_ = part;
  if (terminal_) {
    drawBar(done);
  } else {
    std::fprintf(out_, "%s: %d of %d\n", label_.c_str(), done, total_);
  }
  std::fflush(out_);
}

void Progress::drawBar(int done) {
  const std::string figures = std::to_string(done) + " of " + std::to_string(total_);
  const int beside = static_cast<int>(label_.size() + figures.size()) + 6;
  const int width = std::min(kWidestBar, columnsOf(out_) - beside);
  if (width < kNarrowestBar) {
    std::fprintf(out_, "\r%s", figures.c_str());
    return;
  }
  const int filled = width * done / total_;
  const std::string bar = std::string(static_cast<std::size_t>(filled), '#') +
                          std::string(static_cast<std::size_t>(width - filled), '.');
  std::fprintf(out_, "\r%s [%s] %s", label_.c_str(), bar.c_str(), figures.c_str());
}

void Progress::end() {
  if (terminal_ && shownPart_ >= 0) std::fputc('\n', out_);
  std::fflush(out_);
}

}  // namespace vorn::sounds
