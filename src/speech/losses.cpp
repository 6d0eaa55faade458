#include "speech/losses.h"

#include "speech/speech.h"

namespace vorn {
namespace {

constexpr std::array<const char*, kKinds> kSentences = {
    " Sorry, but the log could not be saved. ",
    " Sorry, but the record could not be saved. ",
    " Sorry, but the settings could not be saved. ",
};

}  // namespace

void noteLoss(SpeechState& g, Kept kind) {
  Loss& loss = g.losses[static_cast<std::size_t>(kind)];
  if (loss == Loss::kNone) loss = Loss::kToBeTold;
}

void sayLosses(SpeechState& g) {
  for (std::size_t kind = 0; kind < kKinds; ++kind) {
    if (g.losses[kind] != Loss::kToBeTold) continue;
    g.losses[kind] = Loss::kTold;
    say2(g, kSentences[kind]);
  }
}

}  // namespace vorn
