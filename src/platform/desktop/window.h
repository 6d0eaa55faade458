/// The game's one window and the events of the desktop. SDL's video lives as
/// long as this does. All of it belongs to the thread that made it.
#pragma once

#include <SDL_events.h>
#include <SDL_keycode.h>
#include <SDL_video.h>

#include <chrono>
#include <initializer_list>
#include <memory>
#include <string>

#include "platform/common/close_requests.h"
#include "platform/common/key_latch.h"
#include "platform/desktop/caption_painter.h"
#include "platform/platform.h"

namespace vorn {

class Window {
 public:
  /// Opens it. Throws `DesktopUnavailable` where there is no display to open it on.
  Window();
  /// The reason why there is no display; empty where there is one.
  static std::string missingDisplay();
  ~Window();
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  void setCaption(const std::string& caption);
  /// Shows `notice` behind the caption until another one, maybe empty, comes.
  void setNotice(const std::string& notice);
  /// Shows `text` (UTF-8), which is being said, in the window.
  void showSpoken(const std::string& text);
  /// Whether the player has turned to another window. Before the window has had
  /// the focus for the first time he has not: desktops take their time to give it.
  bool isInBackground();
  SDL_Window* handle() const { return window_; }
  /// Takes in what has happened without delivering it: the keyboard's state is fresh afterwards.
  void pump();
  /// Delivers what has happened to `receiver` (null: nobody). Throws `WindowClosed`
  /// on the first request to close, unless the shutdown has begun, and `ProgramEnd` on the second.
  /// Returns whether a key of the game's went down or up.
  bool deliver(EventReceiver* receiver);
  /// Whether a request to close waits to be delivered that changes anything.
  bool isToBeClosed() const;
  /// The short taps that have been delivered, for whoever reads the keyboard.
  KeyLatch& taps() { return taps_; }
  void enterShutdown() { closeRequests_.enterShutdown(); }
  /// Shows `text` in a box with an OK button and waits for it. Where the desktop
  /// has no boxes the text stands in the window's caption until Enter, the space
  /// bar or Escape is pressed or the window is to be closed.
  void showBox(const std::string& text);
  /// Waits until one of `keys` is pressed, `atMost`. Returns whether it was: false where the time is over or
  /// the window is to be closed. Nobody else hears of keys meanwhile.
  bool waitForKey(std::initializer_list<SDL_Keycode> keys, std::chrono::milliseconds atMost);

 private:
  bool noteKey(const SDL_KeyboardEvent& event);
  void paint();
  void showTitle();

  SDL_Window* window_ = nullptr;
  CaptionPainter painter_;
  std::string caption_, notice_;
  bool hasHadFocus_ = false;
  CloseRequests closeRequests_;
  KeyLatch taps_;
};

}  // namespace vorn
