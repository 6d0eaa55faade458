// A headless script: a line is understood or refused with a reason.

#include <sstream>

#include "fuzz/checks.h"
#include "platform/headless/script.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vorn;
  std::istringstream stream(bytesOf(data, size));
  StreamScript script(stream, "fuzz");
  while (const auto line = script.nextLine()) {
    try {
      parseLine(*line);
    } catch (const ScriptError& error) {
      require(*error.what() != '\0', "a refusal has a reason");
    }
  }
  return 0;
}
