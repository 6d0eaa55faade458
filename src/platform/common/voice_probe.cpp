#include "platform/common/voice_probe.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <exception>

#include "platform/common/espeak_synth.h"

namespace vorn {
namespace {

constexpr int kLived = 0;

/// The other process: says a word to nobody.
[[noreturn]] void tryVoice() {
  // Of processor time: a machine that is busy, or a disk that wakes up, says nothing about the data.
  constexpr rlimit kMostSeconds{10, 10};
  ::setrlimit(RLIMIT_CPU, &kMostSeconds);
  try {
    EspeakSynth synth;
    if (!synth.voices().empty()) {
      synth.speak(" Vorn 1, select. ", {}, [](std::span<const std::int16_t>) { return true; });
    }
  } catch (const std::exception&) {
    // It fails as it should: the game will say so in its place.
  }
  ::_exit(kLived);
}

}  // namespace

std::string damageOfVoiceData() {
  const pid_t child = ::fork();
  if (child < 0) return "";
  if (child == 0) tryVoice();
  int status = 0;
  while (::waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) return "";
  }
  if (WIFEXITED(status) && WEXITSTATUS(status) == kLived) return "";
  return "The data of the voice (eSpeak NG) are damaged: install the package espeak-ng-data anew.";
}

}  // namespace vorn
