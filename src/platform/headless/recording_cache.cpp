#include "platform/headless/recording_cache.h"

namespace vorn {

std::shared_ptr<const Recording> RecordingCache::load(FolderFiles& files, const std::string& fileName) {
  constexpr const char* kCall = "CreateSoundBufferFromFile";
  auto& recording = recordings_[contentOf(kCall, fileName, files.pathOf(kCall, fileName))];
  if (!recording) recording = std::make_shared<const Recording>(readWav(fileName, files.readSound(fileName)));
  return recording;
}

}  // namespace vorn
