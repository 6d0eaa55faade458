#include "sound/loading.h"

#include <iterator>

#include "sound/catalogue.h"

namespace vorn {
namespace {

constexpr const char* kEngineFiles[] = {"vorn1", "vorn30", "vorn31", "vorn32", "vorn33", "vorn34"};
constexpr const char* kWallFiles[] = {"vorn16", "vorn24", "vorn23"};
constexpr const char* kShiftFile = "vorn19";

/// Half of the crowd recording, so that the two copies never sound in unison.
constexpr int kRightWallPosition = 44159;

bool isIntact(GameState& g, const CatalogueEntry& entry) {
  Files& files = g.platform.files();
  const std::string name = soundFileName(entry.name);
  bool isIntact = false;
  carryOn([&] {  // a file that cannot be read is not intact either
    const auto found = files.find(name);
    isIntact = found && files.size(*found) == static_cast<std::uintmax_t>(entry.bytes) &&
               readItems(files.readSound(*found)) == ItemFigures{entry.items, entry.lastItemLength};
  });
  return isIntact;
}

struct Preparation {
  int position = 0;
  int volume = 0;
  int pan = 0;
  int addedHertz = 0;
};

void prepareSlot(GameState& g, SoundSlot& slot, const std::string& baseName, const Preparation& p) {
  fillSlot(g, slot, baseName);
  slot->SetCurrentPosition(p.position);
  g.baseFrequency = slot->GetFrequency() + p.addedHertz;
  slot->SetVolume(p.volume);
  slot->SetFrequency(g.baseFrequency);
  slot->SetPan(p.pan);
}

template <std::size_t n>
const char* nameOrEmpty(const char* const (&names)[n], int number) {
  return number >= 1 && number <= static_cast<int>(n) ? names[number - 1] : "";
}

}  // namespace

const char* engineFile(int engineSound) {
  return nameOrEmpty(kEngineFiles, engineSound);
}

const char* wallFile(int wallSound) {
  return nameOrEmpty(kWallFiles, wallSound);
}

void fillSlot(GameState& g, SoundSlot& slot, const std::string& baseName) {
  if (!g.directSound) throw PlatformError("CreateSoundBufferFromFile", baseName, "there is no sound device");
  slot.fill(*g.directSound, soundFileName(baseName), g.bufferFlags);
}

void loadSlot(GameState& g, SoundSlot& slot, const std::string& baseName) {
  fillSlot(g, slot, baseName);
  slot->SetCurrentPosition(0);
  g.baseFrequency = slot->GetFrequency() + 1;
  slot->SetVolume(g.soundVolume);
  slot->SetFrequency(g.baseFrequency);
}

void checkwaves(GameState& g) {
  for (const CatalogueEntry& entry : soundCatalogue()) {
    if (!isIntact(g, entry)) {
      g.waveFilesBad = 1;
      return;
    }
  }
}

void scars(GameState& g) {
  loadSlot(g, g.engineBuffer, engineFile(g.engineSound));
  g.engineBuffer->SetPan(0);
}

void setwaves(GameState& g) {
  const int wallVolume = g.soundVolume - kWallsQuieterBy;
  const Preparation plain{.volume = g.soundVolume};
  const Preparation oneHertzUp{.volume = g.soundVolume, .addedHertz = 1};

  scars(g);
  prepareSlot(g, g.sound19Buffer, kShiftFile, plain);
  // An unknown wall sound keeps the name used before it.
  const std::string wall = *wallFile(g.wallSound) ? wallFile(g.wallSound) : kShiftFile;
  prepareSlot(g, g.wallLeftBuffer, wall, {.volume = wallVolume, .pan = -kWallPan});
  prepareSlot(g, g.wallRightBuffer, wall,
              {.position = kRightWallPosition, .volume = wallVolume, .pan = kWallPan});
  prepareSlot(g, g.sound4Buffer, "vorn4", plain);
  prepareSlot(g, g.markBuffer, "vorn17", plain);
  prepareSlot(g, g.sound29Buffer, "vorn29", plain);
  prepareSlot(g, g.sound18Buffer, "vorn18", plain);
  prepareSlot(g, g.sound9Buffer, "vorn9", plain);
  prepareSlot(g, g.hornBuffer, "vorn7", oneHertzUp);
  prepareSlot(g, g.sound10Buffer, "vorn10", oneHertzUp);
  prepareSlot(g, g.sound8Buffer, "vorn8", oneHertzUp);
}

}  // namespace vorn
