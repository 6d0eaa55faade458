/// The voice of a headless session: speaks into the session's queue and its trace.
#pragma once

#include "platform/headless/world.h"

namespace vorn {

class VirtualVoice : public Voice {
 public:
  explicit VirtualVoice(World& world);
  ~VirtualVoice() override;  ///< silences it
  std::vector<std::string> GetVoices() override { return world_.speech.voices(); }

 private:
  void doSetVoice(int index) override;
  void doSetVolume(int volume) override;
  void doSetRate(int rate) override;
  /// A synchronous text lets the session's time pass; no event is delivered meanwhile.
  void doSpeak(const std::string& text, int flags) override;
  int doRunningState() override;

  World& world_;
  int rate_ = 0;
  int volume_ = 100;
  int voice_ = 0;
};

}  // namespace vorn
