#include "picture.h"

#include <png.h>

#include <fmt/format.h>
#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>
#include <string_view>

#include "hearing/spectrogram.h"

namespace vorn::report {
namespace {

constexpr int kWidth = 300, kHeight = 80;
constexpr double kShownDb = 70;
constexpr double kLeastShown = 0.02;  // share of a loop's peak that fills the picture of its seam

std::string base64(const std::vector<std::uint8_t>& bytes) {
  constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
    unsigned three = 0;
    for (std::size_t k = 0; k < 3; ++k) three = three << 8 | (k < count ? bytes[i + k] : 0U);
    for (std::size_t k = 0; k < 4; ++k) text += k <= count ? kDigits[three >> (18 - 6 * k) & 63] : '=';
  }
  return text;
}

std::string drawing(std::string_view kind, const std::string& content) {
  return fmt::format("<svg class=\"{}\" viewBox=\"0 0 {} {}\" width=\"{}\" height=\"{}\">{}</svg>", kind,
                     kWidth, kHeight, kWidth, kHeight, content);
}

double heightOf(double sample) {
  return kHeight / 2.0 * (1 - sample);
}

}  // namespace

std::string imageOf(const GreyImage& image, const std::string& alternative) {
  png_image png{};
  png.version = PNG_IMAGE_VERSION;
  png.width = static_cast<png_uint_32>(image.width);
  png.height = static_cast<png_uint_32>(image.height);
  png.format = PNG_FORMAT_GRAY;
  png_alloc_size_t size = 0;
  std::vector<std::uint8_t> bytes;
  const auto encode = [&](void* to) {
    if (png_image_write_to_memory(&png, to, &size, 0, image.levels.data(), image.width, nullptr) == 0) {
      throw std::runtime_error(std::string("a picture cannot be encoded: ") + png.message);
    }
  };
  encode(nullptr);
  bytes.resize(size);
  encode(bytes.data());
  bytes.resize(size);
  return fmt::format("<img alt=\"{}\" width=\"{}\" height=\"{}\" src=\"data:image/png;base64,{}\">",
                     alternative, image.width, image.height, base64(bytes));
}

std::string waveform(const synth::Signal& signal) {
  std::string path;
  for (std::size_t column = 0; column < kWidth; ++column) {
    const auto from = signal.begin() + static_cast<std::ptrdiff_t>(column * signal.size() / kWidth);
    const auto to = signal.begin() + static_cast<std::ptrdiff_t>((column + 1) * signal.size() / kWidth);
    const auto [lowest, highest] = std::minmax_element(from, std::max(to, from + 1));
    path += fmt::format("M{} {:.1f}V{:.1f}", column, heightOf(*highest), heightOf(*lowest) + 0.5);
  }
  return drawing("waveform", "<path d=\"" + path + "\"/>");
}

std::string seam(const synth::Signal& loop, std::size_t framesEachSide) {
  const std::size_t side = std::min(framesEachSide, loop.size());
  synth::Signal around(loop.end() - static_cast<std::ptrdiff_t>(side), loop.end());
  around.insert(around.end(), loop.begin(), loop.begin() + static_cast<std::ptrdiff_t>(side));
  const double highest = std::max({1e-9, synth::peakOf(around), kLeastShown * synth::peakOf(loop)});
  std::string points;
  for (std::size_t i = 0; i < around.size(); ++i) {
    points +=
        fmt::format("{:.1f},{:.1f} ", kWidth * static_cast<double>(i) / static_cast<double>(around.size()),
                    heightOf(0.95 * around[i] / highest));
  }
  return drawing(
      "seam", fmt::format("<path d=\"M{0} 0V{1}\"/><polyline points=\"{2}\"/>", kWidth / 2, kHeight, points));
}

std::string bars(const std::vector<Bar>& values) {
  const double height = static_cast<double>(kHeight) / static_cast<double>(values.size());
  std::string content;
  for (std::size_t i = 0; i < values.size(); ++i) {
    const double top = height * static_cast<double>(i),
                 share = std::clamp(values[i].value / values[i].full, 0.0, 1.0);
    content += fmt::format(
        "<rect y=\"{:.1f}\" width=\"{:.1f}\" height=\"{:.1f}\"/><text x=\"3\" y=\"{:.1f}\">{}</text>",
        top + 1, kWidth * share, height - 2, top + 0.75 * height, values[i].name);
  }
  return drawing("figures", content);
}

GreyImage spectrogramImage(synth::Signal signal, double rate, synth::Ends ends) {
  constexpr double kWindow = 0.02;  // seconds
  const double hop = static_cast<double>(signal.size()) / rate / kWidth;
  // After its end there is silence, not its start again.
  if (ends == synth::Ends::kOpen) signal.resize(signal.size() + static_cast<std::size_t>(kWindow * rate) + 1);
  const auto spectrogram = hearing::spectrogramOf(signal, rate, kWindow, hop);
  double loudest = 1e-12;
  for (const auto& frame : spectrogram.frames) loudest = std::max(loudest, std::ranges::max(frame));
  GreyImage image{kWidth, kHeight, std::vector<std::uint8_t>(kWidth * kHeight)};
  for (int column = 0; column < kWidth; ++column) {
    const auto& frame =
        spectrogram.frames[std::min(static_cast<std::size_t>(column), spectrogram.frames.size() - 1)];
    for (int row = 0; row < kHeight; ++row) {
      const auto bin = frame.size() * static_cast<std::size_t>(kHeight - 1 - row) / kHeight;
      const auto next = std::max(bin + 1, frame.size() * static_cast<std::size_t>(kHeight - row) / kHeight);
      const double power = *std::max_element(frame.begin() + static_cast<std::ptrdiff_t>(bin),
                                             frame.begin() + static_cast<std::ptrdiff_t>(next));
      const double db = 10 * std::log10(power / loudest + 1e-20);
      image.levels[static_cast<std::size_t>(row * kWidth + column)] =
          static_cast<std::uint8_t>(255 * std::clamp(-db / kShownDb, 0.0, 1.0));
    }
  }
  return image;
}

}  // namespace vorn::report
