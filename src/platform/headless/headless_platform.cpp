#include "platform/headless/headless_platform.h"

#include <iostream>
#include <utility>

#include "platform/headless/espeak_speaker.h"
#include "platform/headless/virtual_devices.h"
#include "platform/headless/virtual_sound.h"
#include "platform/headless/virtual_voice.h"

namespace vorn {
namespace {

constexpr int kRunTimeError = 1;
constexpr const char* kControllerIdentifier = "virtual controller";

std::unique_ptr<Speaker> makeSpeaker(const HeadlessOptions& options, Render* render) {
  if (options.speech == HeadlessSpeech::kEspeak) {
    return std::make_unique<EspeakSpeaker>(options.voices, render);
  }
  return std::make_unique<SilentSpeaker>(options.voices);
}

}  // namespace

HeadlessPlatform::HeadlessPlatform(const HeadlessOptions& options, const HeadlessConnections& connections)
    : render_(connections.render == nullptr ? nullptr : std::make_unique<Render>(*connections.render)),
      speaker_(makeSpeaker(options, render_.get())),
      world_(options, connections.trace, *speaker_),
      diagnostics_(connections.diagnostics != nullptr ? *connections.diagnostics : std::cerr),
      script_(world_, connections.script, diagnostics_),
      random_(options.seed) {
  world_.recordings = connections.recordings ? connections.recordings : std::make_shared<RecordingCache>();
  world_.render = render_.get();
  if (render_) {
    world_.clock.onAdvance([this](std::int64_t milliseconds) { render_->advance(milliseconds); });
  }
}

HeadlessPlatform::~HeadlessPlatform() = default;

int HeadlessPlatform::run(const std::function<int()>& game) {
  const int exitStatus = outcomeOf(game);
  try {
    world_.trace.end(exitStatus);
    if (render_) render_->flush();
  } catch (const PlatformError& error) {
    diagnostics_ << error.what() << std::endl;
    return kRunTimeError;
  }
  return exitStatus;
}

int HeadlessPlatform::outcomeOf(const std::function<int()>& game) {
  try {
    return game();
  } catch (const ProgramEnd& end) {
    return end.exitStatus;
  } catch (const WindowClosed&) {
    return 0;
  } catch (const std::exception& error) {
    diagnostics_ << error.what() << std::endl;
    world_.trace.error(error.what());
    return kRunTimeError;
  }
}

void HeadlessPlatform::doYield(int) {
  world_.clock.advanceTo(world_.clock.now() + 1);
  script_.carryOn();
  notifyOfController();
}

void HeadlessPlatform::notifyOfController() {
  ControllerState& controller = world_.controller;
  if (!controller.notify || world_.receiver == nullptr) return;
  if (std::exchange(controller.hasChanged, false)) {
    world_.receiver->DirectXEvent8_DXCallback(*controller.notify);
  }
}

int HeadlessPlatform::messageBox(const std::string& text) {
  constexpr int kOk = 1;
  world_.trace.box(text);
  return kOk;
}

std::unique_ptr<SoundDevice> HeadlessPlatform::createSoundDevice() {
  return std::make_unique<VirtualSoundDevice>(world_);
}

std::unique_ptr<KeyboardDevice> HeadlessPlatform::createKeyboardDevice() {
  return std::make_unique<VirtualKeyboard>(world_);
}

std::vector<std::string> HeadlessPlatform::attachedControllers() {
  if (!world_.options.controller) return {};
  return {kControllerIdentifier};
}

std::unique_ptr<ControllerDevice> HeadlessPlatform::createControllerDevice(const std::string& identifier) {
  if (!world_.options.controller || identifier != kControllerIdentifier) {
    throw PlatformError("CreateDevice", identifier, "no such controller is attached");
  }
  return std::make_unique<VirtualController>(world_);
}

std::unique_ptr<Voice> HeadlessPlatform::createVoice() {
  return std::make_unique<VirtualVoice>(world_);
}

void HeadlessPlatform::startProgram(const std::string& name, int windowStyle) {
  world_.trace.program(name, windowStyle);
}

void HeadlessPlatform::carTicked(const TickReport& report) {
  ++world_.carTicks;
  world_.trace.tick(report);
}

}  // namespace vorn
