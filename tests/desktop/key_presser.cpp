#include "desktop/key_presser.h"

#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>

#include <chrono>
#include <map>
#include <stdexcept>
#include <thread>

namespace vorn {
namespace {

// Key codes of a PC keyboard, so that left and right modifiers stay apart.
const std::map<std::string, unsigned> kKeyCodes = {
    {"1", 10},          {"Backspace", 22}, {"Enter", 36},     {"LeftCtrl", 37}, {"A", 38},
    {"N", 57},          {"Escape", 9},     {"LeftShift", 50}, {"Space", 65},    {"RightShift", 62},
    {"RightCtrl", 105}, {"Up", 111},       {"Left", 113},     {"Right", 114},   {"End", 115},
    {"Down", 116},      {"Y", 29},         {"F1", 67},        {"F2", 68},       {"Home", 110}};

}  // namespace

struct KeyPresser::Connection {
  Display* display = XOpenDisplay(nullptr);
  ~Connection() {
    if (display) XCloseDisplay(display);
  }
};

KeyPresser::KeyPresser() : connection_(std::make_unique<Connection>()) {
  if (!connection_->display) throw std::runtime_error("there is no X display");
}

KeyPresser::~KeyPresser() = default;

void KeyPresser::send(const std::string& key, bool isDown) {
  XTestFakeKeyEvent(connection_->display, kKeyCodes.at(key), isDown, CurrentTime);
  XFlush(connection_->display);
}

void KeyPresser::press(const std::string& key) {
  send(key, true);
}

void KeyPresser::release(const std::string& key) {
  send(key, false);
}

void KeyPresser::tap(const std::string& key, int heldMs) {
  press(key);
  std::this_thread::sleep_for(std::chrono::milliseconds(heldMs));
  release(key);
}

}  // namespace vorn
