/// The speaking voice as the game knows it.
#pragma once

#include <string>
#include <vector>

namespace vorn {

/// How a `Speak` request is carried out; the game uses exactly these values.
namespace speak_flags {
inline constexpr int kSynchronous = 0;  ///< returns when everything queued, this text included, has been said
inline constexpr int kQueue = 1;        ///< returns at once; the text follows what is being said
inline constexpr int kPurge = 2;        ///< discards what is being said and queued, then says the text
}  // namespace speak_flags

/// One voice of the speech service. Rate, volume and voice are taken by each
/// `Speak` at the call, so changing them never touches what is already queued.
class Voice {
 public:
  static constexpr int kSpeaking = 2;  ///< the running state while anything is queued or being said

  virtual ~Voice() = default;
  Voice(const Voice&) = delete;
  Voice& operator=(const Voice&) = delete;

  /// The names of the installed voices, in the order of their indexes.
  virtual std::vector<std::string> GetVoices() = 0;
  void setVoice(int index);    ///< 0 .. number of voices - 1, else `PlatformError`
  void setVolume(int volume);  ///< 0 .. 100, else `PlatformError`
  /// Any value: the adapter clamps it to what its service can do. The speed goes
  /// by 3^(rate / 10); 0 is the voice's normal speed.
  void setRate(int rate) { doSetRate(rate); }
  /// Says Windows-1252 `text`. Waits only with `kSynchronous`, and then without
  /// delivering any event.
  void Speak(const std::string& text, int flags) { doSpeak(text, flags); }
  int RunningState() { return doRunningState(); }  ///< `kSpeaking` from a request on until idle, else 1

 protected:
  Voice() = default;

 private:
  virtual void doSetVoice(int index) = 0;
  virtual void doSetVolume(int volume) = 0;
  virtual void doSetRate(int rate) = 0;
  virtual void doSpeak(const std::string& text, int flags) = 0;
  virtual int doRunningState() = 0;
};

}  // namespace vorn
