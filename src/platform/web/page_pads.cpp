#include "platform/web/page_pads.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "platform/common/driving_device.h"
#include "platform/common/notices.h"
#include "platform/errors.h"

namespace vorn {
namespace {

/// The buttons of the standard mapping, in its order.
constexpr PadButton kStandardButtons[] = {
    PadButton::kSouth,        PadButton::kEast,          PadButton::kWest,      PadButton::kNorth,
    PadButton::kLeftShoulder, PadButton::kRightShoulder, PadButton::kExtra,     PadButton::kExtra,
    PadButton::kBack,         PadButton::kStart,         PadButton::kLeftStick, PadButton::kRightStick,
    PadButton::kUp,           PadButton::kDown,          PadButton::kLeft,      PadButton::kRight,
    PadButton::kGuide};
constexpr std::size_t kLeftTrigger = 6, kRightTrigger = 7;  ///< buttons by degrees

/// Four hexadecimal digits at `at`; nothing where there are none.
std::optional<int> hexAt(std::string_view text, std::size_t at) {
  constexpr std::size_t kDigits = 4;
  int number = 0;
  if (text.size() < at + kDigits) {
    return std::nullopt;
  }
  const char* const end = text.data() + at + kDigits;
  const auto parsed = std::from_chars(text.data() + at, end, number, 16);
  return parsed.ec == std::errc() && parsed.ptr == end ? std::optional(number) : std::nullopt;
}

/// One family writes "Name (STANDARD GAMEPAD Vendor: 046d Product: c24f)", another "046d-c24f-Name".
void readIdentifier(std::string_view id, ControllerFacts& facts) {
  constexpr std::string_view kVendor = "Vendor: ", kProduct = "Product: ";
  const std::size_t vendor = id.find(kVendor), product = id.find(kProduct);
  if (vendor != std::string_view::npos && product != std::string_view::npos) {
    facts.vendor = hexAt(id, vendor + kVendor.size()).value_or(0);
    facts.product = hexAt(id, product + kProduct.size()).value_or(0);
    facts.name = id.substr(0, std::min(id.size(), id.find(" (")));
    return;
  }
  const auto first = hexAt(id, 0), second = hexAt(id, 5);
  if (first && second && id.size() > 10 && id[4] == '-' && id[9] == '-') {
    facts.vendor = *first;
    facts.product = *second;
    facts.name = id.substr(10);
  }
}

}  // namespace

ControllerFacts pagePadFacts(const PagePad& pad) {
  ControllerFacts facts{.name = pad.id};
  readIdentifier(pad.id, facts);
  facts.kind = pad.isStandard ? ControllerKind::kGamepad : ControllerKind::kUnknown;
  facts.axes = static_cast<int>(pad.controls.axes.size());
  facts.buttons = static_cast<int>(pad.controls.buttons.size());
  return facts;
}

RawControls placedControls(const PagePad& pad) {
  constexpr std::size_t kSticks = 4;
  RawControls placed;
  placed.axes.assign(kPadAxes, 0);
  placed.buttons.assign(kPadButtons, false);
  const RawControls& raw = pad.controls;
  std::copy_n(raw.axes.begin(), std::min(kSticks, raw.axes.size()), placed.axes.begin());
  const auto triggerAt = [&](std::size_t axis) {  // the page puts them behind the sticks
    return raw.axes.size() > axis ? raw.axes[axis] : -1.0;
  };
  placed.axes[static_cast<std::size_t>(PadAxis::kLeftTrigger)] = triggerAt(kSticks);
  placed.axes[static_cast<std::size_t>(PadAxis::kRightTrigger)] = triggerAt(kSticks + 1);
  for (std::size_t i = 0; i < std::min(std::size(kStandardButtons), raw.buttons.size()); ++i) {
    if (i != kLeftTrigger && i != kRightTrigger) {
      placed.buttons[static_cast<std::size_t>(kStandardButtons[i])] = raw.buttons[i];
    }
  }
  placed.isUp = placed.buttons[static_cast<std::size_t>(PadButton::kUp)];
  placed.isDown = placed.buttons[static_cast<std::size_t>(PadButton::kDown)];
  return placed;
}

/// A controller that is read, as long as it is there.
class PagePads::Plugged {
 public:
  Plugged(PagePads& owner, int index, const PagePad& pad)
      : owner_(owner), index_(index), id_(pad.id), reader_(layoutOf(pagePadFacts(pad))) {}

  int index() const { return index_; }
  const ControllerLayout& layout() const { return reader_.layout(); }
  bool isAttached() const { return here().has_value(); }
  /// At rest as well where another has taken its place.
  ControllerReading read() {
    const auto pad = here();
    if (!pad) return {};
    return reader_.read(layout().kind == LayoutKind::kGamepad ? placedControls(*pad) : pad->controls);
  }
  /// Takes one of its kind in its place. Returns whether there is one.
  bool comeBack() {
    const auto again = owner_.indexOf(id_);
    index_ = again.value_or(index_);
    return again.has_value();
  }

 private:
  std::optional<PagePad> here() const {
    auto pad = owner_.padAt(index_);
    return pad && pad->id == id_ ? pad : std::nullopt;
  }

