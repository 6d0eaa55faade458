#include "platform/sound_device.h"

#include "platform/errors.h"

namespace vorn {
namespace {

void requireRange(const char* call, int value, int low, int high) {
  if (value < low || value > high) {
    throw PlatformError(call, std::to_string(value),
                        "out of range " + std::to_string(low) + " to " + std::to_string(high));
  }
}

}  // namespace

void SoundBuffer::Play(int flags) {
  requireRange("Play", flags, 0, 1);
  doPlay(flags == 1);
}

void SoundBuffer::Stop() {
  doStop();
}

void SoundBuffer::SetVolume(int hundredthsOfDecibel) {
  requireRange("SetVolume", hundredthsOfDecibel, -10000, 0);
  doSetVolume(hundredthsOfDecibel);
}

void SoundBuffer::SetPan(int hundredthsOfDecibel) {
  requireRange("SetPan", hundredthsOfDecibel, -10000, 10000);
  doSetPan(hundredthsOfDecibel);
}

void SoundBuffer::SetFrequency(int hertz) {
  requireRange("SetFrequency", hertz, 100, 100000);
  doSetFrequency(hertz);
}

void SoundBuffer::SetCurrentPosition(int byteInTheData) {
  requireRange("SetCurrentPosition", byteInTheData, 0, dataBytes() - 1);
  doSetCurrentPosition(byteInTheData);
}

}  // namespace vorn
