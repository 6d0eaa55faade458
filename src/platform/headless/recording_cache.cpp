#include "platform/headless/recording_cache.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>

#include "platform/errors.h"

namespace vorn {

std::shared_ptr<const Recording> RecordingCache::load(FolderFiles& files, const std::string& fileName) {
  constexpr const char* kCall = "CreateSoundBufferFromFile";
  struct stat found;
  if (::stat(files.pathOf(kCall, fileName).c_str(), &found) != 0) {
    throw PlatformError(kCall, fileName, std::strerror(errno));
  }
  const Content content{found.st_dev, found.st_ino, found.st_mtim.tv_sec, found.st_mtim.tv_nsec,
                        found.st_size};
  auto& recording = recordings_[content];
  if (!recording) recording = std::make_shared<const Recording>(readWav(fileName, files.readSound(fileName)));
  return recording;
}

}  // namespace vorn