  PagePads& owner_;
  int index_;
  const std::string id_;
  ControllerReader reader_;
};

class PagePads::Device final : public DrivingDevice {
 public:
  Device(PagePads& owner, int index, const PagePad& pad) : owner_(owner), plugged_(owner, index, pad) {
    owner_.devices_.push_back(this);
  }
  ~Device() override { std::erase(owner_.devices_, this); }

  void Poll() override {}  // the page reports by itself
  int buttonCount() override { return vorn::buttonCount(plugged_.layout()); }

  int index() const { return plugged_.index(); }
  bool isAttached() const override { return plugged_.isAttached(); }
  bool isWheel() const { return plugged_.layout().kind == LayoutKind::kWheel; }

 private:
  ControllerReading read() override {
    ControllerReading now = plugged_.read();
    if (owner_.pedals_ && isWheel() && isAttached()) {
      now.join(owner_.pedals_->read());
    }
    return now;
  }
  bool comeBack() override { return plugged_.comeBack(); }

  PagePads& owner_;
  Plugged plugged_;
};

PagePads::PagePads() = default;
PagePads::~PagePads() = default;

void PagePads::report(int index, PagePad pad) {
  const std::lock_guard lock(mutex_);
  const auto [known, isNew] = pads_.try_emplace(index);
  plugs_ += static_cast<int>(isNew || known->second.id != pad.id);
  known->second = std::move(pad);
}

void PagePads::remove(int index) {
  const std::lock_guard lock(mutex_);
  plugs_ += static_cast<int>(pads_.erase(index));
}

std::optional<PagePad> PagePads::padAt(int index) {
  const std::lock_guard lock(mutex_);
  const auto found = pads_.find(index);
  return found == pads_.end() ? std::nullopt : std::optional(found->second);
}

std::optional<int> PagePads::indexOf(const std::string& id) {
  const std::lock_guard lock(mutex_);
  const auto found =
      std::find_if(pads_.begin(), pads_.end(), [&](const auto& entry) { return entry.second.id == id; });
  return found == pads_.end() ? std::nullopt : std::optional(found->first);
}

std::vector<std::string> PagePads::attached() {
  const std::lock_guard lock(mutex_);
  std::vector<std::string> identifiers;
  for (const auto& [index, pad] : pads_) {
    if (canDrive(layoutOf(pagePadFacts(pad)).kind)) {
      identifiers.push_back(std::to_string(index));
    }
  }
  return identifiers;
}

std::unique_ptr<ControllerDevice> PagePads::open(const std::string& identifier) {
  lookAround();  // or pedals that are there already were news later
  const auto identifiers = attached();
  if (std::find(identifiers.begin(), identifiers.end(), identifier) != identifiers.end()) {
    const int index = std::stoi(identifier);
    if (const auto pad = padAt(index)) {
      return std::make_unique<Device>(*this, index, *pad);
    }
  }
  throw PlatformError("CreateDevice", identifier, "no such controller is attached");
}

/// Takes notice of what has been plugged in or out since it was last looked at.
void PagePads::lookAround() {
  const int plugs = plugs_;
  if (std::exchange(knownPlugs_, plugs) == plugs) {
    return;
  }
  for (Device* device : devices_) {
    device->lookAfterPlug(news_);
  }
  lookAfterPedals();
  const std::vector<std::string> present = attached();
  const std::vector<std::string> before = std::exchange(known_, present).value_or(present);
  const bool isOneInUse = std::any_of(devices_.begin(), devices_.end(),
                                      [](const Device* device) { return device->isAttached(); });
  for (const std::string& identifier : present) {
    const bool isNew = std::find(before.begin(), before.end(), identifier) == before.end();
    if (isNew && !isOneInUse) {
      news_.emplace_back(kAnotherController);
    }
  }
}

void PagePads::findPedals() {
  const std::lock_guard lock(mutex_);
  for (const auto& [index, pad] : pads_) {
    if (!pedals_ && layoutOf(pagePadFacts(pad)).kind == LayoutKind::kPedals) {
      pedals_ = std::make_unique<Plugged>(*this, index, pad);
    }
  }
}

/// Pedals say nothing to a player without a wheel.
void PagePads::lookAfterPedals() {
  const bool count =
      std::any_of(devices_.begin(), devices_.end(), [](const Device* device) { return device->isWheel(); });
  if (pedals_ && !pedals_->isAttached()) {
    pedals_.reset();
    if (count) news_.emplace_back(kPedalsGone);
  }
  if (!pedals_) {
    findPedals();
    if (pedals_ && count) news_.emplace_back(kPedalsBack);
  }
}

void PagePads::notify(EventReceiver* receiver) {
  lookAround();
  const std::vector<Device*> devices = devices_;  // the receiver may close one
  for (Device* device : devices) {
    if (std::find(devices_.begin(), devices_.end(), device) != devices_.end()) {
      device->notify(receiver);
    }
  }
}

std::vector<int> PagePads::inHand() {
  std::vector<int> indices;
  for (const Device* device : devices_) {
    if (device->isInHand()) {
      indices.push_back(device->index());
    }
  }
  return indices;
}

std::vector<std::string> PagePads::takeNews() {
  return std::exchange(news_, {});
}

}  // namespace vorn
