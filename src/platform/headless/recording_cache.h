/// Recordings that have been read already: a race loads the same few sounds lap
/// after lap. A file that has changed is read again. Calls block for the disk.
#pragma once

#include <sys/types.h>

#include <map>
#include <memory>
#include <string>

#include "platform/common/disk_file.h"
#include "platform/common/folder_files.h"
#include "platform/mixing/wav_file.h"

namespace vorn {

class RecordingCache {
 public:
  /// The WAV file `fileName` of the folder. Throws `PlatformError` where it is missing or cannot be read.
  std::shared_ptr<const Recording> load(FolderFiles& files, const std::string& fileName);

 private:
  std::map<FileContent, std::shared_ptr<const Recording>> recordings_;
};

}  // namespace vorn
