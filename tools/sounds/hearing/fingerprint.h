/// What tells sounds apart, in numbers: colour (mel cepstrum, its mean and how
/// much it moves), rhythm (how the loudness moves, 1 to 30 times a second) and
/// brightness. Pure.
#pragma once

#include <map>
#include <vector>

#include "synth/signal.h"

namespace vorn::hearing {

using Fingerprint = std::vector<double>;

/// Of a loop at `rate`, which is heard round and round.
Fingerprint fingerprintOf(const synth::Signal& loop, double rate);

/// How much the loudness of a loop moves at the speeds between `edges` (hertz, up
/// to 50): powers, relative to its mean.
std::vector<double> movement(const synth::Signal& loop, double rate, const std::vector<double>& edges);

/// Brings every number of fingerprints to mean 0 and deviation 1 over all that
/// it was made from, so that each counts the same in a distance.
class Scaling {
 public:
  explicit Scaling(const std::vector<Fingerprint>& all);

  Fingerprint scaled(Fingerprint fingerprint) const;

 private:
  Fingerprint mean_, deviation_;
};

/// Root mean square of the differences.
double distance(const Fingerprint& one, const Fingerprint& other);

/// How far apart numbered sounds are, in shares of the median of all pairs.
class Distances {
 public:
  /// Needs two sounds at least.
  explicit Distances(const std::map<int, Fingerprint>& raw);

  double operator()(int one, int other) const;

 private:
  std::map<int, Fingerprint> scaled_;
  double median_ = 1;
};

}  // namespace vorn::hearing
