#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>

#include "program/installation.h"
#include "program/process.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

/// Else the first files to be opened would take the places of those that are closed, and what
/// is said on standard error would go into one of them.
void openStandardStreams() {
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (::fcntl(descriptor, F_GETFD) < 0) {
      (void)!::open("/dev/null", O_RDWR);  // takes the lowest free number, which is this one
    }
  }
}

/// The data that a portable game carries, where it does.
void useInstalledVoiceData() {
  constexpr const char* kVoiceData = "espeak-ng-data";
  constexpr int kKeepPlayersOwn = 0;
  std::error_code error;
  const fs::path data = installedSounds() / kVoiceData;
  if (fs::is_directory(data, error)) {
    setenv("ESPEAK_DATA_PATH", data.c_str(), kKeepPlayersOwn);
  }
}

}  // namespace

std::vector<std::string> prepareProcess(int argc, char** argv) {
  openStandardStreams();
  useInstalledVoiceData();
  return {argv + 1, argv + argc};
}

void tellAnswer(const std::string& text) {
  std::cout << text << std::endl;
}

void tellProblem(const std::string& text) {
  std::cerr << text << std::endl;
}

}  // namespace vorn
