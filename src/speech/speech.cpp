#include "speech/speech.h"

#include "state/key_names.h"
#include "text/numbers.h"

namespace vorn {
namespace {

constexpr int kEchoRateAboveUsual = 5;
constexpr int kSpeedMarks = 10;
constexpr int kMilesBetweenMarks = 25;

bool isSpeaking(SpeechState& g) {
  return g.speechVoice->RunningState() == Voice::kSpeaking;
}

}  // namespace

void say(SpeechState& g, const std::string& text) {
  g.speechVoice->Speak(text, speak_flags::kSynchronous);
}

void say2(SpeechState& g, const std::string& text) {
  g.speechVoice->Speak(text, speak_flags::kQueue);
}

void stopspeech(SpeechState& g) {
  g.speechVoice->Speak("", speak_flags::kPurge);
}

void saykey(GameState& g) {
  g.speechVoice->setRate(saturatedSum(g.speechRate, kEchoRateAboveUsual));
  stopspeech(g);
  if (g.lastKeyCode != key::kF1) say2(g, g.lastKeyChar);
  g.speechVoice->setRate(g.speechRate);
}

void bk(SpeechState& g) {
  say(g, " I'm sorry, but you have already used that key. Please try again.");
}

void smbd(SpeechState& g) {
  say(g,
      " I'm sorry, but you have already used that button."
      " You may press the escape key to end the joystick configuration.");
}

void ass(GameState& g) {
  if (g.autoSpeedometer == kOff) return;
  for (int k = 1; k <= kSpeedMarks; ++k) {
    if (g.speed < k * kMilesBetweenMarks) g.speedMarkSaid[k] = 0;
  }
  for (int k = 1; k <= kSpeedMarks; ++k) {
    const int mark = k * kMilesBetweenMarks;
    if (g.speed > mark && g.speedMarkSaid[k] == 0) {
      g.speedMarkSaid[k] = 1;
      stopspeech(g);
      say2(g, std::to_string(mark));
    }
  }
}

bool speakAndWait(GameState& g, const std::string& text) {
  say2(g, text);
  // A very short text may be over before the first look; one look each yield serves both.
  do {
    g.platform.yield();
  } while (isSpeaking(g) && g.lastKeyCode.empty());
  return g.lastKeyCode.empty();
}

}  // namespace vorn
