// What is being said, on a braille display that is none. Runs within with_desktop.sh.

#include <SDL.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <string>
#include <thread>

#include "desktop/platform_test.h"
#include "support/program.h"

namespace vorn {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

/// See braille_daemon.sh.
void brailleDaemon(const std::string& happening) {
  ASSERT_EQ(std::system((VORN_BRAILLE_DAEMON " " + happening).c_str()), 0) << happening;
}

/// The fingers on the display.
class Display {
 public:
  Display() { line_.writeLine("cells 40 1"); }

  /// The daemon takes one key at a time: two that arrive together are one for it.
  void press(const std::string& key) {
    line_.writeLine(key);
    std::this_thread::sleep_for(300ms);
  }
  /// Whether the display comes to show `text`.
  bool shows(const std::string& text, std::chrono::milliseconds within = 60s) {
    const auto end = steady_clock::now() + within;
    while (shown_ != text && steady_clock::now() < end) {
      const auto line = line_.readLine(200);
      if (line && line->rfind("Visual \"", 0) == 0) {
        shown_ = line->substr(8, line->find_last_not_of(" \"\r") - 7);
      }
    }
    return shown_ == text;
  }
  const std::string& shown() const { return shown_; }

 private:
  // The daemon listens for a moment, every few seconds.
  LiveProgram line_{{"/bin/bash", "-c",
                     "until exec 3<>/dev/tcp/127.0.0.1/$VORN_BRAILLE_PORT; do sleep 0.05; done 2>/dev/null\n"
                     "cat <&3 & cat >&3"}};
  std::string shown_;
};

class BrailleTest : public PlatformTest {
 protected:
  BrailleTest() {
    brailleDaemon("start");
    display = std::make_unique<Display>();
    EXPECT_TRUE(display->shows("no screen")) << display->shown();
    open();
  }
  ~BrailleTest() override {
    close();
    std::system(VORN_BRAILLE_DAEMON " kill");
  }
  void open() {
    DesktopOptions options;
    options.folder = folder.path();
    options.speech = SpeechChoice::kEspeak;
    platform = makeDesktopPlatform(options);
    voice = platform->createVoice();
    EXPECT_TRUE(yieldUntil([] { return SDL_GetKeyboardFocus() != nullptr; })) << "the window gets no focus";
  }
  void close() {
    voice.reset();
    platform.reset();
  }
  void say(const std::string& text) { voice->Speak(text, speak_flags::kPurge); }

  std::unique_ptr<Display> display;
  std::unique_ptr<Voice> voice;
};

TEST_F(BrailleTest, ShowsWhatIsBeingSaid) {
  say(" Exit Game. ");
  EXPECT_TRUE(display->shows("Exit Game.")) << display->shown();
  say(" By M\xFCller\x07 ");
  EXPECT_TRUE(display->shows("By M\u00FCller")) << display->shown();
}

TEST_F(BrailleTest, LongTextsAreReadPageByPage) {
  say(" Ladies and Gentlemen, Start Your Engines! And then give gas, but not too much of it, for now. ");
  EXPECT_TRUE(display->shows("Ladies and Gentlemen, Start Your Engines")) << display->shown();
  display->press("FWINRT");
  EXPECT_TRUE(display->shows("! And then give gas, but not too much of")) << display->shown();
  display->press("FWINRT");
  EXPECT_TRUE(display->shows(" it, for now.")) << display->shown();
  display->press("FWINRT");  // there is no more
  display->press("ROUTE 3");
  display->press("FWINLT");
  EXPECT_TRUE(display->shows("! And then give gas, but not too much of")) << display->shown();
  say(" Start Game. ");
  EXPECT_TRUE(display->shows("Start Game.")) << display->shown();
}

TEST_F(BrailleTest, IsLeftToOthersWhileAnotherWindowIsInFront) {
  say(" Exit Game. ");
  ASSERT_TRUE(display->shows("Exit Game."));
  SDL_Window* const other = SDL_CreateWindow("other", 0, 0, 100, 100, 0);
  yieldUntil([&] {
    SDL_SetWindowInputFocus(other);
    return SDL_GetKeyboardFocus() == other;
  });
  platform->yield();
  say(" Start Game. ");
  EXPECT_FALSE(display->shows("Start Game.", 1s));
  SDL_DestroyWindow(other);
  yieldUntil([] {
    SDL_RaiseWindow(SDL_GetWindowFromID(1));
    SDL_SetWindowInputFocus(SDL_GetWindowFromID(1));
    return SDL_GetKeyboardFocus() != nullptr;
  });
  platform->yield();
  EXPECT_TRUE(display->shows("Start Game.")) << display->shown();
}

TEST_F(BrailleTest, ADaemonThatGoesIsFoundWhenItIsBack) {
  say(" Exit Game. ");
  ASSERT_TRUE(display->shows("Exit Game."));
  brailleDaemon("kill");
  say(" change voice ");
  say(" Check speakers ");
  brailleDaemon("start");
  display = std::make_unique<Display>();
  EXPECT_TRUE(display->shows("no screen")) << display->shown();
  say(" Start Game. ");
  EXPECT_TRUE(display->shows("Start Game.")) << display->shown();
}

}  // namespace
}  // namespace vorn
