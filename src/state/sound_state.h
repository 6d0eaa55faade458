/// What `sound/` owns: the output, the fifteen buffer slots and the levels.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/errors.h"
#include "platform/sound_device.h"

namespace vorn {

/// A named place for at most one sound buffer.
class SoundSlot {
 public:
  explicit SoundSlot(std::string name) : name_(std::move(name)) {}

  /// Fills the slot from a WAV file; what it held is released first.
  void fill(SoundDevice& device, const std::string& fileName, int flags) {
    release();
    buffer_ = device.CreateSoundBufferFromFile(name_, fileName, flags);
  }
  void release() { buffer_.reset(); }

  /// The buffer; using an empty slot is a failed call.
  SoundBuffer* operator->() {
    if (!buffer_) throw PlatformError(name_, "", "the buffer is empty");
    return buffer_.get();
  }
  /// Whether the slot holds a sounding buffer; an empty one does not.
  bool isPlaying() { return buffer_ && buffer_->GetStatus() == SoundBuffer::kPlaying; }

 private:
  std::string name_;
  std::unique_ptr<SoundBuffer> buffer_;
};

struct SoundState {
  std::unique_ptr<SoundDevice> directSound;
  int bufferFlags = 0;    ///< what every buffer is created with: volume, pan and frequency control
  int soundVolume = 0;    ///< hundredths of a decibel, -3500 .. 0, steps of 100
  int baseFrequency = 0;  ///< hertz, read from the buffer loaded last
  int waveFilesBad = 0;   ///< 1: the sound check has found a missing or altered file

  SoundSlot engineBuffer{"engineBuffer"};
  SoundSlot sound19Buffer{"sound19Buffer"};  ///< gear change
  SoundSlot wallLeftBuffer{"wallLeftBuffer"};
  SoundSlot wallRightBuffer{"wallRightBuffer"};
  SoundSlot sound4Buffer{"sound4Buffer"};    ///< air horn
  SoundSlot markBuffer{"markBuffer"};        ///< expansion joint between segments
  SoundSlot sound29Buffer{"sound29Buffer"};  ///< light pole
  SoundSlot sound18Buffer{"sound18Buffer"};  ///< marbles
  SoundSlot sound9Buffer{"sound9Buffer"};    ///< tyres
  SoundSlot hornBuffer{"hornBuffer"};
  SoundSlot sound10Buffer{"sound10Buffer"};  ///< wall scrape
  SoundSlot sound8Buffer{"sound8Buffer"};    ///< brake
  SoundSlot oneShotBuffer{"oneShotBuffer"};  ///< whatever `play`, `play2` or `play3` loaded last
  SoundSlot panBuffer{"panBuffer"};          ///< whatever `PlayPan` loaded last
  SoundSlot warnBuffer{"warnBuffer"};        ///< the cue of the current segment
};

/// All slots, in the order in which they are released.
inline constexpr SoundSlot SoundState::*kSoundSlots[] = {
    &SoundState::engineBuffer,    &SoundState::sound19Buffer, &SoundState::wallLeftBuffer,
    &SoundState::wallRightBuffer, &SoundState::sound4Buffer,  &SoundState::markBuffer,
    &SoundState::sound29Buffer,   &SoundState::sound18Buffer, &SoundState::sound9Buffer,
    &SoundState::hornBuffer,      &SoundState::sound10Buffer, &SoundState::sound8Buffer,
    &SoundState::oneShotBuffer,   &SoundState::panBuffer,     &SoundState::warnBuffer,
};

}  // namespace vorn
