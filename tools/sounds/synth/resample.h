/// From one sampling rate to another, without aliases.
#pragma once

#include "filter.h"
#include "signal.h"

namespace vorn::synth {

/// Every second sample of `signal`, after what half the rate cannot carry is
/// taken out. `signal` has an even length.
Signal decimated(const Signal& signal, Ends ends);

/// `signal` (open ends) from `fromRate` to `toRate`.
Signal resampled(const Signal& signal, double fromRate, double toRate);

}  // namespace vorn::synth
