/// Sound buffers as the game knows them: one recording each, with volume, pan,
/// frequency and a byte position. No call waits. A value outside its range is a
/// failed call (`PlatformError`) on every backend: the checks live here.
#pragma once

#include <memory>
#include <span>
#include <string>

namespace vorn {

/// One recording in memory. Destroying it silences it.
class SoundBuffer {
 public:
  static constexpr int kPlaying = 1;  ///< the status of a sounding buffer
  static constexpr int kOnce = 0;     ///< how to play
  static constexpr int kLooping = 1;

  virtual ~SoundBuffer() = default;
  SoundBuffer(const SoundBuffer&) = delete;
  SoundBuffer& operator=(const SoundBuffer&) = delete;

  /// Starts, 0 once or 1 looping. A playing buffer is not restarted, but may
  /// change between once and looping. One that ran to its end stands at 0 again.
  void Play(int flags);
  /// Stops and keeps the position.
  void Stop();
  void SetVolume(int hundredthsOfDecibel);  ///< -10000 (silent) .. 0
  void SetPan(int hundredthsOfDecibel);     ///< -10000 (left) .. 10000 (right); attenuates the far side only
  void SetFrequency(int hertz);             ///< 100 .. 100000
  void SetCurrentPosition(int byteInTheData);      ///< 0 .. data bytes - 1, taken down to the whole frame
  int GetStatus() { return doGetStatus(); }        ///< `kPlaying` while sounding, else 0
  int GetFrequency() { return doGetFrequency(); }  ///< hertz; the file's own until one is set
  int dataBytes() const { return doDataBytes(); }  ///< length of the recording in its file's bytes

 protected:
  SoundBuffer() = default;

 private:
  virtual void doPlay(bool looping) = 0;
  virtual void doStop() = 0;
  virtual void doSetVolume(int hundredthsOfDecibel) = 0;
  virtual void doSetPan(int hundredthsOfDecibel) = 0;
  virtual void doSetFrequency(int hertz) = 0;
  virtual void doSetCurrentPosition(int byteInTheData) = 0;
  virtual int doGetStatus() = 0;
  virtual int doGetFrequency() = 0;
  virtual int doDataBytes() const = 0;
};

/// The one sound output.
class SoundDevice {
 public:
  virtual ~SoundDevice() = default;
  SoundDevice(const SoundDevice&) = delete;
  SoundDevice& operator=(const SoundDevice&) = delete;

  virtual void SetCooperativeLevel(int level) = 0;  ///< 2: priority
  /// Reads the WAV file `fileName` of the working folder into a new buffer.
  /// `slot` is the state field that will hold it; traces name the buffer by it.
  /// Throws `PlatformError` where the file is missing or cannot be read.
  virtual std::unique_ptr<SoundBuffer> CreateSoundBufferFromFile(const std::string& slot,
                                                                 const std::string& fileName, int flags) = 0;
  /// A new buffer of sound that was made on the spot: mono `samples` of -1 .. 1, at
  /// least one, `hertz` of them a second (100 .. 100000). Traces call it `name`.
  virtual std::unique_ptr<SoundBuffer> CreateSoundBufferFromSamples(const std::string& slot,
                                                                    const std::string& name,
                                                                    std::span<const float> samples,
                                                                    int hertz) = 0;

 protected:
  SoundDevice() = default;
};

}  // namespace vorn
