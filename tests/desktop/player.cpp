#include "desktop/player.h"

#include <chrono>
#include <cstdlib>
#include <stdexcept>
#include <thread>

namespace vorn {

namespace fs = std::filesystem;

namespace {

std::vector<std::string> commandLine(const fs::path& folder, const std::vector<std::string>& options,
                                     const std::string& speech) {
  const char* const other = std::getenv("VORN_OTHER_PROGRAM");
  std::vector<std::string> words = {
      other != nullptr ? other : VORN_PROGRAM, "--captions", "--speech", speech, "--folder", folder.string()};
  words.insert(words.end(), options.begin(), options.end());
  return words;
}

}  // namespace

Player::Player(const fs::path& folder, const std::vector<std::string>& options, const std::string& speech)
    : game_(commandLine(folder, options, speech)) {}

std::string Player::waitFor(const std::string& part, int seconds) {
  std::string heardMeanwhile;
  while (const auto text = game_.readLine(seconds * 1000)) {
    if (text->find(part) != std::string::npos) return *text;
    heardMeanwhile += *text + "\n";
  }
  throw std::runtime_error("never heard \"" + part + "\" but:\n" + heardMeanwhile);
}

void Player::answer(const std::string& key) {
  rest(600);
  keys.tap(key, 30);  // a menu moves on where a key is held for 200 ms, which a busy machine makes of less
}

std::string Player::move(const std::string& key, const std::string& part) {
  constexpr int kPresses = 5, kPatienceMs = 12'000;
  for (int i = 0; i < kPresses; ++i) {
    answer(key);
    const auto text = hear(kPatienceMs);
    if (text) return text->find(part) != std::string::npos ? *text : waitFor(part);
  }
  throw std::runtime_error("nothing was heard at \"" + key + "\", though \"" + part + "\" was to come");
}

void Player::rest(int milliseconds) {
  std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

void Player::enterOneLap() {
  waitFor(" Select the track you wish to run, Maple Leaf Try Oval ");
  answer("Enter");
  waitFor(" Welcome to the Maple Leaf Try Oval Track ");
  waitFor(" Enter the number of laps that you wish to run. ");
  answer("1");
  waitFor("1");
  // Here one Enter too many gives no wrong answer: it is the next one, or goes to a standing car.
  move("Enter", " Is 1 correct for the number of laps to run?  yes ");
  move("Enter", " Ladies and Gentlemen, Start Your Engines! ");
}

void Player::startEngine() {
  keys.press("End");
  waitFor(" 10 ");
  keys.release("End");
}

void Player::goAtTheHorn() {
  waitFor(" 1 ");
  rest(1300);
  keys.press("LeftCtrl");
  keys.tap("Up", 150);
}

void Player::enterRecordAndLeave() {
  waitFor(" Enter your name as the new record holder. ");
  answer("A");
  waitFor("a");
  answer("Enter");
  waitFor(" Is a correct, for the new record holder? yes ");
  answer("Enter");
  waitFor(" Select, repeat race time ");
  move("Up", " Exit game ");
  move("Enter", " Thank you for playing Vorn 1 tts, By Ostrin. ");
  waitFor(" exiting program ");
}

void copySounds(const TemporaryFolder& folder) {
  for (const auto& sound : fs::directory_iterator(VORN_SOUND_FOLDER)) {
    fs::copy_file(sound.path(), folder.path() / sound.path().filename());
  }
}

}  // namespace vorn
