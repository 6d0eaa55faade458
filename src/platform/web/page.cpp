#include "platform/web/page.h"

#include <emscripten.h>

#include <chrono>
#include <cstdlib>
#include <cstring>

namespace vorn {

Page& thePage() {
  static Page page;
  return page;
}

bool Page::isRacing() const {
  constexpr double kMomentMs = 2000;
  const std::chrono::duration<double, std::milli> now = std::chrono::steady_clock::now().time_since_epoch();
  return now.count() - lastTick < kMomentMs;
}

void Page::tell(Tell what, int number, std::string_view text) {
  // The page's thread comes to it later: it gets a copy, which it frees.
  auto* const copy = static_cast<char*>(std::malloc(text.size() + 1));
  std::memcpy(copy, text.data(), text.size());
  // clang-format off
  MAIN_THREAD_ASYNC_EM_ASM({
    const bytes = HEAPU8.slice($2, $2 + $3);
    _free($2);
    Module['told']($0, $1, bytes);
  }, static_cast<int>(what), number, copy, static_cast<int>(text.size()));
  // clang-format on
}

}  // namespace vorn

// What the page calls, on its own thread. Texts are UTF-8.
extern "C" {

using vorn::PageEvent;
using vorn::thePage;

EMSCRIPTEN_KEEPALIVE void vorn_give_file(const char* name, const char* bytes, int size) {
  thePage().files[name] = std::string(bytes, static_cast<std::size_t>(size));
}

EMSCRIPTEN_KEEPALIVE void vorn_give_sound(const char* name, const char* bytes, int size) {
  thePage().sounds[name] = std::string(bytes, static_cast<std::size_t>(size));
}

EMSCRIPTEN_KEEPALIVE void vorn_give_voice(const char* name) {
  thePage().voices.emplace_back(name);
}

/// Once there is one, the game speaks by the desk.
EMSCRIPTEN_KEEPALIVE void vorn_give_synth_voice(const char* name, const char* identifier,
                                                const char* language, int priority) {
  thePage().synthVoices.push_back({name, identifier, language, priority});
}

EMSCRIPTEN_KEEPALIVE vorn::SpeakerDesk* vorn_give_synth(int sampleRate) {
  thePage().synthRate = sampleRate;
  return &thePage().desk;
}

EMSCRIPTEN_KEEPALIVE void vorn_key(int isDown, const char* code, const char* key, int shiftState) {
  thePage().inbox.put(
      {isDown != 0 ? PageEvent::Kind::kKeyDown : PageEvent::Kind::kKeyUp, code, key, shiftState});
}

EMSCRIPTEN_KEEPALIVE void vorn_focus(int hasFocus) {
  thePage().inbox.put({hasFocus != 0 ? PageEvent::Kind::kFocus : PageEvent::Kind::kBlur});
}

EMSCRIPTEN_KEEPALIVE void vorn_answered() {
  thePage().inbox.put({PageEvent::Kind::kAnswered});
}

/// Axes as doubles -1 .. 1, buttons as bytes.
EMSCRIPTEN_KEEPALIVE void vorn_pad(int index, const char* id, int isStandard, const double* axes,
                                   int axisCount, const std::uint8_t* buttons, int buttonCount) {
  vorn::PagePad pad{.id = id, .isStandard = isStandard != 0};
  pad.controls.axes.assign(axes, axes + axisCount);
  pad.controls.buttons.assign(buttons, buttons + buttonCount);
  thePage().pads.report(index, std::move(pad));
}

EMSCRIPTEN_KEEPALIVE void vorn_pad_gone(int index) {
  thePage().pads.remove(index);
}

EMSCRIPTEN_KEEPALIVE void vorn_said(int request) {
  thePage().noteSaid(request);
}

EMSCRIPTEN_KEEPALIVE void vorn_stored(int request, int isStored) {
  vorn::Page& page = thePage();
  (isStored != 0 ? page.stored : page.refused) = request;
}

EMSCRIPTEN_KEEPALIVE void vorn_device_late(int ms) {
  thePage().deviceMs = ms;
}

EMSCRIPTEN_KEEPALIVE vorn::SoundRing* vorn_ring() {
  return &thePage().ring;
}

EMSCRIPTEN_KEEPALIVE int vorn_pulse() {
  return thePage().pulse;
}

EMSCRIPTEN_KEEPALIVE int vorn_tick_waits() {
  return thePage().tickWaits.count();
}

EMSCRIPTEN_KEEPALIVE double vorn_ticks_late(double share) {
  return thePage().tickWaits.below(share);
}

EMSCRIPTEN_KEEPALIVE int vorn_gaps() {
  return static_cast<int>(thePage().ring.gaps);
}

EMSCRIPTEN_KEEPALIVE int vorn_frames_missed() {
  return static_cast<int>(thePage().ring.missed);
}

EMSCRIPTEN_KEEPALIVE int vorn_frames_ahead() {
  return static_cast<int>(thePage().ring.ahead);
}

EMSCRIPTEN_KEEPALIVE int vorn_is_racing() {
  return thePage().isRacing() ? 1 : 0;
}
}
