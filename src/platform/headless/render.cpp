#include "platform/headless/render.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <vector>

#include "platform/errors.h"

namespace vorn {
namespace {

class RawSink : public RenderSink {
 public:
  explicit RawSink(const std::string& path) : path_(path) {
    file_ = path == "-" ? stdout : std::fopen(path.c_str(), "wb");
    if (file_ == nullptr) fail();
  }
  ~RawSink() override {
    if (file_ != stdout) std::fclose(file_);
  }
  RawSink(const RawSink&) = delete;
  RawSink& operator=(const RawSink&) = delete;

  void write(std::span<const std::int16_t> samples) override {
    static_assert(std::endian::native == std::endian::little);
    if (std::fwrite(samples.data(), sizeof(std::int16_t), samples.size(), file_) != samples.size()) fail();
  }
  void flush() override {
    if (std::fflush(file_) != 0) fail();
  }

 protected:
  std::FILE* file() { return file_; }

 private:
  [[noreturn]] void fail() const { throw PlatformError("render", path_, std::strerror(errno)); }

  std::string path_;
  std::FILE* file_;
};

/// The samples behind a header, which gets its lengths at the end.
class WavSink : public RawSink {
 public:
  explicit WavSink(const std::string& path) : RawSink(path) { RawSink::write(header(0)); }
  ~WavSink() override {
    if (std::fseek(file(), 0, SEEK_SET) == 0) {
      const std::vector<std::int16_t> words = header(bytes_);
      (void)std::fwrite(words.data(), sizeof(std::int16_t), words.size(), file());
    }
  }
  WavSink(const WavSink&) = delete;
  WavSink& operator=(const WavSink&) = delete;

  void write(std::span<const std::int16_t> samples) override {
    RawSink::write(samples);
    bytes_ += static_cast<std::uint32_t>(samples.size_bytes());
  }

 private:
  static std::vector<std::int16_t> header(std::uint32_t dataBytes) {
    constexpr std::uint32_t kRest = 36, kFormatBytes = 16, kFrameBytes = 4;
    std::vector<std::int16_t> words;
    const auto text = [&](const char* name) {
      for (; *name != 0; name += 2) words.push_back(static_cast<std::int16_t>(name[0] | name[1] << 8));
    };
    const auto number = [&](std::uint32_t value) {
      words.push_back(static_cast<std::int16_t>(value & 0xFFFF));
      words.push_back(static_cast<std::int16_t>(value >> 16));
    };
    text("RIFF");
    number(kRest + dataBytes);
    text("WAVEfmt ");
    number(kFormatBytes);
    number(1 | 2 << 16);  // whole numbers, two channels
    number(Mixer::kRate);
    number(Mixer::kRate * kFrameBytes);
    number(kFrameBytes | 16 << 16);  // bytes of a frame, bits of a sample
    text("data");
    number(dataBytes);
    return words;
  }

  std::uint32_t bytes_ = 0;
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
