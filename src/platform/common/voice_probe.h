/// Tries the embedded synthesiser before the game depends on it.
#pragma once

#include <string>

namespace vorn {

/// Has another process say a word with the synthesiser's data, for damaged data
/// bring the library down instead of failing. Empty where it lived; else what to
/// tell the player. Waits for it, some milliseconds, ten seconds of processor time at most. To be
/// called while the process has no second thread.
std::string damageOfVoiceData();

}  // namespace vorn
