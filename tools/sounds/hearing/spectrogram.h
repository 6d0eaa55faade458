/// What an ear makes of a sound in each moment: power over frequency. Pure.
#pragma once

#include <vector>

#include "synth/signal.h"

namespace vorn::hearing {

using synth::Signal;

/// Power spectra of overlapping stretches. A signal is taken as a loop: its
/// last stretches run on into its start.
struct Spectrogram {
  double binHertz;                          ///< from one bin to the next
  double hop;                               ///< seconds from one stretch to the next
  std::vector<std::vector<double>> frames;  ///< a tone of amplitude 1 has about power 0.5 in its bins' sum
};

Spectrogram spectrogramOf(const Signal& signal, double rate, double window, double hop);

/// Bands side by side: the first starts at `edges[0]`, each ends where the next starts.
std::vector<double> bandPowers(const std::vector<double>& frame, double binHertz,
                               const std::vector<double>& edges);

/// The edges of third octaves from that around `lowest` to that around `highest` hertz.
std::vector<double> thirdOctaves(double lowest, double highest);

/// The level below which each of `bands` stays for `share` (0..1) of the time, dB below full scale, in
/// moments of 50 ms.
std::vector<double> levelsIn(const std::vector<double>& bands, const Signal& signal, double rate,
                             double share);

/// The value below which `share` (0..1) of `values` lie.
double percentile(std::vector<double> values, double share);

/// Power of what lies between two frequencies, as a share of all.
double shareBetween(const Spectrogram& spectrogram, double lowHertz, double highHertz);

}  // namespace vorn::hearing
