/// The handful of procedures through which everything is said, all by the one
/// voice of the state. Texts are Windows-1252 and are passed on unchanged. Order
/// and queue are the voice's own. A failing voice call is a `PlatformError`.
#pragma once

#include <string>

#include "state/game_state.h"

namespace vorn {

/// Says `text` after anything queued; returns when it has been said, without delivering events meanwhile.
void say(SpeechState& g, const std::string& text);
/// Queues `text` and returns at once.
void say2(SpeechState& g, const std::string& text);
/// Silences the voice and empties its queue.
void stopspeech(SpeechState& g);
/// Says the last key's character, quicker than usual; F1 only silences. Does not wait.
void saykey(GameState& g);
/// Complaints of the two control wizards; they wait.
void bk(SpeechState& g);
void smbd(SpeechState& g);
/// The automatic speedometer: says each mark of 25 mph once as `speed` rises
/// past it. Of several passed at once only the highest is heard. Does not wait.
void ass(GameState& g);

/// Reads `text` aloud, yielding, until it has been said or a key is pressed.
/// Returns whether it was said to the end; a key leaves the voice speaking.
bool speakAndWait(GameState& g, const std::string& text);

}  // namespace vorn
