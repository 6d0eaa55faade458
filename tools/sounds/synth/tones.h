/// Pitched sources. Each returns `seconds` of signal starting at phase 0, with
/// the pitch following `hertz` and the loudness `amplitude`.
#pragma once

#include <vector>

#include "contour.h"
#include "filter.h"
#include "noise.h"
#include "signal.h"

namespace vorn::synth {

/// A pure sine.
Signal sine(double rate, double seconds, const Contour& hertz, const Contour& amplitude = 1.0);

/// A sum of partials: `partials[k]` is the amplitude of the (k + 1)th. Partials
/// that come near half the rate are left out.
Signal harmonics(double rate, double seconds, const Contour& hertz, const std::vector<double>& partials,
                 const Contour& amplitude = 1.0);

/// A saw wave free of audible aliases.
Signal saw(double rate, double seconds, const Contour& hertz, const Contour& amplitude = 1.0);

/// A train of pulses, each a raised cosine of `width` (share of the period).
Signal pulses(double rate, double seconds, const Contour& hertz, double width,
              const Contour& amplitude = 1.0);

/// A howl: a sine whose pitch trembles at random by about `spread` (a share of
/// it). It is as narrow as filtered noise but keeps its loudness. With
/// `Ends::kMeeting` it comes round to its own start.
Signal howl(Noise& noise, double rate, double seconds, const Contour& hertz, double spread,
            Ends ends = Ends::kOpen);

/// `count` partials falling by `decibelsPerOctave` (a negative number).
std::vector<double> falling(int count, double decibelsPerOctave);

/// `signal` times `gain` at each moment.
Signal shaped(Signal signal, double rate, const Contour& gain);

/// The frequency `semitones` above A4 = 440 Hz.
double noteHertz(double semitones);

}  // namespace vorn::synth
