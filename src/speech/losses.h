/// What could not be kept in a file. A full disk or a folder that may not be
/// written to costs neither the race nor its results: the loss is noted where it
/// happens and told once a run for each kind, where the player can hear it.
#pragma once

#include <utility>

#include "platform/errors.h"
#include "state/speech_state.h"

namespace vorn {

/// Notes that something of this kind has been lost.
void noteLoss(SpeechState& g, Kept kind);

/// Makes one call that keeps something of `kind`; a `PlatformError` is noted
/// instead of thrown. Returns whether it succeeded.
template <typename Call>
bool keep(SpeechState& g, Kept kind, Call&& call) {
  const bool isKept = carryOn(std::forward<Call>(call));
  if (!isKept) noteLoss(g, kind);
  return isKept;
}

/// Queues a sentence for each kind of which something has been lost for the first time. Does not wait.
void sayLosses(SpeechState& g);

}  // namespace vorn
