// A sound file: it is refused, or it is a recording that can be played; and its
// two content figures are within what its bytes allow.

#include "fuzz/checks.h"
#include "platform/errors.h"
#include "platform/mixing/wav_file.h"
#include "sound/catalogue.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vorn;
  const std::string bytes = bytesOf(data, size);
  const ItemFigures figures = readItems(bytes);
  require(figures.items >= 1 && figures.lastItemLength >= 0, "there is an item");
  require(static_cast<std::size_t>(figures.items) + figures.lastItemLength <= size + 1,
          "no more items and characters than bytes");
  try {
    const Recording recording = readWav("fuzz.wav", bytes);
    require(recording.frames() > 0, "a recording has frames");
    require(recording.rate >= 100 && recording.rate <= 100000, "a recording has a rate that can be played");
    require(recording.channels == 1 || recording.channels == 2, "a recording is mono or stereo");
    require(recording.planes[1].size() == (recording.channels == 2 ? recording.planes[0].size() : 0),
            "a second plane belongs to stereo");
    require(recording.bytesPerFrame == 1 || recording.bytesPerFrame == 2 || recording.bytesPerFrame == 4,
            "a frame has 1, 2 or 4 bytes");
  } catch (const PlatformError&) {
  }
  return 0;
}
