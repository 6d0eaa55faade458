/// The browser's page as the game sees it: what the page gives before the game
/// begins, what it reports, what it is told. The page's side of it is `site/page.js`.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/common/speech_synth.h"
#include "platform/mixing/mixer.h"
#include "platform/web/lateness.h"
#include "platform/web/page_inbox.h"
#include "platform/web/page_pads.h"
#include "platform/web/stored_files.h"

namespace vorn {

/// What the page can be told; the numbers are those of `site/page.js`.
enum class Tell {
  kCaption = 0,    ///< the window's title
  kSpoken = 1,     ///< a text that is being said, to be read
  kSay = 2,        ///< number: of the request; voice, rate, volume and text, separated by U+001F
  kSilence = 3,    ///< everything asked for until now
  kBox = 4,        ///< a message to be confirmed
  kStore = 5,      ///< number: of the request; name, NUL, bytes
  kRemove = 6,     ///< number: of the request; name
  kEnded = 7,      ///< number: exit status
  kDiagnosis = 8,  ///< what would go to standard error
  kRumble = 9,     ///< number: of the controller; strength of the heavy and the light motor, milliseconds
  kVoiceLost = 10  ///< the worker at the desk does not answer
};

/// Sound on its way to the worklet, which reads it by this layout (`site/worklet.js`):
/// four counts, then left and right in turn. Frames that have been read and written are counted on and on.
struct SoundRing {
  static constexpr std::uint32_t kFrames = 4096;

  std::atomic<std::uint32_t> read{0}, written{0};
  std::atomic<std::uint32_t> gaps{0};    ///< times that the worklet found too little
  std::atomic<std::uint32_t> missed{0};  ///< frames of silence that it put in
  std::array<float, std::size_t{2} * kFrames> samples{};

  std::atomic<std::uint32_t> ahead{0};  ///< frames that are kept ready
};

/// Where the game orders speech from the page's worker and gets its sound, which the
/// worker reads and writes by this layout (`site/speaker.js`).
struct SpeakerDesk {
  static constexpr std::uint32_t kSamples = 1U << 14;

  // The game's.
  std::atomic<std::int32_t> asked{0};    ///< number of the last order
  std::atomic<std::int32_t> dropped{0};  ///< of the last one that nobody wants any more
  std::atomic<std::int32_t> read{0};     ///< samples, counted on and on
  std::int32_t wordsAMinute = 0, volume = 0;
  const char* order = nullptr;  ///< identifier of the voice, NUL, text
  std::int32_t orderBytes = 0;

  // The worker's.
  std::atomic<std::int32_t> news{0};     ///< grows with whatever it does
  std::atomic<std::int32_t> done{0};     ///< number of the last order that came to its end
  std::atomic<std::int32_t> written{0};  ///< samples, counted on and on
  std::array<std::int16_t, kSamples> samples{};
};

struct Page {
  // Given before the game begins.
  StoredFiles::Contents files, sounds;
  std::vector<std::string> voices;      ///< that the page speaks with
  std::vector<SynthVoice> synthVoices;  ///< that the game speaks with by the page's worker
  int synthRate = 0;                    ///< of that worker's sound, hertz

  // Reported while it is played.
  PageInbox inbox;
  PagePads pads;
  std::atomic<std::int32_t> said{0};  ///< number of the last request to speak that has come to its end
  /// It has come to its end, and so has every request before it. On any thread.
  void noteSaid(std::int32_t request);
  std::atomic<std::int32_t> stored{0}, refused{0};  ///< requests to store that were carried out, or not
  std::atomic<int> deviceMs{0};  ///< how late the sound device is, as far as the browser knows
  SoundRing ring;
  SpeakerDesk desk;

  std::atomic<std::int32_t> pulse{0};  ///< grows as long as the game's thread does anything

  Lateness tickWaits;  ///< how late the waits for the ends of the car's ticks end

  /// Of the car; milliseconds of the steady clock.
  std::atomic<double> lastTick{-1e9};
  /// Whether the car has moved a moment ago.
  bool isRacing() const;

  /// Does not wait.
  void tell(Tell what, int number = 0, std::string_view text = {});
};

/// What is reported late does not take back what is known.
inline void Page::noteSaid(std::int32_t request) {
  std::int32_t last = said;
  while (last < request && !said.compare_exchange_weak(last, request)) {
  }
}

/// The one page that this program runs in.
Page& thePage();

}  // namespace vorn
