/// For threads that talk to daemons.
#pragma once

namespace vorn {

/// A daemon that goes away does not take the program along: in this thread, and those
/// that it starts, writing to it fails instead.
void ignoreBrokenPipes();

}  // namespace vorn
