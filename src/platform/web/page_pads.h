/// Game controllers as browsers report them: the page tells how each stands, the game
/// reads X, Y, Rx, Ry and 32 buttons. What is taken for what `controller_layout.h` tells.
/// Pedals with a plug of their own are no controller: they join the wheel.
#pragma once

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/common/controller_reader.h"
#include "platform/common/rumble.h"
#include "platform/platform.h"

namespace vorn {

/// One controller at a moment.
struct PagePad {
  std::string id{};         ///< the browser's text: name, vendor and product
  bool isStandard = false;  ///< its controls are known by their places
  RawControls controls{};   ///< as the browser numbers them
};

/// What is known of a controller from the browser's text.
ControllerFacts pagePadFacts(const PagePad& pad);
/// The browser's numbers as ours; buttons that are pressed by degrees become trigger axes.
RawControls placedControls(const PagePad& pad);

class PagePads {
 public:
  PagePads();
  ~PagePads();

  // The page's thread.
  void report(int index, PagePad pad);
  void remove(int index);

  // The game's thread.
  std::vector<std::string> attached();
  /// Throws `PlatformError` where no such controller is attached. At most as long-lived as this.
  std::unique_ptr<ControllerDevice> open(const std::string& identifier);
  /// Tells `receiver` (null: nobody) of the controllers whose state has changed.
  void notify(EventReceiver* receiver);
  /// The page's numbers of those that the player has lately moved a control of.
  std::vector<int> inHand();
  /// What the player should hear since the last call: controllers that have come and gone.
  std::vector<std::string> takeNews();

 private:
  class Plugged;
  class Device;

  /// As it stands now; nothing where it has been unplugged.
  std::optional<PagePad> padAt(int index);
  /// The page's number of one with this text; nothing where there is none.
  std::optional<int> indexOf(const std::string& id);
  void lookAround();
  void lookAfterPedals();
  void findPedals();

  std::mutex mutex_;  ///< over what follows
  std::map<int, PagePad> pads_;
  std::atomic<int> plugs_{0};  ///< grows with each that comes or goes

  // The game thread's.
  std::vector<Device*> devices_;
  std::unique_ptr<Plugged> pedals_;  ///< null: none
  int knownPlugs_ = -1;
  std::optional<std::vector<std::string>> known_;  ///< that have been looked at
  std::vector<std::string> news_;
};

}  // namespace vorn
