// A speech recogniser has to understand the spoken sounds word for word, among
// sentences that are nearly the same.

#include <gtest/gtest.h>

#include <cstdio>
#include <sndfile.hh>
#include <string>

#include "recipes/pit_box.h"
#include "support/temporary_folder.h"
#include "support_sounds.h"
#include "synth/resample.h"

namespace vorn::sounds {
namespace {

using synth::Signal;

constexpr int kRecogniserRate = 16000;
constexpr const char* kGrammar = R"(#JSGF V1.0;
grammar said;
public <said> = start your engine | stop your engine | start your race | gas then shift up |
  give it gas and shift up | gas then shift down | pit road fifty miles an hour |
  pit road sixty miles an hour | pit road fifteen miles an hour |
  your pit box in five four three two one | your pit box in four | five four three two one;
)";

class Recogniser {
 public:
  Recogniser() { folder_.write("said.jsgf", kGrammar); }

  /// The sentence it hears in `words` (at its own rate).
  std::string hear(Signal words) const {
    words = synth::withPeak(std::move(words), 0.5);
    const Signal silence(static_cast<std::size_t>(0.4 * kRecogniserRate));
    words.insert(words.begin(), silence.begin(), silence.end());
    words.insert(words.end(), silence.begin(), silence.end());
    const std::string file = folder_.path() / "words.wav";
    SndfileHandle(file, SFM_WRITE, SF_FORMAT_WAV | SF_FORMAT_PCM_16, 1, kRecogniserRate)
        .write(words.data(), static_cast<sf_count_t>(words.size()));
    const std::string command = "pocketsphinx_continuous -infile " + file + " -jsgf " +
                                (folder_.path() / "said.jsgf").string() +
                                " -beam 1e-80 -wbeam 1e-60 -pbeam 1e-80 -logfn /dev/null";
    std::FILE* pipe = popen(command.c_str(), "r");
    std::string said;
    for (int c; (c = std::fgetc(pipe)) != EOF;) said += static_cast<char>(c == '\n' ? ' ' : c);
    pclose(pipe);
    while (said.ends_with(' ')) said.pop_back();
    return said;
  }

 private:
  TemporaryFolder folder_;
};

Signal atRecogniserRate(std::string_view name) {
  const test::Heard heard = test::hearSound(name);
  return synth::resampled(heard.signal(), heard.rate, kRecogniserRate);
}

Signal cut(const Signal& sound, double from, double to) {
  const auto place = [&sound](double seconds) {
    return sound.begin() + static_cast<std::ptrdiff_t>(seconds * kRecogniserRate);
  };
  Signal words(place(from), place(to));
  while (!words.empty() && std::abs(words.back()) < 0.003) words.pop_back();
  return words;
}

/// What a listener has of the box voice at `mph`, joined: recognisers do not take
/// words that stand seconds apart.
Signal boxVoiceAt(double mph) {
  const test::Heard heard = test::hearSound("vorn1t73");
  const double rate = 8000 + 281 * mph, faster = rate / heard.rate;
  const Signal sound = synth::resampled(heard.signal(), rate, kRecogniserRate);
  Signal words = cut(sound, kPitBoxCall / faster, (kPitBoxNumbers.front().seconds - 0.05) / faster);
  for (const PitBoxNumber& number : kPitBoxNumbers) {
    words.insert(words.end(), static_cast<std::size_t>(0.12 * kRecogniserRate), 0.0);
    const Signal word = cut(sound, (number.seconds + kPitBoxBlip) / faster, (number.seconds + 0.52) / faster);
    words.insert(words.end(), word.begin(), word.end());
  }
  return words;
}

TEST(SpeechFiles, AreUnderstood) {
  const Recogniser recogniser;
  EXPECT_EQ(recogniser.hear(atRecogniserRate("vorn12")), "start your engine");
  EXPECT_EQ(recogniser.hear(atRecogniserRate("vorn13")), "gas then shift up");
  EXPECT_EQ(recogniser.hear(atRecogniserRate("vorn1t72")), "pit road fifty miles an hour");
}

TEST(SpeechFiles, CountDownToThePitBoxAtAnySpeedADriverComesWith) {
  const Recogniser recogniser;
  for (const double mph : {40.0, 50.0, 60.0}) {
    EXPECT_EQ(recogniser.hear(boxVoiceAt(mph)), "your pit box in five four three two one") << mph;
  }
}

}  // namespace
}  // namespace vorn::sounds
