/// Pictures that stand inside a page: SVG drawings and PNG images as data. Pure.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "synth/filter.h"
#include "synth/signal.h"

namespace vorn::report {

/// Grey levels, row by row from the top, 0 black.
struct GreyImage {
  int width, height;
  std::vector<std::uint8_t> levels;
};

/// An HTML image that holds its own PNG data. Throws `std::runtime_error` where
/// it cannot be encoded.
std::string imageOf(const GreyImage& image, const std::string& alternative);

/// The course of a signal from its start to its end, full scale from top to bottom.
std::string waveform(const synth::Signal& signal);

/// Where a loop ends and starts again: the samples on both sides of the middle,
/// scaled to the strongest of them, or to a fiftieth of the loop's peak where they are quieter.
std::string seam(const synth::Signal& loop, std::size_t framesEachSide);

/// A bar a value under its name, the way from 0 to `full` all across.
struct Bar {
  std::string name;
  double value, full;
};
std::string bars(const std::vector<Bar>& values);

/// Power over time and frequency up to half the rate, over 70 dB.
GreyImage spectrogramImage(synth::Signal signal, double rate, synth::Ends ends);

}  // namespace vorn::report
