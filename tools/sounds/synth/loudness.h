/// How loud a sound is, by ITU-R BS.1770 (K-weighted LUFS), and making it so.
#pragma once

#include <vector>

#include "contour.h"
#include "filter.h"
#include "signal.h"

namespace vorn::synth {

using Channels = std::vector<Signal>;

constexpr double kSilence = -200;  ///< LUFS of nothing

/// Gated loudness of the whole; a loop is played round for at least 10 s.
double loudnessOfWhole(const Channels& channels, int rate, Ends ends);

/// The loudest 400 ms, with silence around the sound.
double loudestMoment(const Channels& channels, int rate);

/// Loudness of the `window` seconds (at most 0.4) that end at each step of
/// `step` seconds; the first value belongs to `window`.
std::vector<double> loudnessAlong(const Signal& signal, int rate, double window, double step);

/// `signal` with its loudness led along `lufs` (a function of seconds), as
/// measured over windows of 200 ms.
Signal leveled(Signal signal, int rate, const Contour& lufs);

/// Holds every peak under `ceiling` by turning down smoothly around it.
void limitPeaks(Channels& channels, double ceiling, int rate, Ends ends);

/// Evens out loudness: above `thresholdDb` (peak envelope) only 1/`ratio` of an
/// excess remains.
Signal compressed(const Signal& signal, double rate, double thresholdDb, double ratio, double release = 0.08);

}  // namespace vorn::synth
