/// The co-driver: a platform on top of the one that is played on. It sees the car
/// tick by tick, hears what is said and what sounds, and adds aids of its own. The
/// game does not know of it: with every aid off, nothing is changed or added.
///
///   game -> co-driver -> (recorder ->) desktop or headless session
///
/// Where to add what: an aid, see aid.h; an entry of its menu, see menu.h; a second
/// game (a lesson, a preview), see guest.h.
#pragma once

#include <memory>
#include <optional>

#include "codriver/settings.h"
#include "platform/common/forwarding_platform.h"
#include "state/game_state.h"

namespace vorn {

struct CodriverOptions {
  std::optional<AidSet> aids = {};  ///< in place of those that the player's file names
  bool introducesItself = false;    ///< says where its menu is as long as the player has no file of it
};

class CodriverPlatform : public ForwardingPlatform {
 public:
  /// Tells which game is played here: not owned, and good until the end.
  virtual void watch(const GameState& game) = 0;

 protected:
  using ForwardingPlatform::ForwardingPlatform;
};

/// What the player has set before; nothing where there is no file of it, or a damaged one.
std::optional<AidSettings> keptAids(Files& files);

/// A co-driver on top of `inner`, which is not owned.
std::unique_ptr<CodriverPlatform> makeCodriverPlatform(Platform& inner, const CodriverOptions& options);

}  // namespace vorn
