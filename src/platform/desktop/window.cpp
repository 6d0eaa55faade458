#include "platform/desktop/window.h"

#include <SDL.h>

#include <algorithm>
#include <cstring>

#include "platform/desktop/desktop_platform.h"
#include "platform/desktop/keyboard.h"
#include "platform/desktop/quit_signals.h"

namespace vorn {
namespace {

constexpr std::chrono::years kForEver{1};
constexpr int kWidth = 640, kHeight = 360;

/// SDL falls back to drivers that show nothing; they count only where they were asked for.
bool showsNothing(const char* driver) {
  const bool isBlind =
      driver == nullptr || std::strcmp(driver, "offscreen") == 0 || std::strcmp(driver, "dummy") == 0;
  return isBlind && SDL_getenv("SDL_VIDEODRIVER") == nullptr;
}

/// Starts SDL's video. Returns why there is no display, empty where there is one.
std::string openDisplay() {
  if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0) {
    return SDL_GetError();
  }
  if (showsNothing(SDL_GetCurrentVideoDriver())) {
    SDL_QuitSubSystem(SDL_INIT_VIDEO);
    return "no screen was found";
  }
  return "";
}

/// A signal is a request to close the window.
void passSignalsOn() {
  while (takeQuitSignal()) {
    SDL_Event event{};
    event.type = SDL_QUIT;
    SDL_PushEvent(&event);
  }
}

}  // namespace

std::string Window::missingDisplay() {
  std::string reason = openDisplay();
  if (reason.empty()) {
    SDL_QuitSubSystem(SDL_INIT_VIDEO);
  }
  return reason;
}

Window::Window() {
  SDL_SetHint(SDL_HINT_APP_NAME, "Vorn 1 TTS");
  SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION,
              "0");  // a few lines of text are not worth a graphics library
  std::string missing = openDisplay();
  if (missing.empty()) {
    window_ = SDL_CreateWindow("", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, kWidth, kHeight,
                               SDL_WINDOW_RESIZABLE);
    if (window_ == nullptr) {
      missing = SDL_GetError();
      SDL_QuitSubSystem(SDL_INIT_VIDEO);
    }
  }
  if (!missing.empty()) {
    throw DesktopUnavailable(DesktopUnavailable::Missing::kDisplay, missing);
  }
  catchQuitSignals();
  SDL_StopTextInput();  // the game asks for keys, not for text: no input method may swallow them
  SDL_RaiseWindow(window_);
  paint();
}

Window::~Window() {
  SDL_DestroyWindow(window_);
  SDL_QuitSubSystem(SDL_INIT_VIDEO);
}

void Window::paint() {
  if (SDL_Surface* surface = SDL_GetWindowSurface(window_)) {
    painter_.paint(*surface);
    SDL_UpdateWindowSurface(window_);
  }
}

void Window::showSpoken(const std::string& text) {
  painter_.add(text);
  paint();
}

void Window::setCaption(const std::string& caption) {
  caption_ = caption;
  showTitle();
}

void Window::setNotice(const std::string& notice) {
  notice_ = notice;
  showTitle();
}

void Window::showTitle() {
  SDL_SetWindowTitle(window_, (caption_ + notice_).c_str());
}

bool Window::isInBackground() {
  const bool hasFocus = (SDL_GetWindowFlags(window_) & SDL_WINDOW_INPUT_FOCUS) != 0;
  hasHadFocus_ |= hasFocus;
  return hasHadFocus_ && !hasFocus;
}

void Window::pump() {
  passSignalsOn();
  SDL_PumpEvents();
}

bool Window::isToBeClosed() const {
  return closeRequests_.isHeeded() && SDL_HasEvent(SDL_QUIT) == SDL_TRUE;
}

bool Window::deliver(EventReceiver* receiver) {
  bool isKeyMoved = false;
  passSignalsOn();
  SDL_Event event;
  while (SDL_PollEvent(&event) != 0) {
    if (event.type == SDL_QUIT) {
      closeRequests_.ask();
    }
    if (event.type == SDL_WINDOWEVENT && event.window.event == SDL_WINDOWEVENT_EXPOSED) {
      paint();
    }
    if (event.type == SDL_KEYDOWN || event.type == SDL_KEYUP) {
      isKeyMoved |= noteKey(event.key);
    }
    const bool isPress = event.type == SDL_KEYDOWN && event.key.repeat == 0;
    if (isPress && event.key.windowID == SDL_GetWindowID(window_) && receiver != nullptr) {
      if (const Key* key = menuKey(event.key.keysym)) {
        receiver->Form_KeyDown(key->virtualKeyCode, shiftState(event.key.keysym.mod));
      }
    }
  }
  return isKeyMoved;
}

bool Window::noteKey(const SDL_KeyboardEvent& event) {
  const Key* key = keyAt(event.keysym.scancode);
  if (key == nullptr || event.repeat != 0) {
    return false;
  }
  if (event.type == SDL_KEYDOWN) {
    taps_.wentDown(key->keyCode);
  } else {
    taps_.wentUp(key->keyCode, event.timestamp);
  }
  return true;
}

void Window::showBox(const std::string& text) {
  if (SDL_ShowSimpleMessageBox(SDL_MESSAGEBOX_INFORMATION, caption_.c_str(), text.c_str(), window_) == 0) {
    return;
  }
  SDL_SetWindowTitle(window_, text.c_str());
  waitForKey({SDLK_RETURN, SDLK_KP_ENTER, SDLK_SPACE, SDLK_ESCAPE}, kForEver);
  showTitle();
}

bool Window::waitForKey(std::initializer_list<SDL_Keycode> keys, std::chrono::milliseconds atMost) {
  constexpr int kNextLookMs = 50;
  const auto begun = std::chrono::steady_clock::now();
  while (std::chrono::steady_clock::now() - begun < atMost) {
    passSignalsOn();
    SDL_Event event;
    if (SDL_WaitEventTimeout(&event, kNextLookMs) == 0) {
      continue;
    }
    if (event.type == SDL_QUIT) {
      SDL_PushEvent(&event);  // for whoever asks next
      return false;
    }
    const bool isPress = event.type == SDL_KEYDOWN && event.key.repeat == 0;
    if (isPress && std::count(keys.begin(), keys.end(), event.key.keysym.sym) > 0) {
      return true;
    }
  }
  return false;
}

}  // namespace vorn
