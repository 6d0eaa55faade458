#include "program/installation.h"

#include <sys/auxv.h>

#include <cstdlib>

namespace vorn {
namespace {

namespace fs = std::filesystem;

constexpr const char* kVoiceData = "espeak-ng-data";

}  // namespace

// By the name that it was started with, for /proc is not there everywhere.
fs::path programFile() {
  std::error_code error;
  // NOLINTNEXTLINE(performance-no-int-to-ptr): so the kernel hands it over
  const auto* const name = reinterpret_cast<const char*>(getauxval(AT_EXECFN));
  return name == nullptr ? fs::path() : fs::canonical(name, error);
}

fs::path installedSounds() {
  return (programFile().parent_path() / VORN_FROM_PROGRAM_TO_SOUNDS).lexically_normal();
}

void useInstalledVoiceData() {
  constexpr int kKeepPlayersOwn = 0;
  std::error_code error;
  const fs::path data = installedSounds() / kVoiceData;
  if (fs::is_directory(data, error)) {
    setenv("ESPEAK_DATA_PATH", data.c_str(), kKeepPlayersOwn);
  }
}

}  // namespace vorn
