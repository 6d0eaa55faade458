#include "platform/headless/render.h"

#include <sndfile.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "platform/errors.h"

namespace vorn {
namespace {

class WavSink : public RenderSink {
 public:
  explicit WavSink(const std::string& path) : path_(path) {
    SF_INFO info{};
    info.samplerate = Mixer::kRate;
    info.channels = 2;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    file_ = sf_open(path.c_str(), SFM_WRITE, &info);
    if (file_ == nullptr) throw PlatformError("render", path_, sf_strerror(nullptr));
  }
  ~WavSink() override { sf_close(file_); }
  void write(std::span<const std::int16_t> samples) override {
    const auto count = static_cast<sf_count_t>(samples.size());
    if (sf_write_short(file_, samples.data(), count) != count) {
      throw PlatformError("render", path_, sf_strerror(file_));
    }
  }
  void flush() override {}  // its length stands in the header, so nobody can follow it

 private:
  std::string path_;
  SNDFILE* file_;
};

class RawSink : public RenderSink {
 public:
  explicit RawSink(const std::string& path) : path_(path) {
    file_ = path == "-" ? stdout : std::fopen(path.c_str(), "wb");
    if (file_ == nullptr) fail();
  }
  ~RawSink() override {
    if (file_ != stdout) std::fclose(file_);
  }
  void write(std::span<const std::int16_t> samples) override {
    static_assert(std::endian::native == std::endian::little);
    if (std::fwrite(samples.data(), sizeof(std::int16_t), samples.size(), file_) != samples.size()) fail();
  }
  void flush() override {
    if (std::fflush(file_) != 0) fail();
  }

 private:
  [[noreturn]] void fail() const { throw PlatformError("render", path_, std::strerror(errno)); }

  std::string path_;
  std::FILE* file_;
};

std::int16_t sample16(float sample) {
  return static_cast<std::int16_t>(std::clamp(std::lrint(sample * 32767.0F), -32768L, 32767L));
}

}  // namespace

std::unique_ptr<RenderSink> openRenderSink(const std::string& path) {
  if (path.ends_with(".wav")) return std::make_unique<WavSink>(path);
  return std::make_unique<RawSink>(path);
}

void Render::speak(int rate, std::span<const std::int16_t> samples) {
  speechRate_ = rate;
  speech_.insert(speech_.end(), samples.begin(), samples.end());
}

void Render::silence() {
  speech_.clear();
  mixer_.voice().cancel();
}

void Render::feedVoice() {
  std::array<std::int16_t, 1024> piece;
  while (!speech_.empty()) {
    const std::size_t count = std::min(piece.size(), speech_.size());
    std::copy_n(speech_.begin(), count, piece.begin());
    VoiceStream& voice = mixer_.voice();
    const std::size_t taken = voice.write(voice.ticket(), speechRate_, {piece.data(), count});
    if (taken == 0) return;
    speech_.erase(speech_.begin(), speech_.begin() + static_cast<std::ptrdiff_t>(taken));
  }
}

void Render::advance(std::int64_t milliseconds) {
  std::array<float, 2 * kFramesPerMs> mixed;
  std::array<std::int16_t, 2 * kFramesPerMs> samples;
  for (; milliseconds > 0; --milliseconds) {
    feedVoice();
    mixer_.render(mixed.data(), kFramesPerMs);
    std::transform(mixed.begin(), mixed.end(), samples.begin(), sample16);
    sink_.write(samples);
  }
}

}  // namespace vorn
