/// The demonstration in virtual time: the whole game without a desktop, from
/// start-up to the farewell.
#pragma once

#include <iosfwd>

#include "platform/headless/headless_platform.h"

namespace vorn {

struct VirtualDemo {
  int exitStatus;
  std::int64_t milliseconds;  ///< that it took, virtual ones
};

/// A lap of track 1 .. 10. `connections` say who listens; a script is not needed.
/// The folder of `options` holds the sounds; nothing is written there. What is said goes to
/// `captions`. Takes far less time than it plays. Throws what its sinks throw.
VirtualDemo playVirtualDemo(int track, HeadlessOptions options, HeadlessConnections connections,
                            std::ostream& captions);

}  // namespace vorn
