#include "platform/desktop/reader_pace.h"

#include <charconv>
#include <optional>

#include "platform/common/reader_service.h"
#include "platform/errors.h"

namespace vorn {
namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr const char* kFile = "vorn1reader.txt";
constexpr const char* kSentence =
    "Press Enter as soon as your screen reader has read this sentence to its end, so that the game knows "
    "how fast it reads.";

std::optional<milliseconds> keptPace(Files& files) {
  int pace = 0;
  carryOn([&] {
    if (const auto name = files.find(kFile)) {
      const std::string text = files.read(*name);
      std::from_chars(text.data(), text.data() + text.size(), pace);
    }
  });
  if (milliseconds(pace) < kQuickestReadingPace || milliseconds(pace) > kSlowestReadingPace)
    return std::nullopt;
  return milliseconds(pace);
}

/// Waits until the reader has told of the new window and takes in more.
bool isReady(ScreenReader& reader, Window& window) {
  constexpr milliseconds kSettling = 1s, kPatience = 4s, kMoment = 100ms;
  window.waitForKey({}, kSettling);
  for (milliseconds waited{}; !reader.isListening() && waited < kPatience; waited += kMoment) {
    window.waitForKey({}, kMoment);
  }
  return reader.isListening();
}

}  // namespace

std::chrono::milliseconds readersPace(ScreenReader& reader, Window& window, Files& files,
                                      const std::function<void(const std::string& text)>& show) {
  if (const auto kept = keptPace(files)) return *kept;
  if (!reader.problem().empty() || !isReady(reader, window)) return kUsualReadingPace;
  const std::string sentence = kSentence;
  show(sentence);
  reader.tell(sentence, true);
  const auto begun = steady_clock::now();
  if (!window.waitForKey({SDLK_RETURN, SDLK_KP_ENTER},
                         30s + kUsualReadingPace * static_cast<int>(sentence.size()))) {
    return kUsualReadingPace;
  }
  const auto taken = std::chrono::duration_cast<milliseconds>(steady_clock::now() - begun);
  const milliseconds pace = readingPace(sentence, taken);
  carryOn([&] { files.write(kFile, std::to_string(pace.count()) + "\r\n"); });
  return pace;
}

}  // namespace vorn
