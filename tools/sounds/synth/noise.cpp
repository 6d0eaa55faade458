#include "noise.h"

namespace vorn::synth {
namespace {

/// Mixes 64 bits so that neighbouring inputs give unrelated outputs.
std::uint64_t mixed(std::uint64_t value) {
  value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9ULL;
  value = (value ^ (value >> 27)) * 0x94D049BB133111EBULL;
  return value ^ (value >> 31);
}

}  // namespace

std::uint64_t seedOf(std::string_view text) {
  std::uint64_t hash = 0xCBF29CE484222325ULL;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3ULL;
  return mixed(hash);
}

Noise::Noise(std::uint64_t seed, std::string_view purpose) : seed_(mixed(seed ^ seedOf(purpose))) {}

std::uint64_t Noise::bits() {
  return mixed(seed_ + ++counter_ * 0x9E3779B97F4A7C15ULL);
}

double Noise::between(double low, double high) {
  return low + (high - low) * static_cast<double>(bits() >> 11) * 0x1.0p-53;
}

double Noise::next() {
  return between(-1, 1);
}

int Noise::below(int count) {
  return static_cast<int>(between(0, count));
}

bool Noise::chance(double probability) {
  return between(0, 1) < probability;
}

double Noise::triangular() {
  const double first = between(-0.5, 0.5);
  return first + between(-0.5, 0.5);
}

Signal white(Noise& noise, int frames) {
  Signal signal(static_cast<std::size_t>(frames));
  for (double& value : signal) value = noise.next();
  return signal;
}

Signal wander(Noise& noise, int frames, int lowest, int highest) {
  Signal signal(static_cast<std::size_t>(frames));
  const double amplitude = std::sqrt(2.0 / (highest - lowest + 1)) / 1.5;
  for (int harmonic = lowest; harmonic <= highest; ++harmonic) {
    const double phase = noise.between(0, kTwoPi);
    for (int i = 0; i < frames; ++i) {
      signal[static_cast<std::size_t>(i)] += amplitude * std::sin(phase + kTwoPi * harmonic * i / frames);
    }
  }
  return signal;
}

}  // namespace vorn::synth
