#include "speech.h"

#include <espeak-ng/speak_lib.h>

#include <algorithm>
#include <stdexcept>

#include "resample.h"

namespace vorn::synth {
namespace {

constexpr int kFastest = 300;       // words a minute; beyond this nobody follows
constexpr int kSpeedStep = 5;       // words a minute
constexpr double kAudible = 0.004;  // of the peak: what is quieter at the ends is silence

int startEngine() {
  const int rate = espeak_Initialize(AUDIO_OUTPUT_SYNCHRONOUS, 0, nullptr, espeakINITIALIZE_DONT_EXIT);
  if (rate <= 0) throw std::runtime_error("the speech engine does not start (package espeak-ng-data?)");
  return rate;
}

int engineRate() {
  static const int rate = startEngine();
  return rate;
}

/// Called by the engine with each stretch of samples; `user_data` is the signal.
int collect(short* samples, int count, espeak_EVENT* events) {
  if (samples == nullptr) return 0;
  auto& signal = *static_cast<Signal*>(events->user_data);
  for (int i = 0; i < count; ++i) signal.push_back(samples[i] / 32768.0);
  return 0;
}

Signal trimmed(const Signal& signal) {
  const double threshold = kAudible * peakOf(signal);
  const auto audible = [threshold](double value) { return std::abs(value) > threshold; };
  const auto first = std::find_if(signal.begin(), signal.end(), audible);
  const auto last = std::find_if(signal.rbegin(), signal.rend(), audible).base();
  return first < last ? Signal(first, last) : Signal();
}

}  // namespace

Signal spoken(const Words& words, double rate) {
  const double from = engineRate();
  espeak_SetSynthCallback(collect);
  if (espeak_SetVoiceByName(words.voice.c_str()) != EE_OK) {
    throw std::runtime_error("no voice is called " + words.voice);
  }
  espeak_SetParameter(espeakRATE, words.wordsPerMinute, 0);
  espeak_SetParameter(espeakPITCH, words.pitch, 0);
  espeak_SetParameter(espeakVOLUME, 90, 0);
  Signal signal;
  if (espeak_Synth(words.text.c_str(), words.text.size() + 1, 0, POS_CHARACTER, 0, espeakCHARS_UTF8, nullptr,
                   &signal) != EE_OK) {
    throw std::runtime_error("the speech engine fails on: " + words.text);
  }
  espeak_Synchronize();
  return resampled(trimmed(signal), from, rate);
}

Signal spokenWithin(Words words, double seconds, double rate) {
  for (;; words.wordsPerMinute += kSpeedStep) {
    Signal signal = spoken(words, rate);
    if (static_cast<double>(signal.size()) <= seconds * rate) return signal;
    if (words.wordsPerMinute >= kFastest) throw std::runtime_error("cannot be said in time: " + words.text);
  }
}

}  // namespace vorn::synth
