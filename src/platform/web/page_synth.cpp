#include "platform/web/page_synth.h"

#include <emscripten/threading.h>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <span>

#include "platform/errors.h"

namespace vorn {
namespace {

/// The worker's library takes all texts for markup.
std::string asMarkup(const std::string& text) {
  std::string markup;
  for (const char c : text) {
    if (c == '&') {
      markup += "&amp;";
    } else if (c == '<') {
      markup += "&lt;";
    } else {
      markup += c;
    }
  }
  return markup;
}

void wake(std::atomic<std::int32_t>& word) {
  emscripten_futex_wake(&word, std::numeric_limits<int>::max());
}

}  // namespace

PageSynth::PageSynth(Page& page, std::chrono::milliseconds patience)
    : SpeechSynth(page.synthRate, page.synthVoices, "the page has no embedded voice"),
      page_(page),
      desk_(page.desk),
      patience_(patience) {}

void PageSynth::synthesise(const Order& order, const Sink& sink) {
  for (std::int32_t news = desk_.news; desk_.done != desk_.asked; news = desk_.news) {
    waitForNews(news, order.text);  // one that was given up
  }
  put(order);
  for (;;) {
    const std::int32_t news = desk_.news;
    const bool isDone = desk_.done == desk_.asked;
    if (!passOn(sink)) {
      drop();
    }
    if (isDone) {
      return;
    }
    waitForNews(news, order.text);
  }
}

void PageSynth::put(const Order& order) {
  order_ = order.voice + '\0' + asMarkup(order.text);
  desk_.order = order_.data();
  desk_.orderBytes = static_cast<std::int32_t>(order_.size());
  desk_.wordsAMinute = order.wordsAMinute;
  desk_.volume = order.volume;
  ++desk_.asked;
  wake(desk_.asked);
}

/// Hands over what has been written. False: nobody wants more of it.
bool PageSynth::passOn(const Sink& sink) {
  const std::int32_t written = desk_.written;
  bool isWanted = desk_.dropped != desk_.asked;
  while (isWanted && desk_.read != written) {
    const auto read = static_cast<std::uint32_t>(desk_.read), at = read % SpeakerDesk::kSamples;
    const auto count = std::min(static_cast<std::uint32_t>(written) - read, SpeakerDesk::kSamples - at);
    isWanted = sink(std::span<const std::int16_t>(desk_.samples).subspan(at, count));
    desk_.read += static_cast<std::int32_t>(count);
    wake(desk_.read);
  }
  return isWanted;
}

/// What the worker still writes is not looked at.
void PageSynth::drop() {
  desk_.dropped.store(desk_.asked);
  desk_.read.store(desk_.written);
  wake(desk_.read);
}

void PageSynth::waitForNews(std::int32_t news, const std::string& text) {
  if (emscripten_futex_wait(&desk_.news, static_cast<std::uint32_t>(news),
                            static_cast<double>(patience_.count())) == -ETIMEDOUT) {
    drop();
    page_.tell(Tell::kVoiceLost);
    throw PlatformError("Speak", text, "the page's voice does not answer");
  }
}

}  // namespace vorn
