#include "platform/headless/virtual_voice.h"

#include "platform/common/windows1252.h"

namespace vorn {

VirtualVoice::VirtualVoice(World& world) : world_(world) {
  world_.trace.voice("create");
}

VirtualVoice::~VirtualVoice() {
  world_.speech.clear();
  world_.trace.voice("release");
}

void VirtualVoice::doSetVoice(int index) {
  voice_ = index;
  world_.trace.voice("Voice", index);
}

void VirtualVoice::doSetVolume(int volume) {
  volume_ = volume;
  world_.trace.voice("Volume", volume);
}

void VirtualVoice::doSetRate(int rate) {
  rate_ = rate;
  world_.trace.voice("Rate", rate);
}

void VirtualVoice::doSpeak(const std::string& text, int flags) {
  world_.trace.speak(text, flags, rate_, volume_, voice_);
  if (!text.empty()) world_.requestedTexts.push_back(utf8FromWindows1252(text));
  if (flags < speak_flags::kSynchronous || flags > speak_flags::kPurge) {
    throw PlatformError("Speak", std::to_string(flags), "no such flags");
  }
  if (GetVoices().empty()) throw PlatformError("Speak", text, "no voice is installed");

  const bool isPurge = flags == speak_flags::kPurge;
  if (isPurge) world_.speech.clear();
  if (!isPurge || !text.empty()) world_.speech.add({text, rate_, volume_, voice_});
  if (flags == speak_flags::kSynchronous) world_.clock.advanceTo(world_.speech.idleFrom());
}

int VirtualVoice::doRunningState() {
  constexpr int kDone = 1;
  return world_.speech.isIdle() ? kDone : kSpeaking;
}

}  // namespace vorn
